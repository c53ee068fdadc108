#include "data/text/names_line.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

#include "base/ascii.h"
#include "base/text_encoding.h"
#include "data/text/field_kind.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLongestName = 255;
constexpr std::size_t kMostNames = 1000;
constexpr std::size_t kLongestUnit = 16;
constexpr std::size_t kNearLines = 4;       // above the rows, blank lines and rules apart
constexpr std::size_t kCommentLines = 200;  // of a block of comments
constexpr std::size_t kNearComments = 3;    // where words between blanks may be names

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
      if (!names.empty() && names.front().empty()) names.erase(names.begin());
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

/// The inside of a line that stands in one pair of quotes as a whole.
std::optional<std::string_view> WholeLineInQuotes(std::string_view line) {
  line = TrimBlankBytes(line);
  const bool quoted = line.size() > 2 && line.front() == '"' && line.back() == '"';
  if (!quoted || line.substr(1, line.size() - 2).find('"') != line.npos) return std::nullopt;
  return line.substr(1, line.size() - 2);
}

enum class RowLabels { Possible, Never };

/// The names as many as there are columns: superfluous empty ones at the end dropped, a leading "Data:" dropped, an empty
/// one put before those of tables whose rows are labelled. False when their number is another.
bool FitTo(std::size_t columns, Names& names, RowLabels labels) {
  if (names.size() > columns) TrimEmptyEnd(names);
  if (names.size() == columns + 1 && names.front().ends_with(':')) names.erase(names.begin());
  if (names.size() == columns) return true;
  const bool all_filled = std::ranges::none_of(names, &std::string::empty);
  if (labels == RowLabels::Possible && columns > 2 && names.size() + 1 == columns && all_filled) {
    names.insert(names.begin(), std::string());
    return true;
  }
  return false;
}

void DropTrailingSeparators(Names& names) {
  for (std::string& name : names) {
    while (!name.empty() && (name.back() == ',' || name.back() == ';')) name.pop_back();
  }
}

/// "-----  ----" or "=+=": a rule between head and rows, no names.
bool IsRule(std::string_view line) {
  line = TrimBlankBytes(line);
  constexpr std::string_view kStrokes = "-=+_|#*~:. \t,;";
  return std::all_of(line.begin(), line.end(),
                     [&](char c) { return kStrokes.find(c) != kStrokes.npos; });
}

/// True when words of a sentence are among the names.
bool HoldsSentence(const Names& names) {
  constexpr std::string_view kWords[] = {"the",  "of",   "by",   "is",    "are", "was",  "for",
                                         "from", "this", "and",  "to",    "in",  "with", "on",
                                         "at",   "set",  "see",  "or",    "an",  "file", "data",
                                         "not",  "be",   "made", "units:"};
  const auto holds_word = [&](std::string_view name) {
    while (!name.empty()) {
      const std::string_view word = name.substr(0, name.find(' '));
      if (std::ranges::find(kWords, LowerAscii(word)) != std::end(kWords)) return true;
      name = TrimBlankBytes(name.substr(word.size()));
    }
    return false;
  };
  // A single name may hold "of" or "at"; several such words are none.
  const auto words = std::ranges::count_if(names, holds_word);
  const bool address = std::ranges::any_of(
      names, [](const std::string& name) { return name.find("://") != name.npos; });
  return address || 2 * static_cast<std::size_t>(words) >= names.size() ||
         std::ranges::any_of(names, [&](const std::string& name) {
           return name.find(' ') == name.npos && holds_word(name);
         });
}

bool AllOfFilled(const Names& names, bool (*is)(std::string_view)) {
  std::size_t filled = 0;
  for (const std::string& name : names) {
    if (name.empty()) continue;
    ++filled;
    if (!is(name)) return false;
  }
  return filled > 0;
}

/// Most of a line of names are texts; some may be numbers, years for instance.
bool AreNames(const Names& names, std::string_view line) {
  if (IsRule(line) || AllOfFilled(names, &IsColumnWidth)) return false;
  std::size_t filled = 0;
  std::size_t texts = 0;
  for (const std::string& name : names) {
    const FieldKind kind = KindOfField(name);
    filled += kind == FieldKind::Empty ? 0 : 1;
    texts += kind == FieldKind::Text || kind == FieldKind::Placeholder ? 1 : 0;
  }
  // "Operator: Smith" is a remark over two columns, not their names.
  const bool remark = names.size() == 2 && (names[0].ends_with(':') || names[0].ends_with('='));
  return filled > 0 && texts > 0 && !remark && !HoldsSentence(names) &&
         (2 * texts >= filled || KindOfField(names.front()) == FieldKind::Text);
}

bool IsBracketed(std::string_view text) {
  return text.size() >= 2 && ((text.front() == '(' && text.back() == ')') ||
                              (text.front() == '[' && text.back() == ']'));
}

