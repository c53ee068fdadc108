#include "data/guess/names_guess.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "data/fields/field_kind.h"
#include "data/guess/table_search.h"
#include "data/names/date_heads.h"
#include "data/names/header_lines.h"
#include "data/names/listed_names.h"
#include "data/names/names_judge.h"
#include "data/names/names_line.h"
#include "data/names/placed_names.h"
#include "data/names/stacked_names.h"
#include "data/names/text_names.h"

namespace tarnwick {
namespace {

class NamesGuess {
 public:
  NamesGuess(const TableToName& table, const GuessHints& hints, TextFormat& format)
      : table_(table), hints_(hints), format_(format) {}

  void Run() {
    const TextLayout& layout = table_.layout;
    const auto headers =
        std::min(static_cast<std::size_t>(format_.header_lines), table_.lines.size());
    if (headers == 0 && FirstRowHoldsText()) format_.names_line = kNoNamesLine;
    if (table_.fields > 0 && ListsNames()) {
      format_.names_line = 0;
      listed_ = true;
    } else if (table_.fields > 0 && headers > 0) {
      const auto above = table_.lines.first(headers);
      // Rows may end with a separator where their names do not.
      const bool ends = table_.fields > 2 && EndWithSeparator();
      const auto rows = table_.rows.first(std::min(table_.rows.size(), kRowsOfPlaces));
      const RowLabels labels = ends ? RowLabels::Never : LabelsOf(rows, layout, above);
      HeaderLines found = FindHeaderLines(above, layout, table_.fields, labels);
      if (found.names == 0 && ends) found = FindHeaderLines(above, layout, table_.fields - 1);
      // Where there is none, the rule is not to find one in the preamble.
      format_.names_line = found.names > 0 ? found.names : kNoNamesLine;
      format_.units_line = found.units;
      if (!TakeNamesOverDate(above)) TakeStackedNames(above);
      if (format_.names_line == kNoNamesLine) TakePlacedNames(above);
    }
    if (hints_.names_line || hints_.stacked_names) {
      format_.stacked_names = hints_.stacked_names.value_or(false);
    }
    if (NamesLongerRows()) format_.names_line = 0;
    format_.names_line = hints_.names_line.value_or(format_.names_line);
    CountNamesApart(headers);
    format_.units_line = hints_.units_line.value_or(format_.units_line);
  }

 private:
  /// The first line has as many names as some rows have fields, and more than most rows: the rule counts the columns by it.
  bool NamesLongerRows() const {
    const TextLayout& layout = table_.layout;
    if (format_.names_line != 1 || format_.header_lines != 1 || layout.merge || layout.ByPlace() ||
        !IsDataLine(table_.lines.front(), layout)) {
      return false;
    }
    const std::int32_t names = CountFields(table_.lines.front(), layout, kMostColumns);
    return names > table_.fields && std::ranges::any_of(table_.rows, [&](std::string_view row) {
             return CountFields(row, layout, names + 1) == names;
           });
  }

  /// More names than columns, or a line right above the rows that would name them were it as long, is told.
  void CountNamesApart(std::size_t headers) {
    const TextLayout& layout = table_.layout;
    constexpr std::int32_t kFewest = 3, kColumnsPerName = 32;
    const std::int32_t most_apart = std::max(3, table_.fields / kColumnsPerName);
    const bool by_blanks = layout.IsSeparator(' ');
    if (listed_ || table_.fields < 2 || headers == 0 || layout.ByPlace() || hints_.names_line)
      return;
    if (format_.names_line > 0 && by_blanks) return;
    const auto line =
        format_.names_line > 0 ? static_cast<std::size_t>(format_.names_line) - 1 : headers - 1;
    const std::string_view text = WithoutCommentMarks(table_.lines[line], layout);
    // Separators may be doubled between names, and follow the last of them.
    TextLayout merging = layout;
    merging.merge = true;
    const std::int32_t names = CountFields(text, format_.names_line > 0 ? merging : layout,
                                           table_.fields + most_apart + 1);
    if (names == table_.fields || names > table_.fields + most_apart) return;
    if (format_.names_line > 0 && names < table_.fields) return;
    if (names < kFewest || names < table_.fields - most_apart) return;
    const std::optional<std::vector<std::string>> words = SplitNames(text, layout, names);
    if (!words || !AreNames(*words, text) || AreUnits(*words)) return;
    format_.names_apart = names;
    format_.names_apart_line = static_cast<std::int32_t>(line) + 1;
  }

