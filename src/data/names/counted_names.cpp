#include "data/names/counted_names.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>

#include "base/ascii.h"
#include "base/text_encoding.h"
#include "data/names/names_line.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLongestCountedName = 48;

/// Where the name of a number begins, and where the number with all that belongs to it does.
struct NumberedPlace {
  std::size_t begin = 0;
  std::size_t name = 0;
  bool bare = false;    ///< a blank alone stands between them
  bool worded = false;  ///< "column" or the like stands before the number
};

std::size_t SkipBlanks(std::string_view text, std::size_t at) {
  while (at < text.size() && IsBlankByte(text[at])) ++at;
  return at;
}

/// Behind "c", "col", "column", "ch" or "channel" and what joins it to a number; `at` where none of them stands there.
std::size_t SkipColumnWord(std::string_view text, std::size_t at) {
  constexpr std::string_view kWords[] = {"channel", "column", "col", "ch", "c"};
  const std::string lower = LowerAscii(text.substr(at, kWords[0].size()));
  for (const std::string_view word : kWords) {
    if (!lower.starts_with(word)) continue;
    const std::size_t behind = text.find_first_not_of(" ._#", at + word.size());
    return behind != text.npos && IsDigit(text[behind]) ? behind : at;
  }
  return at;
}

/// The number with its name, where they begin at `at`.
std::optional<NumberedPlace> PlaceAt(std::string_view text, std::size_t at,
                                     const std::string& number) {
  NumberedPlace place{.begin = at};
  const bool open = at < text.size() && (text[at] == '(' || text[at] == '[');
  if (open) ++at;
  const std::size_t word = at;
  at = SkipColumnWord(text, at);
  place.worded = at > word;
  if (text.substr(at, number.size()) != number) return std::nullopt;
  at += number.size();
  const bool closed = at < text.size() && text[at] == (text[place.begin] == '[' ? ']' : ')');
  if (open && !closed) return std::nullopt;
  if (open) ++at;
  const std::size_t mark = SkipBlanks(text, at);
  const bool joined = at + 1 < text.size() && text[at] == '_' && !IsDigit(text[at + 1]);
  const bool marked =
      joined || (mark < text.size() && std::string_view(":=).").find(text[mark]) != text.npos);
  if (!marked && mark == at) return std::nullopt;
  place.bare = !open && !marked;
  place.name = SkipBlanks(text, marked ? mark + 1 : mark);
  const bool named = place.name < text.size() && !IsDigit(text[place.name]) &&
                     std::string_view(":=).-+").find(text[place.name]) == text.npos;
  return named ? std::optional(place) : std::nullopt;
}

std::optional<NumberedPlace> FindPlace(std::string_view text, std::size_t from,
                                       const std::string& number) {
  for (std::size_t at = from; at < text.size(); ++at) {
    const bool begins = at == 0 || std::string_view(" \t,;|").find(text[at - 1]) != text.npos;
    if (!begins) continue;
    if (const auto place = PlaceAt(text, at, number)) return place;
  }
  return std::nullopt;
}

std::string_view WithoutEndMarks(std::string_view name) {
  name = TrimBlankBytes(name);
  while (!name.empty() && std::string_view(",;|").find(name.back()) != name.npos) {
    name = TrimBlankBytes(name.substr(0, name.size() - 1));
  }
  return name;
}

/// What one remark counts on from `next`: its names, the bare ones of them.
struct CountedRemark {
  std::vector<std::string_view> names;
  std::size_t lead = 0;  ///< what stands before the first
  bool bare = false;
};

CountedRemark CountOn(std::string_view text, std::size_t next) {
  CountedRemark counted;
  std::optional<NumberedPlace> place = FindPlace(text, 0, std::to_string(next));
  if (place) counted.lead = place->begin;
  while (place) {
    counted.bare = counted.bare || place->bare;
    auto behind = FindPlace(text, place->name, std::to_string(++next));
    // "4 flags    column 5 is missing"
    if (behind && behind->worded && !place->worded) behind.reset();
    const std::size_t end = behind ? behind->begin : text.size();
    counted.names.push_back(WithoutEndMarks(text.substr(place->name, end - place->name)));
    place = behind;
  }
  return counted;
}

bool AreAllNames(std::span<const std::string_view> names) {
  return std::ranges::none_of(names, [](std::string_view name) {
    return name.empty() || name.size() > kLongestCountedName || name.ends_with('.');
  });
}

/// "Legend: ", "C ": what is counted are the columns; "quality: 1 = good, 2 = bad" tells of values.
bool LeadsIn(std::string_view lead) {
  // "#C 1_energy 2_current": a letter for the kind of line.
  if (lead.size() == 2 && lead.front() >= 'A' && lead.front() <= 'Z') return true;
  constexpr std::string_view kWords[] = {"legend",   "columns",   "column", "fields",
                                         "channels", "variables", "data"};
  std::string word = LowerAscii(TrimBlankBytes(lead));
  while (!word.empty() && (word.back() == ':' || word.back() == ' ')) word.pop_back();
  return std::ranges::find(kWords, word) != std::end(kWords);
}

/// The names that the lines from the first of them on count from `first`.
std::vector<std::string_view> CountFrom(std::span<const std::string_view> lines, std::size_t first,
                                        const TextLayout& layout, std::size_t columns) {
  std::vector<std::string_view> names;
  bool several = false;
  for (const std::string_view line : lines) {
    if (IsDataLine(line, layout)) break;
    const std::string_view text = WithoutCommentMarks(line, layout);
    const CountedRemark counted = CountOn(text, first + names.size());
    if (counted.names.empty()) break;
    const std::string_view lead = text.substr(0, counted.lead);
    if (!lead.empty() && !(names.empty() && LeadsIn(lead))) break;
    if (counted.bare && (counted.lead > 0 || columns < 3)) break;
    several = several || counted.names.size() > 1;
    std::ranges::copy(counted.names, std::back_inserter(names));
    if (names.size() >= columns) break;
  }
  if (!several || names.size() != columns || !AreAllNames(names)) names.clear();
  return names;
}

}  // namespace

std::vector<std::string> FindCountedNames(std::span<const std::string_view> above,
                                          const TextLayout& layout, std::int32_t columns) {
  constexpr std::int32_t kFewestFromZero = 3;  // "0 = off, 1 = on" are values of one
  if (columns < 2) return {};
  for (std::size_t i = above.size(); i > 0; --i) {
    if (IsDataLine(above[i - 1], layout)) continue;
    for (const std::size_t first : {std::size_t{1}, std::size_t{0}}) {
      if (first == 0 && columns < kFewestFromZero) continue;
      const auto found =
          CountFrom(above.subspan(i - 1), first, layout, static_cast<std::size_t>(columns));
      if (found.empty()) continue;
      std::vector<std::string> names(found.size());
      std::ranges::transform(found, names.begin(),
                             [&](std::string_view name) { return NameText(name, layout); });
      return names;
    }
  }
  return {};
}

}  // namespace tarnwick
