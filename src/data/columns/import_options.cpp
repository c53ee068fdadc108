#include "data/columns/import_options.h"

#include "base/error.h"
#include "data/fields/column_cuts.h"

namespace tarnwick {

void ImportOptions::Validate() const {
  if (headers && *headers < 0) throw Error("The number of header lines must not be negative");
  if (width && *width < 1) throw Error("The column width must be 1 or more");
  if (cuts && !ParseColumnCuts(*cuts)) {
    throw Error(
        "The first characters of the columns must be whole numbers that rise from 1: \"1 9 21\"");
  }
  if (every && *every < 1) throw Error("The sampling frequency must be 1 or more");
  if ((names_line && *names_line < kNoNamesLine) || (units_line && *units_line < 0)) {
    throw Error("The lines of names and units must not be negative");
  }
  if (x_errors && x_errors->rule.kind == ErrorKind::Counts) {
    throw Error("The square root of counts is an error of Y, not of X");
  }
  if (separators && separators->empty()) throw Error("No Text Separators supplied");
  const auto mode = row_choice ? static_cast<std::int32_t>(*row_choice) : 0;
  if (mode < 0 || mode > 6) throw Error("The row choice mode must be 0 to 6");
  if (!(tolerance >= 0)) throw Error("The tolerance must not be negative");
}

}  // namespace tarnwick
