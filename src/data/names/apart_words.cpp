#include "data/names/apart_words.h"

#include <algorithm>

#include "data/fields/line_words.h"

namespace tarnwick {

bool AllInQuotes(std::string_view line, std::size_t words) {
  return words > 1 && static_cast<std::size_t>(std::ranges::count(line, '"')) == 2 * words;
}

bool HasWideGapsOnly(std::string_view line) {
  const auto words = WordsOfLine(line);
  const auto is_narrow = [](const LineWord& word, const LineWord& next) {
    return next.begin < word.end + 2;
  };
  return words.size() > 1 && std::ranges::adjacent_find(words, is_narrow) == words.end();
}

}  // namespace tarnwick
