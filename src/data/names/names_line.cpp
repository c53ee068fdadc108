#include "data/names/names_line.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

#include "base/ascii.h"
#include "base/text_encoding.h"
#include "data/fields/line_words.h"
#include "data/names/apart_words.h"
#include "data/names/argument_and_data.h"
#include "data/names/name_marks.h"
#include "data/names/names_frame.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLongestName = 255;
constexpr std::size_t kMostNames = 1000;
constexpr std::size_t kMostNamesTooMany = 3;  // of columns that the rows leave out at their ends
constexpr std::size_t kColumnsPerNameTooMany = 32;  // more of many columns

using Names = std::vector<std::string>;

/// What names are separated by where it is not what separates the values.
enum class NameGaps { Separators, Comma, Semicolon, Tab, Bar, WideBlanks, Blanks };
constexpr NameGaps kOtherGaps[] = {NameGaps::Comma, NameGaps::Semicolon,  NameGaps::Tab,
                                   NameGaps::Bar,   NameGaps::WideBlanks, NameGaps::Blanks};

void TrimEmptyEnd(Names& names) {
  while (!names.empty() && names.back().empty()) names.pop_back();
}

Names SplitAsRows(std::string_view line, const TextLayout& layout) {
  Names names;
  FieldCursor cursor(line, layout);
  while (names.size() < kMostNames) {
    const std::optional<std::string_view> field = cursor.Next();
    if (!field) break;
    names.push_back(NameText(*field, layout));
  }
  return names;
}

Names SplitByByte(std::string_view line, char separator, const TextLayout& layout) {
  Names names;
  while (names.size() < kMostNames) {
    const std::size_t end = std::min(line.find(separator), line.size());
    names.push_back(NameText(line.substr(0, end), layout));
    if (end == line.size()) break;
    line.remove_prefix(end + 1);
  }
  return names;
}

Names SplitByBlanks(std::string_view line, std::size_t at_least, const TextLayout& layout) {
  Names names;
  line = TrimBlankBytes(line);
  while (!line.empty() && names.size() < kMostNames) {
    std::size_t end = 0;
    std::size_t blanks = 0;
    for (; end < line.size(); end += std::max<std::size_t>(blanks, 1)) {
      blanks = 0;
      while (end + blanks < line.size() && IsBlankByte(line[end + blanks])) ++blanks;
      const bool tab = line.substr(end, blanks).find('\t') != line.npos;
      if (blanks >= at_least || tab) break;
    }
    names.push_back(NameText(line.substr(0, end), layout));
    line = TrimBlankBytes(line.substr(std::min(end, line.size())));
  }
  return names;
}

Names SplitBy(NameGaps gaps, std::string_view line, const TextLayout& layout) {
  switch (gaps) {
    case NameGaps::Comma:
      return SplitByByte(line, ',', layout);
    case NameGaps::Semicolon:
      return SplitByByte(line, ';', layout);
    case NameGaps::Tab:
      return SplitByByte(line, '\t', layout);
    case NameGaps::Bar: {
      Names names = SplitByByte(line, '|', layout);
      TrimEmptyEnd(names);
      // "The columns are | q | I |"
      const bool led_in = !names.empty() && names.front().find(' ') != std::string::npos;
      if (names.size() > 1 && (names.front().empty() || (led_in && line.back() == '|'))) {
        names.erase(names.begin());
      }
      return names;
    }
    case NameGaps::WideBlanks:
      return SplitByBlanks(line, 2, layout);
    case NameGaps::Blanks:
      return SplitByBlanks(line, 1, layout);
    case NameGaps::Separators:
      break;
  }
  return SplitAsRows(line, layout);
}

/// "f,dB(S(1,1)),deg"
Names SplitOutsideParentheses(std::string_view line, const TextLayout& layout) {
  Names names;
  int depth = 0;
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= line.size(); ++i) {
    if (i == line.size() || (line[i] == ',' && depth == 0)) {
      names.push_back(NameText(line.substr(begin, i - begin), layout));
      begin = i + 1;
    } else {
      depth += line[i] == '(' ? 1 : line[i] == ')' ? -1 : 0;
    }
  }
  return names;
}

