// Runs the programs that read files of formats which take libraries of their own, and takes what they answer. Knows
// processes; knows no format.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/progress.h"

namespace tarnwick {

/// A program that reads, and what it is for.
struct ReaderProgram {
  std::string_view name;     ///< "tarnwick-workbook"
  std::string_view of_what;  ///< "workbooks", for the message when the program is not installed
};

/// What the program answers to `words`. It stands beside the program that runs, in the folder lib/tarnwick beside the
/// former's, or in one of QCoreApplication::libraryPaths(). Throws FileError with what the program says, when it ends before
/// its time or is missing, and UnpackingCancelled. `file` is for messages and progress.
std::string AskReader(const ReaderProgram& program, const std::vector<std::string>& words,
                      const std::string& file, Progress& progress);

}  // namespace tarnwick
