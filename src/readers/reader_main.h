// What all programs that read files for the others share: bounds, and how they answer. Knows no format.
#pragma once

#include <functional>
#include <span>
#include <string>

namespace tarnwick {

/// Bounds memory and time, then writes what `answer` makes of the words behind the program's name to the standard output. What
/// it throws is written to the standard error as one sentence. What a program's main() returns.
int RunReaderMain(int argc, char** argv,
                  const std::function<std::string(std::span<char* const>)>& answer);

}  // namespace tarnwick