  void TakeStackedNames(std::span<const std::string_view> above) {
    const TextLayout& layout = table_.layout;
    const HeaderLines head{std::max(format_.names_line, 0), format_.units_line};
    const std::optional<HeaderLines> stacked = FindStackedNames(above, head, layout, table_.fields);
    if (!stacked) return;
    format_.stacked_names = true;
    format_.names_line = stacked->names;
    format_.units_line = stacked->units;
  }

  /// On the nearest lines, blank ones and rules apart.
  bool TakeNamesOverDate(std::span<const std::string_view> above) {
    constexpr int kNear = 4;
    const auto rows = table_.rows.first(std::min(table_.rows.size(), kRowsOfPlaces));
    int seen = 0;
    for (std::size_t i = above.size(); i > 0 && seen < kNear; --i) {
      if (IsRule(above[i - 1])) continue;
      ++seen;
      const auto names = NamesOverDate(above[i - 1], rows, table_.layout, table_.fields);
      if (!names || !AreNames(*names, above[i - 1])) continue;
      format_.names_line = static_cast<std::int32_t>(i);
      format_.units_line = 0;
      return true;
    }
    return false;
  }

  /// Right above the rows, blank lines and rules apart, where nothing else names the columns.
  void TakePlacedNames(std::span<const std::string_view> above) {
    const TextLayout& layout = table_.layout;
    const auto nearest = std::find_if(above.rbegin(), above.rend(),
                                      [](std::string_view line) { return !IsRule(line); });
    if (nearest == above.rend() || SplitNames(*nearest, layout, table_.fields)) return;
    const auto rows = table_.rows.first(std::min(table_.rows.size(), kRowsOfPlaces));
    if (!NamesByPlace(*nearest, rows, layout, table_.fields)) {
      return;
    }
    format_.names_line = static_cast<std::int32_t>(above.rend() - nearest);
  }

  bool EndWithSeparator() const {
    const TextLayout& layout = table_.layout;
    return !layout.merge && std::ranges::all_of(table_.rows, [&layout](std::string_view line) {
      return EndsWithSeparator(line, layout) || ShapeOf(line, layout).kind != LineShape::Kind::Row;
    });
  }

  /// The rule finds a list of names where no line is said to hold them.
  bool ListsNames() const {
    const TextLayout& layout = table_.layout;
    const auto row = std::ranges::find_if(
        table_.lines, [&](std::string_view line) { return IsDataLine(line, layout); });
    const std::size_t above = std::max(static_cast<std::size_t>(format_.header_lines),
                                       static_cast<std::size_t>(row - table_.lines.begin()));
    const auto lines = table_.lines.first(std::min(above, table_.lines.size()));
    if (FindListedNames(lines, layout, table_.fields)) return true;
    return EndWithSeparator() && FindListedNames(lines, layout, table_.fields - 1);
  }

  /// A text in the first row, "NaN" or a flag, would pass for a name.
  bool FirstRowHoldsText() const {
    const TextLayout& layout = table_.layout;
    const auto row = std::ranges::find_if(
        table_.lines, [&](std::string_view line) { return IsDataLine(line, layout); });
    if (row == table_.lines.end()) return false;
    FieldCursor cursor(*row, layout);
    std::string buffer;
    while (const std::optional<std::string_view> field = cursor.Next()) {
      const FieldKind kind = KindOfField(FieldText(*field, layout, buffer));
      if (kind != FieldKind::Number && kind != FieldKind::Empty) return true;
    }
    return false;
  }

  const TableToName& table_;
  const GuessHints& hints_;
  TextFormat& format_;
  bool listed_ = false;  // the head lists the names
};

}  // namespace

void GuessNames(const TableToName& table, const GuessHints& hints, TextFormat& format) {
  NamesGuess(table, hints, format).Run();
}

}  // namespace tarnwick
