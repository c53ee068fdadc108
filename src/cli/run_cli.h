// The batch program as a function: arguments in, answer and exit status out.
#pragma once

#include <ostream>

namespace tarnwick::cli {

/// Runs one command line. Answers 0: done, 1: the work failed (one line on `err`), 2: wrong usage.
int RunCli(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace tarnwick::cli
