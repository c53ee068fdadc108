// What a user writes for the errors of Y or X: a column, a number, "P%", "sqrt" or "none". Knows the text only.
#pragma once

#include <string>
#include <string_view>

#include "data/series/point_errors.h"

namespace tarnwick {

struct ErrorOption {
  ErrorRule rule;
  std::string column = {};  ///< a name or "#N", of ErrorKind::Column
};

/// "0.5" is an error that all share, "5%" a part of each value, "sqrt" the root of counts, "none" no error; anything else
/// names a column (one that is called like these is "#N"). Throws Error for numbers that are no errors.
ErrorOption ParseErrorOption(std::string_view text);

}  // namespace tarnwick
