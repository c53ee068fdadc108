// What was made of a text, in words, for the tables of the guess's tests.
#pragma once

#include <string>

#include "data/import/import_file.h"

namespace tarnwick::testing {

/// How the text is divided, as far as it is not divided by commas that may run together.
std::string DivisionText(const TDSInfo& source);

/// All that is made of a text, line by line: X and how the text is divided; each DataSet with its columns and points; what is
/// told.
std::string WholeOutcome(const ImportResult& result);

}  // namespace tarnwick::testing
