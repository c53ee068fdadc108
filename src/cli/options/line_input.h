// Lines of a pipe, a socket or a serial port on the command line, read for a time or until they end.
#pragma once

#include <optional>
#include <string>

#include "cli/options/input_graph.h"

namespace tarnwick::cli {

class Command;
class Output;

struct LineArguments {
  std::string place;
  std::optional<double> seconds;
  std::optional<int> keep;
};

/// Declares --lines, --for and --keep.
void AddLineOptions(Command& command, LineArguments& arguments);

/// Reads until the time is over, the source ends or Ctrl+C is pressed; of `import` columns, formats, separators, marks of
/// comments and missing values count. Notes in `output` how many rows came. Throws UsageError, and Error when nothing came.
InputGraph ReadLines(const LineArguments& arguments, const ImportArguments& import, Output& output);

/// Takes what comes for DataSets whose source goes on, until the time is over or Ctrl+C is pressed. Notes how many rows came. An
/// application must live. Throws Error for what cannot go on.
void ReadOn(InputGraph& input, const LineArguments& arguments, Output& output);

}  // namespace tarnwick::cli