/// "Time (s) Voltage (V)": what stands in brackets belongs to the word before it.
Names SplitBeforeUnits(std::string_view line, const TextLayout& layout) {
  Names names;
  for (std::string& word : SplitByBlanks(line, 1, layout)) {
    if (!names.empty() && IsBracketed(word)) {
      names.back() += " " + word;
    } else {
      names.push_back(std::move(word));
    }
  }
  return names;
}

/// The inside of a line that stands in one pair of quotes as a whole.
std::optional<std::string_view> WholeLineInQuotes(std::string_view line) {
  line = TrimBlankBytes(line);
  const bool quoted = line.size() > 2 && line.front() == '"' && line.back() == '"';
  if (!quoted || line.substr(1, line.size() - 2).find('"') != line.npos) return std::nullopt;
  return line.substr(1, line.size() - 2);
}

/// The names as many as there are columns: superfluous empty ones at the end dropped, a leading "Data:" dropped, an empty
/// one put before those of tables whose rows are labelled. False when their number is another.
bool FitTo(std::size_t columns, Names& names, RowLabels labels) {
  if (names.size() > columns) TrimEmptyEnd(names);
  if (names.size() == columns + 1 && names.front().ends_with(':')) names.erase(names.begin());
  if (names.size() == columns) return true;
  const bool all_filled = std::ranges::none_of(names, &std::string::empty);
  // Behind an empty one for the first column of labels the second may lack its name, too.
  const bool labelled = names.size() > 3 && names.front().empty() &&
                        std::count(names.begin(), names.end(), std::string()) == 1;
  if (labels == RowLabels::AtEnd && columns > 2 && names.size() + 1 == columns && all_filled) {
    names.emplace_back();
    return true;
  }
  const bool ahead = labels == RowLabels::Possible || labels == RowLabels::Ahead;
  if (ahead && columns > 2 && names.size() + 1 == columns && (all_filled || labelled)) {
    names.insert(names.begin(), std::string());
    return true;
  }
  return false;
}

/// Names over columns that are cut by places: as many words as columns are their names in turn, others belong where they share
/// most characters.
Names SplitByPlace(std::string_view line, const TextLayout& layout) {
  const std::size_t columns = layout.cuts.size();
  if (const std::string_view bare = TrimBlankBytes(line);
      bare.size() > 1 && bare.front() == '|' && bare.back() == '|') {
    Names names = SplitBy(NameGaps::Bar, bare, layout);
    names.resize(columns);
    return names;
  }
  for (const std::size_t at_least : {std::size_t{1}, std::size_t{2}}) {
    Names names = SplitByBlanks(line, at_least, layout);
    if (names.size() == columns) return names;
  }
  Names names(columns);
  for (const LineWord& word : WordsOfLine(line)) {
    std::size_t best = 0;
    std::int32_t most = 0;
    for (std::size_t i = 0; i < columns; ++i) {
      const std::int32_t end = i + 1 < columns ? std::min(layout.cuts[i + 1], word.end) : word.end;
      const std::int32_t shared = end - std::max(layout.cuts[i], word.begin);
      if (shared > most) {
        most = shared;
        best = i;
      }
    }
    if (most > 0) names[best] += (names[best].empty() ? "" : " ") + NameText(word.text, layout);
  }
  return names;
}

/// "#wave  #intensity": a mark before every name is no part of them.
void DropMarks(const TextLayout& layout, Names& names) {
  const auto marked = [&layout](const std::string& name) {
    return name.size() > 1 && layout.BeginsComment(name.data(), name.data() + name.size());
  };
  // The first has lost its own with the line's.
  if (names.size() < 2 || !std::all_of(names.begin() + 1, names.end(), marked)) return;
  for (std::size_t i = 1; i < names.size(); ++i) names[i].erase(0, 1);
}

/// Many short words that blanks part over fewer columns than there are, as names are that were listed and not counted.
bool ListTheFirst(std::size_t columns, const Names& names, std::string_view text) {
  constexpr std::size_t kFewest = 10, kLongest = 12;
  return names.size() >= kFewest && names.size() < columns &&
         text.find_first_of(",;:|\"") == text.npos &&
         std::ranges::all_of(names,
                             [](const std::string& name) { return name.size() <= kLongest; });
}

