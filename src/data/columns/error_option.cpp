#include "data/columns/error_option.h"

#include <cmath>
#include <optional>

#include "base/error.h"
#include "base/number_text.h"
#include "base/text_encoding.h"

namespace tarnwick {

ErrorOption ParseErrorOption(std::string_view text) {
  const std::string_view word = TrimBlanks(text);
  if (LowerAscii(word) == "none") return {};
  if (LowerAscii(word) == "sqrt") return {{ErrorKind::Counts, 0}};
  const bool percent = word.ends_with('%');
  const std::optional<double> number =
      ParseNumber(percent ? word.substr(0, word.size() - 1) : word);
  if (word.empty() || (number && !(*number > 0 && std::isfinite(*number)))) {
    throw Error("An error is a number above 0, not \"" + std::string(text) + '"');
  }
  if (number) return {{percent ? ErrorKind::Percent : ErrorKind::Constant, *number}};
  return {{ErrorKind::Column, 0}, std::string(text)};
}

}  // namespace tarnwick
