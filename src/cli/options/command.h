// What a command of the batch program is: a row with its name, its one-line purpose and the function that declares its
// options. A new command is one file and one row of the table.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <stdexcept>

#include "base/error.h"
#include "cli/options/option_parser.h"
#include "cli/output/output.h"

namespace tarnwick::cli {

/// What was asked for; set by the options' callback, run once after parsing.
using Action = std::function<void(Output&)>;

struct CommandRow {
  const char* name;
  const char* purpose;
  /// Declares options on `command` and arranges that parsing it stores the work in `action`.
  void (*declare)(Command& command, Action& action);
};

std::span<const CommandRow> Commands();

/// Wrong usage that the option parser cannot see: exit status 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What `read` makes of an option's value; whatever it finds wrong with that is wrong usage.
template <class Read>
auto ReadOption(const Read& read) {
  try {
    return read();
  } catch (const Error& error) {
    throw UsageError(error.what());
  }
}

/// Declares a command's work: `options` lives as long as the parser, `run` gets them when the command was named.
template <class Options>
void OnCommand(Command& command, Action& action, std::shared_ptr<Options> options,
               void (*run)(const Options&, Output&)) {
  command.OnParsed([&action, options, run] {
    action = [options, run](Output& output) { run(*options, output); };
  });
}

}  // namespace tarnwick::cli
