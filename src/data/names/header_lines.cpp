#include "data/names/header_lines.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "data/names/names_judge.h"

namespace tarnwick {
namespace {

constexpr std::int32_t kMostFields = 1000;
constexpr std::size_t kNearLines = 4;             // above the rows, blank lines and rules apart
constexpr std::size_t kCommentLines = 200;        // of a block of comments
constexpr std::size_t kNearComments = 3;          // where words between blanks may be names
constexpr std::size_t kOtherLinesBelowNames = 1;  // likewise
constexpr int kPoorLines = 2;                     // between the nearest and a complete one
constexpr std::size_t kExplanations = 2;          // of comments between names and units

using Names = std::vector<std::string>;

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

std::ptrdiff_t CountFilled(const Names& names) {
  return std::ranges::count_if(names, [](const std::string& name) { return !name.empty(); });
}

/// Over columns told by their places any line gives some names.
bool IsSparse(const Names& names, const TextLayout& layout) {
  return !layout.cuts.empty() && 3 * std::ranges::count(names, std::string()) > std::ssize(names);
}

/// The rows' own separators give more names than there are columns.
bool HasMoreThan(std::int32_t columns, std::string_view line, const TextLayout& layout) {
  if (layout.ByPlace() || layout.IsSeparator(' ')) return false;
  while (!line.empty() && (IsBlankByte(line.back()) || layout.IsSeparator(line.back()))) {
    line.remove_suffix(1);
  }
  TextLayout merging = layout;
  merging.merge = true;
  return CountFields(line, layout, columns + 1) > columns &&
         CountFields(line, merging, columns + 1) != columns;
}

/// "[END HEADER]" between the names and the rows.
bool MarksSection(std::string_view line) {
  line = TrimBlankBytes(line);
  return line.size() > 2 && line.front() == '[' && line.back() == ']' &&
         line.find_first_of(",;\t0123456789") == line.npos && line.find(' ') != line.npos &&
         line.find("  ") == line.npos &&
         std::ranges::none_of(line, [](char c) { return c >= 'a' && c <= 'z'; });
}

/// "from Bresolin et al., 2005": what stands above tells where the numbers are from, too.
bool CitesAuthors(std::string_view line) {
  return line.find(" et al") != line.npos;
}

bool IsLabelled(std::string_view line) {
  line = TrimBlankBytes(line);
  return line.starts_with("##") && line.find('=') != line.npos;
}

/// A comment whose own separators give names of one word each, or units: no remark between the names and the rows.
bool IsCutAsRows(std::string_view comment, const std::optional<Names>& names,
                 const TextLayout& layout) {
  const std::string_view text = WithoutCommentMarks(comment, layout);
  const auto phrase = [](const std::string& name) { return name.find(' ') != name.npos; };
  return names && std::cmp_equal(CountFields(text, layout, kMostFields), names->size()) &&
         (AreUnits(*names) || std::ranges::none_of(*names, phrase));
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
      leaves_out_ = std::ranges::any_of(names, &std::string::empty);
      repeats_ = !leaves_out_;
      last_ = place;
      return nearest_ != Nearest::Complete;
    }
    if (nearest_ == Nearest::Units && !(units && leaves_out_)) {
      found_ = {line, found_.names};
      return false;
    }
    if (place + 1 != last_) return false;
    last_ = place;
    if (units && units_ == 0) {
      // Under units that leave none out, "Min" and "Avg" are none.
      if (nearest_ == Nearest::Units) {
        found_ = {line, found_.names};
        nearest_ = Nearest::Poor;
      }
      units_ = line;
      return true;
    }
    // Remarks below a full line of units: what stands above these names the columns, be some called alike.
    const bool over_units =
        units_ != 0 && leaves_out_ && std::ranges::none_of(names, &std::string::empty);
    if (AreComplete(names) || over_units) {
      found_ = {line, units_ != 0 ? units_ : repeats_ ? found_.names : 0};
      return false;
    }
    return ++poor_ < kPoorLines;
  }

  bool HasNames() const { return found_.names > 0; }
  /// Nothing but a full line of units was taken.
  bool HasUnitsOnly() const { return HasNames() && nearest_ == Nearest::Units && !leaves_out_; }
  HeaderLines Found() const { return found_; }

 private:
  enum class Nearest { Complete, Units, Poor };

  HeaderLines found_;
  Nearest nearest_ = Nearest::Complete;
  bool leaves_out_ = false;  // the nearest line lacks some
  bool repeats_ =
      false;      // it is full: where it is poor, what repeats itself over columns are units
  int poor_ = 0;  // further poor lines above it
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
    if (TrimBlankBytes(line).empty() || IsRule(line) || MarksSection(line)) continue;
    ++(IsDataLine(line, layout) ? plain : comments);
    places.push_back(i);
  }
  return places;
}

