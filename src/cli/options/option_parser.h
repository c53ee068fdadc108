// The options of a command line as commands declare them: names, kinds of values, checks. Knows no command. The parsing
// library stands in option_parser.cpp alone; its texts for help and refusals are the program's.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <variant>
#include <vector>

#include "cli/options/number_check.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace tarnwick::cli {

/// Where an option's value goes; its type says what may be typed.
using OptionTarget =
    std::variant<std::string*, int*, double*, std::optional<std::string>*, std::optional<int>*,
                 std::optional<double>*, std::vector<std::string>*, std::vector<double>*>;

/// One declared option, valid as long as its parser. Each function returns the option.
class Option {
 public:
  explicit Option(CLI::Option& option) : option_(&option) {}

  Option& Required();
  /// The heading it stands under in the help.
  Option& Group(const std::string& heading);
  /// A list may be given in parts: the name stands before each value, all are kept.
  Option& Repeated();
  /// What follows the one value is not its own, even in a list.
  Option& OneValueEach();
  /// The value may be left out; `instead` is what it is then.
  Option& MayStandAlone(const std::string& instead);
  /// What stands for the value in the help.
  Option& ValueName(const std::string& name);
  Option& Check(const NumberCheck& check);
  Option& Between(int lowest, int highest);
  Option& OneOf(const std::vector<std::string>& names);
  /// "" is refused.
  Option& NotEmpty();
  Option& Excludes(const Option& other);

 private:
  CLI::Option* option_;
};

/// One command, or the program itself, to declare options on. Valid as long as its parser; so must the targets be.
class Command {
 public:
  explicit Command(CLI::App& command) : command_(&command) {}

  /// `names` is "-o,--output", or "FILE" for a word without a name before it.
  template <class Value>
  Option Add(const std::string& names, Value& value, const std::string& help) {
    return AddTarget(names, OptionTarget(&value), help);
  }
  /// An option without a value.
  Option AddFlag(const std::string& names, bool& given, const std::string& help);
  /// A flag with a contrary, "--do,!--do-not": unset when neither is given.
  Option AddChoice(const std::string& names, std::optional<bool>& chosen, const std::string& help);

  Option Find(const std::string& name);
  void Remove(const std::string& name);
  /// `found` is called when the command was named and all is parsed.
  void OnParsed(std::function<void()> found);

 private:
  Option AddTarget(const std::string& names, OptionTarget target, const std::string& help);

  CLI::App* command_;
};

/// What came of parsing.
struct Parsed {
  enum class Kind { Command, Answered, WrongUsage };
  Kind kind = Kind::Command;
  std::string refusal;  ///< of wrong usage
};

class OptionParser {
 public:
  OptionParser(const std::string& purpose, const std::string& program, const std::string& version);
  ~OptionParser();
  OptionParser(const OptionParser&) = delete;
  OptionParser& operator=(const OptionParser&) = delete;

  /// What may stand before and after every command.
  Command Everywhere();
  Command AddCommand(const std::string& name, const std::string& purpose);
  /// Answers --help and --version itself.
  Parsed Parse(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

 private:
  std::unique_ptr<CLI::App> app_;
};

}  // namespace tarnwick::cli
