#include "data/text/header_lines.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "base/text_encoding.h"
#include "data/text/field_kind.h"
#include "data/text/names_line.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLongestUnit = 16;
constexpr std::size_t kNearLines = 4;             // above the rows, blank lines and rules apart
constexpr std::size_t kCommentLines = 200;        // of a block of comments
constexpr std::size_t kNearComments = 3;          // where words between blanks may be names
constexpr std::size_t kOtherLinesBelowNames = 1;  // likewise

using Names = std::vector<std::string>;

/// "-----  ----" or "=+=": a rule between head and rows, no names.
bool IsRule(std::string_view line) {
  line = TrimBlankBytes(line);
  constexpr std::string_view kStrokes = "-=+_|#*~:. \t,;";
  return std::all_of(line.begin(), line.end(),
                     [&](char c) { return kStrokes.find(c) != kStrokes.npos; });
}

/// True when words of a sentence are among the names. Between commas or tabs "on" and "set" are names like others.
bool HoldsSentence(const Names& names, std::string_view line) {
  const bool by_blanks = line.find_first_of(",;\t|") == line.npos;
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
  const auto words = std::ranges::count_if(names, [&](const std::string& name) {
    return (by_blanks || name.find(' ') != name.npos) && holds_word(name);
  });
  const bool address = std::ranges::any_of(
      names, [](const std::string& name) { return name.find("://") != name.npos; });
  return address || 2 * static_cast<std::size_t>(words) >= names.size() ||
         std::ranges::any_of(names, [&](const std::string& name) {
           return by_blanks && name.find(' ') == name.npos && holds_word(name);
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
  return filled > 0 && texts > 0 && !remark && !HoldsSentence(names, line) &&
         (2 * texts >= filled || KindOfField(names.front()) == FieldKind::Text);
}

bool IsUnit(std::string_view text) {
  if (IsBracketed(text)) return true;
  // In small letters, between strokes.
  constexpr std::string_view kUnits =
      "|#|-|--|%|s|ms|us|ns|sec|seconds|min|h|hr|hours|d|days|m|mm|cm|km|nm|um|v|mv|uv|kv|a|"
      "ma|ua|na|pa|hz|khz|mhz|ghz|ohm|ohms|kohm|k|c|degc|deg c|deg|rad|f|nf|uf|pf|hh|w|mw|"
      "kw|j|kj|ev|kev|mev|n|kn|mpa|kpa|hpa|bar|mbar|psi|torr|kg|g|mg|ug|l|ml|ul|mol|mmol|"
      "second|volt|amp|m/s|m/s2|m/s^2|km/h|rpm|cm-1|cm^-1|1/"
      "cm|counts|cps|au|a.u.|arb|db|dbm|ppm|ppb|w/m2|"
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

/// Every column has a name of its own.
bool AreComplete(const Names& names) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i].empty() || std::find(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(i),
                                      names[i]) != names.begin() + static_cast<std::ptrdiff_t>(i)) {
      return false;
    }
  }
  return true;
}

/// Over columns told by their places any line gives some names.
bool IsSparse(const Names& names, const TextLayout& layout) {
  return !layout.cuts.empty() && 4 * std::ranges::count(names, std::string()) > std::ssize(names);
}

/// The rows' own separators give more names than there are columns.
bool HasMoreThan(std::int32_t columns, std::string_view line, const TextLayout& layout) {
  if (layout.ByPlace() || layout.IsSeparator(' ')) return false;
  while (!line.empty() && (IsBlankByte(line.back()) || layout.IsSeparator(line.back()))) {
    line.remove_suffix(1);
  }
  return CountFields(line, layout, columns + 1) > columns;
}

/// Takes lines that may be names, from the rows upwards: what stands above a line of units names the columns, and so does a
/// line of complete names above one that repeats itself or leaves names out ("Avg", "Avg", "Smp").
class HeadReader {
 public:
  /// False when no line further up counts.
  bool Take(std::size_t place, const Names& names) {
    const auto line = static_cast<std::int32_t>(place) + 1;
    const bool units = AreUnits(names);
    if (!HasNames()) {
      found_.names = line;
      nearest_ = units ? Nearest::Units : AreComplete(names) ? Nearest::Complete : Nearest::Poor;
      repeats_ = std::ranges::none_of(names, &std::string::empty);
      last_ = place;
      return nearest_ != Nearest::Complete;
    }
    if (nearest_ == Nearest::Units) {
      found_ = {line, found_.names};
      return false;
    }
    if (place + 1 != last_) return false;
    last_ = place;
    if (units && units_ == 0) {
      units_ = line;
      return true;
    }
    if (AreComplete(names)) found_ = {line, units_ != 0 ? units_ : repeats_ ? found_.names : 0};
    return false;
  }

  bool HasNames() const { return found_.names > 0; }
  HeaderLines Found() const { return found_; }

 private:
  enum class Nearest { Complete, Units, Poor };

  HeaderLines found_;
  Nearest nearest_ = Nearest::Complete;
  bool repeats_ = false;  // a poor line is full: what repeats itself over columns are units
  std::int32_t units_ = 0;
  std::size_t last_ = 0;
};

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

HeaderLines FindHeaderLines(std::span<const std::string_view> above, const TextLayout& layout,
                            std::int32_t columns) {
  HeadReader head;
  std::size_t comments = 0;
  std::size_t others = 0;
  bool nearest = true;
  for (const std::size_t place : Candidates(above, layout)) {
    const bool comment = !IsDataLine(above[place], layout);
    comments += comment ? 1 : 0;
    const std::optional<Names> names = SplitNames(above[place], layout, columns);
    const bool far = layout.IsSeparator(' ') &&
                     (comment ? comments > kNearComments : others > kOtherLinesBelowNames);
    const bool cut_short = !nearest && HasMoreThan(columns, above[place], layout);
    if (names && !IsSparse(*names, layout) && !far && !cut_short &&
        AreNames(*names, above[place])) {
      if (!head.Take(place, *names)) break;
    } else if (head.HasNames()) {
      break;
    } else if (!comment) {
      ++others;
    }
    nearest = false;
  }
  return head.Found();
}

}  // namespace tarnwick