/// The line between names and rows that holds units, under some of the names at least, from 1; 0: there is none.
std::int32_t UnitsBelow(std::span<const std::string_view> above, std::int32_t names,
                        const TextLayout& layout, std::int32_t columns) {
  const auto below = static_cast<std::size_t>(names);
  for (std::size_t i = below; i < above.size() && i <= below + 1; ++i) {
    if (MarksSection(above[i])) continue;
    std::optional<Names> units;
    if (i + 1 < above.size()) units = UnitsOverRule(above[i], above[i + 1], layout, columns);
    if (!units) units = UnitsUnderNames(above[i], above[below - 1], layout, columns);
    const bool as_rows = columns < 2 || layout.IsSeparator(' ') || layout.ByPlace() ||
                         CountFields(above[i], layout, 2) > 1;
    if (!units && as_rows) units = SplitNames(above[i], layout, columns);
    if (units && AreUnits(*units)) return static_cast<std::int32_t>(i) + 1;
  }
  return 0;
}

}  // namespace

HeaderLines FindHeaderLines(std::span<const std::string_view> above, const TextLayout& layout,
                            std::int32_t columns, RowLabels labels) {
  HeadReader head;
  std::size_t comments = 0;
  std::size_t others = 0;
  std::size_t explanations = 0;
  bool nearest = true;
  const std::vector<std::size_t> places = Candidates(above, layout);
  const bool as_rows =
      columns > 1 && !layout.IsSeparator(' ') && !layout.ByPlace() &&
      std::ranges::any_of(places, [&](std::size_t place) {
        return IsDataLine(above[place], layout) &&
               CountFields(above[place], layout, columns + 1) == columns &&
               AreNames(SplitNames(above[place], layout, columns).value_or(Names()), above[place]);
      });
  const Preamble preamble = places.size() == 1 ? Preamble::None : Preamble::Some;
  for (const std::size_t place : places) {
    const bool comment = !IsDataLine(above[place], layout);
    comments += comment ? 1 : 0;
    const std::optional<Names> names = SplitNames(above[place], layout, columns, labels);
    if (names && AreTypes(*names)) continue;
    // "##IDEAL CHEMISTRY=SiO2" is a label and what it says.
    if (comment && IsLabelled(above[place])) continue;
    if (comment && CitesAuthors(above[place]) && !head.HasNames()) break;
    // What the rows' separators do not cut is no names where they cut a line above it.
    const bool loose = as_rows && !comment && CountFields(above[place], layout, 2) < 2;
    if (loose || (as_rows && comment && !IsCutAsRows(above[place], names, layout))) continue;
    // A line that stands alone tells of the columns: "time;7".
    const bool setting =
        names && AreSetting(*names) &&
        (places.size() > 1 || names->front().find_first_of(":=") != Names::value_type::npos);
    // Names would have stood below what is told of the measurement.
    if (setting && !comment && !head.HasNames() && CountFilled(*names) == 2) break;
    const bool labels_line = above[place].starts_with("#L ");
    const bool far = layout.IsSeparator(' ') && !labels_line && !(names && AreSymbols(*names)) &&
                     (comment ? comments > kNearComments : others > kOtherLinesBelowNames);
    // What stands far above rows of commas is prose unless commas part it, too.
    const bool prose = comment && !layout.IsSeparator(' ') && comments > kNearComments &&
                       !IsCutAsRows(above[place], names, layout);
    const bool cut_short = !nearest && HasMoreThan(columns, above[place], layout);
    // Only right above the rows one name may be missing, that of their labels.
    const bool lacks_first = names && names->front().empty() && !nearest && !head.HasNames();
    if (names && !setting && !lacks_first && !IsSparse(*names, layout) && !far && !prose &&
        !cut_short && AreNames(*names, above[place], preamble)) {
      if (!head.Take(place, *names)) break;
    } else if (comment && head.HasUnitsOnly() && explanations < kExplanations) {
      ++explanations;
      --comments;
    } else if (head.HasNames() || (columns == 1 && comment)) {
      break;  // over a single column any line would do
    } else if (!comment) {
      ++others;
    }
    nearest = false;
  }
  HeaderLines found = head.Found();
  if (found.names > 0 && found.units == 0) {
    found.units = UnitsBelow(above, found.names, layout, columns);
  }
  return found;
}

}  // namespace tarnwick