/// Names of the first columns only; they are no sentence.
bool NameTheFirst(std::size_t columns, const Names& names) {
  constexpr std::size_t kFewest = 3;
  constexpr std::size_t kLongest = 40;
  return names.size() >= kFewest && names.size() < columns &&
         std::ranges::all_of(names, [](const std::string& name) {
           return !name.empty() && name.size() <= kLongest && !name.ends_with(':');
         });
}

/// Words that nothing but blanks part, one less than the columns of rows that other separators part.
bool IsOneLess(const Names& names, std::string_view text, std::size_t columns,
               const TextLayout& layout) {
  return !layout.IsSeparator(' ') && columns > 3 && names.size() + 1 == columns &&
         text.find_first_of(",;:=|\t\"") == text.npos;
}

void DropTrailingSeparators(Names& names) {
  for (std::string& name : names) {
    while (!name.empty() && (name.back() == ',' || name.back() == ';')) name.pop_back();
  }
}

/// Two columns may have one name then: "V(out)" over "0.5,0.3" or "(0.5,0.3)".
bool SeparateTogether(const TextLayout& layout) {
  return (layout.IsSeparator('\t') && layout.IsSeparator(',') && !layout.IsSeparator(' ')) ||
         (layout.IsSeparator(' ') && layout.IsSeparator('('));
}

/// "U (V)"
bool EndsBracketed(const std::string& name) {
  return name.find(' ') != name.npos && (name.back() == ')' || name.back() == ']');
}

/// A mark of comments, and right behind it a separator.
bool BeginsWithMarkedField(std::string_view line, const TextLayout& layout) {
  line = TrimBlankBytes(line);
  const std::size_t mark = layout.CommentMark(line.data(), line.data() + line.size()).size();
  return mark > 0 && mark < line.size() && layout.IsSeparator(line[mark]);
}

/// The names where signs on the line itself say how it is cut; `text` is the line without marks of comments.
Names SplitBySigns(std::string_view line, std::string_view text, const TextLayout& layout) {
  // `"X", "Y"` over columns of blanks
  if (layout.IsSeparator(' ') && text.find("\",") != text.npos) {
    return SplitBy(NameGaps::Comma, text, layout);
  }
  // Typeset rows end in strokes, which begin words within names.
  if (layout.IsSeparator('&') && line.find('&') != line.npos) {
    line = TrimBlankBytes(line);
    while (line.ends_with('\\')) line = TrimBlankBytes(line.substr(0, line.size() - 1));
    return SplitByByte(line, '&', layout);
  }
  // A mark may be the name or the unit of a column as well: "#" over a count of points, "%;MPa".
  if (!layout.IsSeparator(' ') && BeginsWithMarkedField(line, layout)) {
    return SplitBy(NameGaps::Separators, line, layout);
  }
  return {};
}

}  // namespace

std::string_view WithoutCommentMarks(std::string_view line, const TextLayout& layout) {
  line = TrimBlankBytes(line);
  // Some instruments mark the line of labels with a letter of its own.
  if (line.starts_with("#L ")) return TrimBlankBytes(line.substr(3));
  while (!line.empty()) {
    const std::string_view mark = layout.CommentMark(line.data(), line.data() + line.size());
    if (mark.empty()) break;
    line = TrimBlankBytes(line.substr(mark.size()));
  }
  return line;
}

std::string WithBlankedMarks(std::string_view line, const TextLayout& layout) {
  const std::string_view rest = WithoutCommentMarks(line, layout);
  return std::string(static_cast<std::size_t>(rest.data() - line.data()), ' ') + std::string(rest);
}

bool EndsWithSeparator(std::string_view line, const TextLayout& layout) {
  return !layout.merge && !layout.ByPlace() && !line.empty() && layout.IsSeparator(line.back());
}

