#include "data/fields/quoted_lines.h"

namespace tarnwick {
namespace {

constexpr char kQuote = '"';
constexpr std::string_view kLineEnds = "\n\r";
constexpr std::string_view kAroundFields = "\t,;|\n\r";
constexpr std::size_t kLongestField = 8192;

bool StandsAround(char c) {
  return kAroundFields.find(c) != kAroundFields.npos;
}

bool BeginsField(std::string_view text, std::size_t at) {
  const std::size_t before = text.substr(0, at).find_last_not_of(' ');
  return before == text.npos || StandsAround(text[before]);
}

bool EndsField(std::string_view text, std::size_t at) {
  const std::size_t behind = text.find_first_not_of(' ', at + 1);
  return behind == text.npos || StandsAround(text[behind]);
}

/// The quote that closes the one at `open`; npos when there is none.
std::size_t ClosingQuote(std::string_view text, std::size_t open) {
  const std::string_view near = text.substr(0, open + kLongestField);
  std::size_t at = near.find(kQuote, open + 1);
  while (at != near.npos && at + 1 < text.size() && text[at + 1] == kQuote)
    at = near.find(kQuote, at + 2);
  return at != near.npos && EndsField(text, at) ? at : text.npos;
}

bool IsInComment(std::string_view text, std::size_t at) {
  const std::size_t end_before = text.substr(0, at).find_last_of(kLineEnds);
  const std::size_t line = end_before == text.npos ? 0 : end_before + 1;
  const std::size_t first = text.find_first_not_of(" \t", line);
  return text[first] == '#' || text[first] == '%';
}

}  // namespace

std::vector<std::size_t> LineEndsInQuotes(std::string_view text) {
  std::vector<std::size_t> places;
  std::size_t open = text.find(kQuote);
  while (open != text.npos) {
    const std::size_t close = BeginsField(text, open) ? ClosingQuote(text, open) : text.npos;
    if (close == text.npos) {
      open = text.find(kQuote, open + 1);
      continue;
    }
    const std::string_view field = text.substr(0, close);
    std::size_t line_end = field.find_first_of(kLineEnds, open);
    if (line_end != field.npos && IsInComment(text, open)) line_end = field.npos;
    for (; line_end != field.npos; line_end = field.find_first_of(kLineEnds, line_end + 1))
      places.push_back(line_end);
    open = text.find(kQuote, close + 1);
  }
  return places;
}

}  // namespace tarnwick
