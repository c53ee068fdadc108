#include "data/names/stacked_names.h"

#include <algorithm>
#include <set>
#include <utility>

#include "base/ascii.h"
#include "base/number_text.h"
#include "data/fields/field_kind.h"
#include "data/fields/line_words.h"
#include "data/names/name_marks.h"
#include "data/names/names_judge.h"
#include "data/names/names_line.h"

namespace tarnwick {
namespace {

using Names = std::vector<std::string>;

bool ByBlanks(const TextLayout& layout) {
  return layout.IsSeparator(' ') && !layout.ByPlace();
}

/// "Anomaly,": some write commas between words that blanks part already.
std::string WordText(const LineWord& word, const TextLayout& layout) {
  std::string text = NameText(word.text, layout);
  while (text.ends_with(',') || text.ends_with(';')) text.pop_back();
  return text;
}

std::string Joined(const std::string& upper, const std::string& lower) {
  return upper.empty() || lower.empty() ? upper + lower : upper + " " + lower;
}

/// The fields of a line; between other separators than blanks each of these counts.
Names FieldsOf(std::string_view line, const TextLayout& layout) {
  TextLayout apart = layout;
  apart.merge = ByBlanks(layout);
  Names names;
  FieldCursor cursor(IsDataLine(line, layout) ? line : WithoutCommentMarks(line, layout), apart);
  while (const std::optional<std::string_view> field = cursor.Next()) {
    names.push_back(NameText(*field, layout));
  }
  while (!names.empty() && names.back().empty()) names.pop_back();
  return names;
}

/// A word in a merged cell stands once, at the left, for all columns below it.
void HoldOn(Names& names) {
  for (std::size_t i = 1; i < names.size(); ++i) {
    if (names[i].empty()) names[i] = names[i - 1];
  }
}

std::optional<Names> StackFields(std::string_view upper, std::string_view lower,
                                 const TextLayout& layout, std::size_t columns) {
  Names above = FieldsOf(upper, layout);
  Names names = FieldsOf(lower, layout);
  if (above.size() > columns || names.size() > columns || above.empty()) return std::nullopt;
  above.resize(columns);
  names.resize(columns);
  HoldOn(above);
  for (std::size_t i = 0; i < columns; ++i) names[i] = Joined(above[i], names[i]);
  return names;
}

/// The name below that a word stands over; nothing where it stands over a gap.
std::optional<std::size_t> NameBelow(const LineWord& word, const std::vector<LineWord>& names) {
  const auto below = std::ranges::find_if(names, [&word](const LineWord& name) {
    return word.begin < name.end && name.begin < word.end;
  });
  if (below == names.end()) return std::nullopt;
  return static_cast<std::size_t>(below - names.begin());
}

std::optional<Names> StackWords(std::string_view upper, std::string_view lower,
                                const TextLayout& layout, std::size_t columns) {
  const std::string upper_text = WithBlankedMarks(upper, layout);
  const std::string lower_text = WithBlankedMarks(lower, layout);
  const std::vector<LineWord> above = WordsOfLine(upper_text);
  const std::vector<LineWord> below = WordsOfLine(lower_text);
  Names names(columns);
  if (above.size() + below.size() == columns) {
    for (std::size_t i = 0; i < columns; ++i) {
      const LineWord& word = i < above.size() ? above[i] : below[i - above.size()];
      names[i] = WordText(word, layout);
    }
    return names;
  }
  if (below.size() != columns) return std::nullopt;
  for (const LineWord& word : above) {
    const std::optional<std::size_t> at = NameBelow(word, below);
    if (!at) return std::nullopt;
    names[*at] = Joined(names[*at], WordText(word, layout));
  }
  for (std::size_t i = 0; i < columns; ++i) {
    names[i] = Joined(names[i], WordText(below[i], layout));
  }
  return names;
}

std::size_t CountDifferent(const Names& names) {
  return std::set<std::string_view>(names.begin(), names.end()).size();
}

/// Two blanks between some of the words: they stand where they do on purpose.
bool IsLaidOut(const std::vector<LineWord>& words) {
  const auto apart = [](const LineWord& one, const LineWord& next) {
    return next.begin > one.end + 1;
  };
  return std::ranges::adjacent_find(words, apart) != words.end();
}

/// Heads share the left or the right end with what they stand over, titles do not.
bool StandInLine(const std::string& upper, const std::string& lower) {
  constexpr std::size_t kFewest = 2;
  const std::vector<LineWord> above = WordsOfLine(upper);
  const std::vector<LineWord> below = WordsOfLine(lower);
  // Between single blanks fewer words stand over others by chance.
  if (above.size() != below.size() && !IsLaidOut(above) && !IsLaidOut(below)) return false;
  return above.size() >= kFewest && above.size() <= below.size() &&
         std::ranges::all_of(above, [&below](const LineWord& word) {
           const std::optional<std::size_t> at = NameBelow(word, below);
           return at && (below[*at].begin == word.begin || below[*at].end == word.end);
         });
}

/// Words over all names but the first, which is that of X.
bool LeaveOutFirst(const Names& above, std::size_t columns) {
  constexpr std::size_t kFewest = 3;
  return above.size() == columns && columns >= kFewest && above.front().empty() &&
         std::all_of(above.begin() + 1, above.end(),
                     [](const std::string& name) { return !name.empty(); });
}

/// ",,1,2,3" over "t,limit,mean,mean,mean": numbers that count on over columns of one name, and over no others.
bool CountAlikeNames(std::string_view upper, std::string_view lower, const TextLayout& layout) {
  constexpr std::size_t kFewest = 3;
  if (ByBlanks(layout)) return false;
  const Names above = FieldsOf(upper, layout), below = FieldsOf(lower, layout);
  if (above.size() != below.size()) return false;
  std::size_t counted = 0;
  const std::string* alike = nullptr;
  std::int32_t last = 0;
  for (std::size_t i = 0; i < above.size(); ++i) {
    if (above[i].empty() && (alike == nullptr || below[i] != *alike)) continue;
    const std::optional<std::int32_t> number = ParseInteger(above[i]);
    if (!number || (alike != nullptr && (*number != last + 1 || below[i] != *alike))) return false;
    alike = &below[i];
    last = *number;
    ++counted;
  }
  return counted >= kFewest;
}

/// True when `upper`, the line right above the names, or of which `lower` gives the units, is part of them: names that are alike
/// become different, or every word of it stands over a name as the rows' own heads do.
bool AreStacked(std::string_view upper, std::string_view lower, const TextLayout& layout,
                std::int32_t columns) {
  if (columns < 2 || TrimBlankBytes(upper).empty() || IsRule(upper)) return false;
  const auto wanted = static_cast<std::size_t>(columns);
  const std::optional<Names> stacked = StackNames(upper, lower, layout, columns);
  if (!stacked) return false;
  if (CountAlikeNames(upper, lower, layout)) return true;
  Names above = FieldsOf(upper, layout);
  std::erase(above, std::string());
  if (!AreNames(above, upper) || AreSetting(above) || AreUnits(above)) return false;
  // What is told of the whole table may stand in columns, too: "run 5,14-03-2024,140".
  const bool told = std::ranges::any_of(above, [](const std::string& word) {
    const FieldKind kind = KindOfField(word);
    return kind == FieldKind::Number || kind == FieldKind::Date;
  });
  if (told) return false;
  const Names below = FieldsOf(lower, layout);
  if (ByBlanks(layout) && below.size() != wanted) return false;
  // One word that stands for all is a title.
  const bool title = above.size() < 2;
  if (!title && CountDifferent(*stacked) > CountDifferent(below)) return true;
  if (!ByBlanks(layout)) return LeaveOutFirst(FieldsOf(upper, layout), wanted);
  return StandInLine(WithBlankedMarks(upper, layout), WithBlankedMarks(lower, layout));
}

/// True when the names of rows between blanks go on from one line to the next.
bool AreWrapped(std::string_view upper, std::string_view lower, const TextLayout& layout,
                std::int32_t columns) {
  if (!ByBlanks(layout) || IsRule(upper) || IsRule(lower)) return false;
  const Names above = FieldsOf(upper, layout);
  const Names below = FieldsOf(lower, layout);
  const auto are_names = [](const Names& names, std::string_view line) {
    return !names.empty() && AreNames(names, line) && !AreSetting(names) &&
           std::ranges::none_of(names, &std::string::empty);
  };
  // A line goes on when it is full.
  return above.size() >= below.size() &&
         above.size() + below.size() == static_cast<std::size_t>(columns) &&
         are_names(above, upper) && are_names(below, lower);
}

/// Names between commas over rows between blanks: "!H,K,L," above "!  I,SIGMA".
std::optional<Names> WrapAtCommas(std::string_view upper, std::string_view lower,
                                  const TextLayout& layout, std::int32_t columns) {
  constexpr std::int32_t kFewest = 4;
  if (columns < kFewest || !ByBlanks(layout)) return std::nullopt;
  const auto found =
      NamesOverCommas(WithoutCommentMarks(upper, layout), WithoutCommentMarks(lower, layout));
  if (!std::cmp_equal(found.size(), columns)) return std::nullopt;
  Names names;
  for (const std::string_view name : found) names.push_back(NameText(name, layout));
  return AreNames(names, lower) ? std::optional(std::move(names)) : std::nullopt;
}

/// The lower of two such lines, from 1, a few remarks above the rows at most; 0: there are none.
std::int32_t FindWrappedAtCommas(std::span<const std::string_view> above, const TextLayout& layout,
                                 std::int32_t columns) {
  constexpr std::size_t kNear = 6;
  for (std::size_t i = above.size(); i > 1 && i + kNear > above.size(); --i) {
    const bool alike = IsDataLine(above[i - 1], layout) == IsDataLine(above[i - 2], layout);
    if (alike && WrapAtCommas(above[i - 2], above[i - 1], layout, columns)) {
      return static_cast<std::int32_t>(i);
    }
  }
  return 0;
}

/// "UV,,Cond,," over two columns each, not a first column of labels without a name.
bool HoldOverOthers(std::string_view names, const TextLayout& layout, std::int32_t columns) {
  const auto found = SplitNames(names, layout, columns, RowLabels::Never);
  return found && !found->front().empty() && std::ranges::count(*found, std::string()) > 0;
}

}  // namespace

std::optional<Names> StackNames(std::string_view upper, std::string_view lower,
                                const TextLayout& layout, std::int32_t columns) {
  const auto wanted = static_cast<std::size_t>(columns);
  if (layout.ByPlace() || TrimBlankBytes(upper).empty()) return std::nullopt;
  if (auto wrapped = WrapAtCommas(upper, lower, layout, columns)) return wrapped;
  return ByBlanks(layout) ? StackWords(upper, lower, layout, wanted)
                          : StackFields(upper, lower, layout, wanted);
}

std::optional<HeaderLines> FindStackedNames(std::span<const std::string_view> above,
                                            const HeaderLines& head, const TextLayout& layout,
                                            std::int32_t columns) {
  const auto line = [above](std::int32_t number) {
    return above[static_cast<std::size_t>(number) - 1];
  };
  const std::int32_t names = head.names;
  if (names > 1 && AreStacked(line(names - 1), line(names), layout, columns)) return head;
  if (names > 0) {
    const bool above_units = head.units == names + 1 &&
                             HoldOverOthers(line(names), layout, columns) &&
                             AreStacked(line(names), line(head.units), layout, columns);
    return above_units ? std::optional(HeaderLines{head.units, 0}) : std::nullopt;
  }
  if (const std::int32_t line_of_commas = FindWrappedAtCommas(above, layout, columns)) {
    return HeaderLines{line_of_commas, 0};
  }
  auto last = static_cast<std::int32_t>(above.size());
  while (last > 1 && IsRule(line(last))) --last;
  const bool wrapped = last > 1 && AreWrapped(line(last - 1), line(last), layout, columns);
  return wrapped ? std::optional(HeaderLines{last, 0}) : std::nullopt;
}

}  // namespace tarnwick