std::string NameText(std::string_view field, const TextLayout& layout) {
  std::string buffer;
  std::string_view text = FieldText(field, layout, buffer);
  if (text.size() > kLongestName) {
    std::size_t cut = kLongestName;
    while (cut > kLongestName - 4 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) --cut;
    text = text.substr(0, cut);
  }
  std::string name = Utf8FromText(text);
  // A line end within quotes, or a stray control character, is no part of a name.
  std::ranges::replace_if(
      name, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return name;
}

std::vector<std::string> NameTexts(std::string_view line, const TextLayout& layout) {
  std::vector<std::string> texts;
  FieldCursor cursor(line, layout);
  while (const std::optional<std::string_view> field = cursor.Next()) {
    texts.push_back(NameText(*field, layout));
  }
  return texts;
}

namespace {

/// The names on a line that holds nothing else.
std::optional<Names> SplitWhole(std::string_view line, const TextLayout& layout,
                                std::int32_t columns, RowLabels labels) {
  if (!layout.cuts.empty()) return SplitByPlace(WithBlankedMarks(line, layout), layout);
  const auto wanted = static_cast<std::size_t>(columns);
  const std::optional<std::string_view> inside = WholeLineInQuotes(line);
  const bool comment = !IsDataLine(line, layout);
  if (SeparateTogether(layout)) labels = RowLabels::Never;
  std::string_view text =
      WithoutFrame(inside ? *inside : (comment ? WithoutCommentMarks(line, layout) : line));
  if (comment) text = WithoutClosingMark(text, layout, wanted);
  if (Names names = SplitBySigns(line, text, layout); names.size() == wanted) return names;
  TextLayout other_merging = layout;
  other_merging.merge = !layout.merge;
  for (const TextLayout& merging : {std::cref(layout), std::cref(other_merging)}) {
    // Two blanks between words leave no name out.
    if (&merging == &other_merging && layout.IsSeparator(' ')) break;
    Names names = SplitBy(NameGaps::Separators, text, merging);
    if (comment) {
      DropTrailingSeparators(names);
      DropMarks(layout, names);
    }
    const bool from_left = labels == RowLabels::AtEnd;
    if (FitTo(wanted, names, comment && !from_left ? RowLabels::Never : labels)) return names;
  }
  if (text.find('(') != text.npos && layout.IsSeparator(',')) {
    if (Names names = SplitOutsideParentheses(text, layout); names.size() == wanted) return names;
  }
  const bool tight = !comment || text.find_first_of("|;\t") != text.npos;
  if (tight && wanted > 1 && !layout.IsSeparator(' ')) {
    Names names = SplitBy(NameGaps::Separators, text, layout);
    const std::size_t most = std::max(kMostNamesTooMany, wanted / kColumnsPerNameTooMany);
    const bool few_more = names.size() > wanted && names.size() <= wanted + most;
    if (few_more && std::ranges::none_of(std::span(names).first(wanted), &std::string::empty)) {
      names.resize(wanted);
      return names;
    }
  }
  if (wanted == 2 && !comment && !inside && !layout.IsSeparator(' ')) {
    Names names = SplitBeforeUnits(text, layout);
    const bool in_brackets = names.size() == 2 && std::ranges::all_of(names, &EndsBracketed);
    if (in_brackets || AreArgumentAndData(names) || AreTwins(names)) return names;
    if (names.size() == wanted && HasWideGapsOnly(text) && text.find_first_of(",;:|=") == text.npos)
      return names;
  }
  // Sentences hold commas and blanks too: over one or two columns only the rows' own separators make names of a plain line.
  if (wanted < 2 || (wanted == 2 && !comment && !inside && !layout.IsSeparator(' '))) {
    return std::nullopt;
  }
  if (const auto parts = SplitAtDashes(text); comment && parts.size() == wanted) {
    Names names;
    for (const std::string_view part : parts) names.push_back(NameText(part, layout));
    return names;
  }
  for (const NameGaps gaps : kOtherGaps) {
    // "TIREG (F8.1,F6.1)": commas within parentheses part nothing.
    Names names = gaps == NameGaps::Comma ? SplitOutsideParentheses(text, layout)
                                          : SplitBy(gaps, text, layout);
    if (names.size() == wanted) {
      DropTrailingSeparators(names);
      return names;
    }
  }
  if (Names names = SplitBeforeUnits(text, layout); names.size() == wanted) return names;
  if (Names names = SplitBy(NameGaps::Blanks, text, layout);
      IsOneLess(names, text, wanted, layout) && labels != RowLabels::Possible &&
      FitTo(wanted, names, labels)) {
    return names;
  }
  if (!comment && (!layout.IsSeparator(' ') || SeparateTogether(layout))) {
    Names names = SplitBy(NameGaps::Separators, text, layout);
    TrimEmptyEnd(names);
    if (NameTheFirst(wanted, names) || (SeparateTogether(layout) && names.size() + 1 == wanted)) {
      names.resize(wanted);
      return names;
    }
    names = SplitBy(NameGaps::Blanks, text, layout);
    if (ListTheFirst(wanted, names, text)) {
      names.resize(wanted);
      return names;
    }
  }
  return std::nullopt;
}

}  // namespace

std::optional<Names> SplitNames(std::string_view line, const TextLayout& layout,
                                std::int32_t columns, RowLabels labels) {
  auto names = SplitWhole(line, layout, columns, labels);
  if (names || layout.ByPlace()) return names;
  const std::string_view bare = WithoutRemarkBehindNames(line);
  return bare.size() < line.size() ? SplitWhole(bare, layout, columns, RowLabels::Never) : names;
}

std::optional<Names> UnitsUnderNames(std::string_view units, std::string_view names,
                                     const TextLayout& layout, std::int32_t columns) {
  const std::string heads = WithBlankedMarks(names, layout);
  const std::string below = WithBlankedMarks(units, layout);
  if (!layout.IsSeparator(' ') || layout.ByPlace() || (heads + below).find('\t') != heads.npos) {
    return std::nullopt;
  }
  const std::vector<LineWord> words = WordsOfLine(heads);
  if (words.size() != static_cast<std::size_t>(columns)) return std::nullopt;
  const std::vector<LineWord> unit_words = WordsOfLine(below);
  // As many units as names stand in their order, wherever.
  if (unit_words.size() == words.size()) return std::nullopt;
  Names found(words.size());
  for (const LineWord& unit : unit_words) {
    const auto over = std::ranges::find_if(words, [&unit](const LineWord& name) {
      return unit.begin <= name.end && name.begin <= unit.end;
    });
    if (over == words.end()) return std::nullopt;
    std::string& text = found[static_cast<std::size_t>(over - words.begin())];
    text += (text.empty() ? "" : " ") + NameText(unit.text, layout);
  }
  return found;
}

std::optional<Names> UnitsOverRule(std::string_view units, std::string_view rule,
                                   const TextLayout& layout, std::int32_t columns) {
  const auto is_stroke = [](char c) { return c == '-' || c == '=' || c == ' '; };
  if (!layout.IsSeparator(' ') || layout.ByPlace() || !std::ranges::all_of(rule, is_stroke)) {
    return std::nullopt;
  }
  const std::vector<LineWord> strokes = WordsOfLine(rule);
  if (columns < 2 || strokes.size() != static_cast<std::size_t>(columns)) return std::nullopt;
  Names found(strokes.size());
  for (const LineWord& unit : WordsOfLine(units)) {
    const auto below = std::ranges::find_if(strokes, [&unit](const LineWord& stroke) {
      return stroke.begin <= unit.begin && unit.end <= stroke.end;
    });
    if (below == strokes.end()) return std::nullopt;
    std::string& text = found[static_cast<std::size_t>(below - strokes.begin())];
    text += (text.empty() ? "" : " ") + NameText(unit.text, layout);
  }
  return found;
}

bool IsBracketed(std::string_view text) {
  return text.size() >= 2 && ((text.front() == '(' && text.back() == ')') ||
                              (text.front() == '[' && text.back() == ']'));
}

std::string UnitText(std::string_view text) {
  if (IsBracketed(text)) text = TrimBlankBytes(text.substr(1, text.size() - 2));
  const bool none = text == "#" || text == "-" || text == "--" || text == "##" || text == "1";
  return none ? std::string() : std::string(text);
}

}  // namespace tarnwick
