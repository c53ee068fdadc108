#include "data/names/told_names.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/line_words.h"
#include "data/names/names_line.h"

namespace tarnwick {
namespace {

/// What stands behind "Data columns are", "The 6 columns are", "Columns:"; empty where the line begins otherwise.
std::string_view BehindColumnsAre(std::string_view line) {
  constexpr std::string_view kAhead[] = {"the", "data"};
  constexpr std::string_view kColumns[] = {"columns", "columns:"};
  constexpr std::string_view kBehind[] = {"are", "are:", ":"};
  const std::string lower = LowerAscii(line);
  const std::vector<LineWord> words = WordsOfLine(lower);
  const auto is_of = [](std::span<const std::string_view> known, std::string_view word) {
    return std::ranges::find(known, word) != known.end();
  };
  std::size_t at = 0;
  while (at < words.size() && (is_of(kAhead, words[at].text) || ParseInteger(words[at].text))) ++at;
  if (at + 1 >= words.size() || !is_of(kColumns, words[at].text)) return {};
  const bool colon = words[at].text.ends_with(':');
  ++at;
  const bool are = is_of(kBehind, words[at].text);
  if (are) ++at;
  // "Columns of the table" is a title, "Data columns Qx - Qy" says more than that there are columns.
  const bool says = colon || are || lower.find(" - ") != lower.npos;
  if (!says || at >= words.size()) return {};
  return TrimBlankBytes(line.substr(static_cast<std::size_t>(words[at].begin)));
}

/// Between bars, dashes or commas, whichever there are; of bars none stands at the ends.
std::vector<std::string_view> PartsOfList(std::string_view text) {
  for (const std::string_view mark : {"|", " - ", ";", ","}) {
    if (text.find(mark) == text.npos) continue;
    std::vector<std::string_view> parts = PartsBetween(text, mark);
    const auto is_blank = [](std::string_view part) { return TrimBlankBytes(part).empty(); };
    if (mark == "|" && is_blank(parts.front())) parts.erase(parts.begin());
    if (mark == "|" && !parts.empty() && is_blank(parts.back())) parts.pop_back();
    return parts;
  }
  return {};
}

/// Three words at most, apart from what stands in brackets, that are no setting.
bool IsShortName(std::string_view line) {
  constexpr std::size_t kLongest = 40, kMostWords = 3;
  line = TrimBlankBytes(line.substr(0, line.find_first_of("([")));
  return !line.empty() && line.size() <= kLongest && IsLetter(line.front()) &&
         line.find_first_of("\t,;:=|") == line.npos && line.find("  ") == line.npos &&
         WordsOfLine(line).size() <= kMostWords;
}

bool BeginsData(std::string_view line) {
  const std::string lower = LowerAscii(line);
  return lower == "data:" || lower == "[data]" || lower == "columns:" || lower == "channels:" ||
         lower == "[columns]" || lower == "variables:";
}

}  // namespace

ListedNames FindSaidNames(std::span<const std::string_view> above, const TextLayout& layout) {
  ListedNames listed;
  for (const std::string_view line : above) {
    const std::string_view text = BehindColumnsAre(WithoutCommentMarks(line, layout));
    const std::vector<std::string_view> parts = PartsOfList(text);
    if (parts.empty()) continue;
    listed.names.clear();
    for (const std::string_view part : parts) listed.names.push_back(NameText(part, layout));
  }
  return listed;
}

ListedNames FindNamesInTurn(std::span<const std::string_view> above, const TextLayout& layout) {
  while (!above.empty() && TrimBlankBytes(above.back()).empty()) {
    above = above.first(above.size() - 1);
  }
  constexpr std::size_t kFewestRemarks = 5;
  ListedNames listed;
  bool remarks = true;
  for (; !above.empty(); above = above.first(above.size() - 1)) {
    const std::string_view line = TrimBlankBytes(WithoutCommentMarks(above.back(), layout));
    if (BeginsData(line)) return listed;
    if (!IsShortName(line)) break;
    listed.names.insert(listed.names.begin(), NameText(line, layout));
    remarks = remarks && !IsDataLine(above.back(), layout);
  }
  return remarks && listed.names.size() >= kFewestRemarks ? listed : ListedNames();
}

}  // namespace tarnwick
