#include "data/guess/section_end.h"

#include <algorithm>
#include <vector>

#include "base/ascii.h"
#include "data/fields/field_kind.h"
#include "data/fields/line_words.h"
#include "data/fields/text_fields.h"
#include "data/fields/text_lines.h"

namespace tarnwick {
namespace {

constexpr std::size_t kNearest = 4;  // header lines, of which one marks the section

/// "[Data]" alone on its line.
bool MarksSection(std::string_view line) {
  line = TrimBlankBytes(line);
  return line.size() > 2 && line.front() == '[' && line.back() == ']' && IsLetter(line[1]) &&
         line.find(']') == line.size() - 1;
}

bool IsRowOfNumbers(std::string_view line) {
  const std::vector<LineWord> words = WordsOfLine(line);
  return !words.empty() && IsValue(KindOfField(words.front().text)) &&
         IsValue(KindOfField(words.back().text));
}

/// The next line that is not blank.
std::string_view NextFilled(LineWalker& walker) {
  while (!walker.AtEnd()) {
    const std::string_view line = TrimBlankBytes(walker.Next());
    if (!line.empty()) return line;
  }
  return {};
}

}  // namespace

std::optional<std::size_t> FindSectionEnd(std::string_view text, std::size_t header_lines,
                                          char line_end) {
  LineWalker walker(text, line_end);
  bool within = false;
  std::string_view begins;  // the line behind the section's mark
  std::size_t line = 0;
  for (; line < header_lines && !walker.AtEnd(); ++line) {
    const std::string_view header = walker.Next();
    if (MarksSection(header)) {
      within = line + kNearest >= header_lines;
      begins = {};
    } else if (begins.empty()) {
      begins = TrimBlankBytes(header);
    }
  }
  if (!within || begins.empty()) return std::nullopt;
  for (; !walker.AtEnd(); ++line) {
    const std::string_view at = walker.Next();
    if (at.empty() || !MarksSection(at)) continue;
    const std::string_view next = NextFilled(walker);
    const bool goes_on = next == begins || IsRowOfNumbers(next);
    return goes_on || next.empty() ? std::nullopt : std::optional(line);
  }
  return std::nullopt;
}

}  // namespace tarnwick
