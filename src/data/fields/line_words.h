// The words of a line between blanks, by their places in characters, and its parts between marks. Knows no columns.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace tarnwick {

/// A word and where it stands: characters [begin, end) from 0.
struct LineWord {
  std::int32_t begin = 0;
  std::int32_t end = 0;
  std::string_view text;
};

/// All words of a line, in order. A tab is a blank of one character.
std::vector<LineWord> WordsOfLine(std::string_view line);

/// What `mark`, of one byte at least, parts; the whole line where it does not stand there.
std::vector<std::string_view> PartsBetween(std::string_view line, std::string_view mark);
inline std::vector<std::string_view> PartsBetween(std::string_view line, char mark) {
  return PartsBetween(line, std::string_view(&mark, 1));
}

}  // namespace tarnwick
