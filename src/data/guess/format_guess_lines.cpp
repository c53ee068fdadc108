#include "data/guess/format_guess_lines.h"

#include <algorithm>

#include "data/fields/text_lines.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLongestLine = 64 * 1024;
constexpr std::size_t kPlaces = 16;  // probed behind the first lines
constexpr std::size_t kPlaceBytes = 4096;

/// The whole lines within text[from, to).
void AddLinesWithin(std::string_view text, std::size_t from, std::size_t to, char line_end,
                    std::vector<std::string_view>& lines) {
  const std::size_t begin = text.find(line_end, from);
  if (begin >= to) return;
  const std::size_t end = text.rfind(line_end, to - 1);
  if (end == text.npos || end <= begin) return;
  LineWalker walker(text.substr(begin + 1, end - begin - 1), line_end);
  while (!walker.AtEnd()) lines.push_back(walker.Next());
}

}  // namespace

char GuessLineEnd(std::string_view text) {
  const std::string_view head = text.substr(0, kFirstReach.bytes);
  const bool returns_only = head.find('\n') == head.npos && head.find('\r') != head.npos;
  return returns_only ? '\r' : '\n';
}

GuessLines CollectGuessLines(std::string_view text, GuessReach reach) {
  GuessLines lines;
  const char line_end = GuessLineEnd(text);
  const std::string_view head = text.substr(0, reach.bytes);
  LineWalker walker(head, line_end);
  while (!walker.AtEnd() && lines.first.size() < reach.lines) {
    const std::string_view line = walker.Next();
    const bool cut = walker.AtEnd() && head.size() < text.size() && !lines.first.empty();
    if (!cut) lines.first.push_back(line.substr(0, kLongestLine));
  }
  const auto seen = static_cast<std::size_t>(walker.Position() - text.data());
  lines.whole = seen == text.size();
  const std::size_t step = (text.size() - seen) / kPlaces;
  if (step < kPlaceBytes) {
    const std::size_t from = seen > 0 ? seen - 1 : 0;
    AddLinesWithin(text, from, std::min(text.size(), from + kPlaces * kPlaceBytes), line_end,
                   lines.later);
    return lines;
  }
  for (std::size_t place = 1; place <= kPlaces; ++place) {
    const std::size_t to = seen + place * step;
    AddLinesWithin(text, to - kPlaceBytes, to, line_end, lines.later);
  }
  return lines;
}

}  // namespace tarnwick
