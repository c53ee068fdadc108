#include "cli/options/option_parser.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "base/number_text.h"

namespace tarnwick::cli {
namespace {

// The library forgets "--" as soon as a command has one word. So what stands behind it is made to look like no option, and
// a flag in its place ends the values of the option before it.
constexpr const char* kOptionsEnd = "--end-of-options";
constexpr char kWordMark = 1;

std::vector<std::string> MarkedWords(int argc, const char* const* argv) {
  std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
  const auto end = std::ranges::find(words, "--");
  if (end == words.end()) return words;
  *end = kOptionsEnd;
  std::for_each(end + 1, words.end(), [](std::string& word) { word.insert(0, 1, kWordMark); });
  return words;
}

std::string Unmarked(const std::string& word) {
  return word.starts_with(kWordMark) ? word.substr(1) : word;
}

}  // namespace

Option& Option::Required() {
  option_->required();
  return *this;
}

Option& Option::Group(const std::string& heading) {
  option_->group(heading);
  return *this;
}

Option& Option::Repeated() {
  option_->take_all()->expected(1);
  return *this;
}

Option& Option::OneValueEach() {
  option_->allow_extra_args(false);
  return *this;
}

Option& Option::MayStandAlone(const std::string& instead) {
  option_->expected(0, 1)->default_str(instead);
  return *this;
}

Option& Option::ValueName(const std::string& name) {
  option_->type_name(name);
  return *this;
}

Option& Option::Check(const NumberCheck& check) {
  // What is no number at all is left to the parser.
  const auto refusal = [check](const std::string& text) {
    const std::optional<double> value = ParseNumber(text);
    return !value || check.allowed(*value) ? std::string() : text + " is not " + check.wanted;
  };
  option_->check(CLI::Validator(refusal, check.name));
  return *this;
}

Option& Option::Between(int lowest, int highest) {
  option_->check(CLI::Range(lowest, highest));
  return *this;
}

Option& Option::OneOf(const std::vector<std::string>& names) {
  option_->check(CLI::IsMember(names));
  return *this;
}

Option& Option::NotEmpty() {
  const auto refusal = [](const std::string& text) {
    return text.empty() ? std::string("an empty text names nothing") : std::string();
  };
  option_->check(CLI::Validator(refusal, ""));
  return *this;
}

Option& Option::Excludes(const Option& other) {
  option_->excludes(other.option_);
  return *this;
}

Option Command::AddTarget(const std::string& names, OptionTarget target, const std::string& help) {
  CLI::Option* const option =
      std::visit([&](auto* value) { return command_->add_option(names, *value, help); }, target);
  if (option->get_positional()) option->transform(&Unmarked);
  return Option(*option);
}

Option Command::AddFlag(const std::string& names, bool& given, const std::string& help) {
  return Option(*command_->add_flag(names, given, help));
}

Option Command::AddChoice(const std::string& names, std::optional<bool>& chosen,
                          const std::string& help) {
  return Option(*command_->add_flag_function(
      names, [&chosen](std::int64_t count) { chosen = count > 0; }, help));
}

Option Command::Find(const std::string& name) {
  return Option(*command_->get_option(name));
}

void Command::Remove(const std::string& name) {
  command_->remove_option(command_->get_option(name));
}

void Command::OnParsed(std::function<void()> found) {
  command_->callback(std::move(found));
}

OptionParser::OptionParser(const std::string& purpose, const std::string& program,
                           const std::string& version)
    : app_(std::make_unique<CLI::App>(purpose, program)) {
  app_->set_version_flag("--version", version);
  app_->fallthrough();
  app_->add_flag(kOptionsEnd)->group("");
}

OptionParser::~OptionParser() = default;

Command OptionParser::Everywhere() {
  return Command(*app_);
}

Command OptionParser::AddCommand(const std::string& name, const std::string& purpose) {
  return Command(*app_->add_subcommand(name, purpose));
}

Parsed OptionParser::Parse(int argc, const char* const* argv, std::ostream& out,
                           std::ostream& err) {
  try {
    std::vector<std::string> words = MarkedWords(argc, argv);
    std::ranges::reverse(words);  // as the library takes a list
    app_->parse(std::move(words));
  } catch (const CLI::Success& answer) {  // help or version was asked for
    app_->exit(answer, out, err);
    return {Parsed::Kind::Answered, {}};
  } catch (const CLI::ParseError& error) {
    std::string refusal = error.what();
    std::erase(refusal, kWordMark);
    return {Parsed::Kind::WrongUsage, refusal};
  }
  return {};
}

}  // namespace tarnwick::cli