bool IsUnit(std::string_view text) {
  if (IsBracketed(text)) return true;
  // In small letters, between strokes.
  constexpr std::string_view kUnits =
      "|#|-|--|%|s|ms|us|ns|sec|seconds|min|h|hr|hours|d|days|m|mm|cm|km|nm|um|v|mv|uv|kv|a|"
      "ma|ua|na|pa|hz|khz|mhz|ghz|ohm|ohms|kohm|k|c|degc|deg c|deg|rad|f|nf|uf|pf|hh|w|mw|"
      "kw|j|kj|ev|kev|mev|n|kn|mpa|kpa|hpa|bar|mbar|psi|torr|kg|g|mg|ug|l|ml|ul|mol|mmol|"
      "m/s|m/s2|m/s^2|km/h|rpm|cm-1|cm^-1|1/cm|counts|cps|au|a.u.|arb|db|dbm|ppm|ppb|w/m2|"
      "w/m^2|t|mt|g/l|mg/l|bits|pixels|utc|v/ref|degrees|volts|amps|celsius|kelvin|°|°c|°f|"
      "Ω|µa|µm|µv|µs|ft|in|lb|lbs|";
  if (text.size() > kLongestUnit) return false;
  const std::string lower = LowerAscii(text);
  return kUnits.find("|" + lower + "|") != kUnits.npos || text.find('/') != text.npos ||
         text.find('^') != text.npos || text.find("vs") != text.npos;
}

/// A line below the names whose fields are mostly units. Single letters may be names as well: all must be units then.
bool AreUnits(const Names& names) {
  std::size_t filled = 0;
  std::size_t units = 0;
  bool sure = false;
  for (const std::string& name : names) {
    if (name.empty()) continue;
    ++filled;
    if (!IsUnit(name)) continue;
    ++units;
    sure = sure || name.size() > 1;
  }
  return filled > 0 && (units == filled || (sure && 2 * units >= filled));
}

/// The lines worth a look, the nearest to the rows first, by their places.
std::vector<std::size_t> Candidates(std::span<const std::string_view> above,
                                    const TextLayout& layout) {
  std::vector<std::size_t> places;
  std::size_t plain = 0;
  std::size_t comments = 0;
  for (std::size_t i = above.size(); i-- > 0 && plain < kNearLines && comments < kCommentLines;) {
    const std::string_view line = above[i];
    if (TrimBlankBytes(line).empty() || IsRule(line)) continue;
    ++(IsDataLine(line, layout) ? plain : comments);
    places.push_back(i);
  }
  return places;
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

std::string NameText(std::string_view field, const TextLayout& layout) {
  std::string buffer;
  std::string_view text = FieldText(field, layout, buffer);
  if (text.size() > kLongestName) {
    std::size_t cut = kLongestName;
    while (cut > kLongestName - 4 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) --cut;
    text = text.substr(0, cut);
  }
  std::string name = IsValidUtf8(text) ? std::string(text) : Utf8FromEightBit(text);
  // A line end within quotes, or a stray control character, is no part of a name.
  std::ranges::replace_if(
      name, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return name;
}

std::optional<Names> SplitNames(std::string_view line, const TextLayout& layout,
                                std::int32_t columns) {
  const auto wanted = static_cast<std::size_t>(columns);
  const std::optional<std::string_view> inside = WholeLineInQuotes(line);
  const bool comment = !IsDataLine(line, layout);
  const std::string_view text =
      inside ? *inside : (comment ? WithoutCommentMarks(line, layout) : line);
  TextLayout other_merging = layout;
  other_merging.merge = !layout.merge;
  for (const TextLayout& merging : {std::cref(layout), std::cref(other_merging)}) {
    Names names = SplitBy(NameGaps::Separators, text, merging);
    if (comment) DropTrailingSeparators(names);
    if (FitTo(wanted, names, comment ? RowLabels::Never : RowLabels::Possible)) return names;
  }
  // A mark may be the name of a column as well: "#" over a count of points.
  Names marked = SplitBy(NameGaps::Separators, line, layout);
  if (comment && marked.size() == wanted && !layout.IsSeparator(' ')) return marked;
  // Sentences hold commas and blanks too: over one or two columns only the rows' own separators make names of a plain line.
  if (wanted < 2 || (wanted == 2 && !comment && !inside && !layout.IsSeparator(' '))) {
    return std::nullopt;
  }
  for (const NameGaps gaps : kOtherGaps) {
    Names names = SplitBy(gaps, text, layout);
    if (names.size() == wanted) {
      DropTrailingSeparators(names);
      return names;
    }
  }
  return std::nullopt;
}

HeaderLines FindHeaderLines(std::span<const std::string_view> above, const TextLayout& layout,
                            std::int32_t columns) {
  HeaderLines found;
  std::optional<std::size_t> nearest;
  std::size_t comments = 0;
  for (const std::size_t place : Candidates(above, layout)) {
    const bool comment = !IsDataLine(above[place], layout);
    comments += comment ? 1 : 0;
    const std::optional<Names> names = SplitNames(above[place], layout, columns);
    const bool far = comment && comments > kNearComments && layout.IsSeparator(' ');
    if (!names || far || !AreNames(*names, above[place])) {
      if (nearest) break;
      continue;
    }
    const auto line = static_cast<std::int32_t>(place) + 1;
    if (!nearest) {
      nearest = place;
      found.names = line;
      if (!AreUnits(*names)) break;
      continue;
    }
    // What stands above a line of units names the columns.
    found.units = found.names;
    found.names = line;
    break;
  }
  return found;
}

std::string UnitText(std::string_view text) {
  if (IsBracketed(text)) text = TrimBlankBytes(text.substr(1, text.size() - 2));
  const bool none = text == "#" || text == "-" || text == "--" || text == "##" || text == "1";
  return none ? std::string() : std::string(text);
}

}  // namespace tarnwick
