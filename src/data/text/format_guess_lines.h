// The lines of a text that its layout is guessed from. Knows lines and fields; decides nothing.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "data/text/text_fields.h"

namespace tarnwick {

/// A handful of lines: the first ones, and some from places further on.
struct GuessLines {
  std::vector<std::string_view>
      first;  ///< whole from the text's beginning, comments and blank lines among them
  std::vector<std::string_view> later;  ///< rows only
};

/// Long lines are cut: what is guessed from a line stands at its beginning.
GuessLines CollectGuessLines(std::string_view text);

/// '\r' when the text has no '\n' in its first lines.
char GuessLineEnd(std::string_view text);

/// How a line looks with certain separators.
struct LineShape {
  int fields = 0;      ///< by the stated splitting: a run of separators counts as one
  int separators = 0;  ///< outside markers
  int filled = 0;      ///< fields that are not blank
  int values = 0;      ///< fields that a column format can read
};
LineShape ShapeOf(std::string_view line, const TextLayout& layout);

/// True when some column format reads the text.
bool IsAnyValue(std::string_view text);

/// True for what tables write where a number is missing: "NA", "nan", "-", "null", …
bool IsPlaceholder(std::string_view text);

}  // namespace tarnwick
