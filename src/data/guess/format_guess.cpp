#include "data/guess/format_guess.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <span>
#include <utility>

#include "base/ascii.h"
#include "data/fields/column_cuts.h"
#include "data/fields/field_kind.h"
#include "data/fields/line_words.h"
#include "data/fields/row_remark.h"
#include "data/fields/text_lines.h"
#include "data/guess/count_row.h"
#include "data/guess/data_block.h"
#include "data/guess/first_row.h"
#include "data/guess/format_guess_cuts.h"
#include "data/guess/format_guess_gaps.h"
#include "data/guess/format_guess_lines.h"
#include "data/guess/head_row.h"
#include "data/guess/labelled_table.h"
#include "data/guess/list_beside_words.h"
#include "data/guess/names_guess.h"
#include "data/guess/point_columns.h"
#include "data/guess/rows_above.h"
#include "data/guess/section_end.h"
#include "data/guess/separators_guess.h"
#include "data/guess/table_search.h"
#include "data/guess/table_worth.h"
#include "data/guess/text_columns_table.h"
#include "data/guess/touching_fields.h"
#include "data/guess/worded_rows.h"
#include "data/guess/worded_table.h"
#include "data/names/names_line.h"
#include "data/names/text_names.h"

namespace tarnwick {
namespace {

using Lines = std::vector<std::string_view>;

constexpr std::size_t kJudgedRows = 200;     // of the first lines; fewer where they hold more than
constexpr std::size_t kJudgedFields = 4000;  // so many fields
constexpr std::size_t kRoughRows = 60;

bool IsBlankSeparated(const TextFormat& format) {
  return format.separators.find(' ') != std::string::npos;
}

bool IsByPlace(const TextFormat& format) {
  return format.divide_by_width || !format.column_cuts.empty();
}

Lines RowsWithin(const Lines& lines, std::size_t first, std::size_t behind,
                 const TextLayout& layout) {
  Lines rows;
  for (std::size_t i = first; i < std::min(behind, lines.size()); ++i) {
    if (IsDataLine(lines[i], layout)) rows.push_back(lines[i]);
  }
  return rows;
}

/// A guess at work: what is known so far of one text.
class Guess {
 public:
  Guess(std::string_view text, const GuessHints& hints, Progress& progress)
      : text_(text), hints_(hints), progress_(progress), line_end_(GuessLineEnd(text)) {
    format_.markers = hints.markers.value_or(format_.markers);
    format_.comment_marks = hints.comment_marks.value_or(format_.comment_marks);
    format_.divide_by_width = hints.column_width.has_value();
    format_.column_width = hints.column_width.value_or(format_.column_width);
  }

  TextFormat Run() {
    for (GuessReach reach = kFirstReach; !FindTable(reach); reach = Further(reach)) {
      if (lines_.whole || progress_.Cancelled()) break;
    }
    PlaceTable();
    const TextLayout layout = LayoutOf(format_, line_end_);
    GuessNames({lines_.first, Rows(layout), table_.fields, layout}, hints_, format_);
    const bool unnamed = format_.names_line <= 0 && format_.header_lines == 0;
    worded_ = worded_ || (unnamed && NameTheirNumbers(Rows(layout), layout));
    if (worded_ && !hints_.names_line) NameByWords(layout);
    ChooseMerging();
    JudgeAll();
    TellOfValuesAbove();
    if (!hints_.units_line) TakeUnitsOfValues();
    return std::move(format_);
  }

 private:
  /// Looks for the table among the first lines; false when there is none worth its name.
  bool FindTable(GuessReach reach) {
    lines_ = CollectGuessLines(text_, reach);
    if (!hints_.comment_marks) {
      format_.comment_marks = TDSInfo().CommentMarks;
      ChooseCommentMarks(lines_.first, format_);
    }
    DropRemarks();
    format_.column_cuts = hints_.column_cuts.value_or(std::string());
    format_.cuts_from = CutsFrom::Nowhere;
    const bool choose = !hints_.separators && !IsByPlace(format_);
    if (choose && (TakeDescribedTable() || TakeTouchingTable())) return true;
    block_ = choose ? FindDataBlock(lines_.first) : std::nullopt;
    if (block_) TakeBlock();
    if (choose && !block_) tables_ = ChooseSeparators(lines_.first, line_end_, format_);
    if (choose && format_.has_remarks) PartFromRemarks();
    if (hints_.separators) format_.separators = *hints_.separators;
    const bool blanks = IsBlankSeparated(format_);
    format_.merge_separators = hints_.merge_separators.value_or(blanks);
    if (!choose || (hints_.merge_separators && !block_)) {
      tables_ = FindTables(lines_.first, LayoutOf(format_, line_end_));
    }
    if (choose && blanks && format_.merge_separators && !TakePointColumns()) TakeGappedTable();
    if (hints_.header_lines) return true;
    const FoundTable* best = HeaviestTable(tables_);
    format_.is_table =
        best != nullptr && IsWorthIt(*best, tables_, lines_, LayoutOf(format_, line_end_));
    if (block_ && best != nullptr) return format_.is_table = true;
    if (choose && lines_.whole && TakeListBesideWords()) best = &tables_.front();
    if (format_.is_table && choose && lines_.whole && HoldsFewValues(*best) &&
        TakeTableOfWordsAndColons()) {
      best = &tables_.front();
    }
    if (!format_.is_table && choose && lines_.whole && TakeUnusualTable()) best = &tables_.front();
    return format_.is_table && best->rows >= kFewRows;
  }

  /// Whatever stands elsewhere is none of the data.
  void TakeBlock() {
    const auto within =
        std::span(lines_.first).subspan(block_->first, block_->behind - block_->first);
    tables_ = ChooseSeparators(within, line_end_, format_);
    for (FoundTable& table : tables_) {
      table.first += block_->first;
      table.behind += block_->first;
    }
  }

  /// Where nothing else is a table, and the whole text can be seen to be one.
  bool TakeUnusualTable() { return TakeLabelledTable() || TakeTableOfTexts() || TakeWordedTable(); }

  bool TakeLabelledTable() {
    TextFormat by_blanks = format_;
    by_blanks.separators = " \t";
    by_blanks.merge_separators = true;
    const auto found = FindLabelledTable(lines_.first, LayoutOf(by_blanks, line_end_));
    if (found) TakeOnly(*found, by_blanks.separators);
    return found.has_value();
  }

  /// Fewer than half of the fields hold values.
  static bool HoldsFewValues(const FoundTable& table) {
    return 2 * table.weight < static_cast<double>(table.rows);
  }

  /// "value: 2.5", "value = 2.5"
  static bool HoldsWordsBeforeNumbers(std::string_view line) {
    return std::ranges::any_of(WordsOfLine(line), [](const LineWord& word) {
      return word.text.ends_with(':') || word.text.ends_with('=');
    });
  }

  /// "0 TAO, Function value: 2.03778,  Residual: 144.125": cells between commas that hold words and a number each.
  bool TakeTableOfWordsAndColons() {
    const auto found = FindWordedTable(lines_.first, LayoutOf(format_, line_end_));
    if (!found || !HoldsWordsBeforeNumbers(lines_.first[found->table.first])) return false;
    TakeOnly(found->table, found->separators);
    return worded_ = true;
  }

  bool TakeWordedTable() {
    const auto found = FindWordedTable(lines_.first, LayoutOf(format_, line_end_));
    if (found) TakeOnly(found->table, found->separators);
    worded_ = found.has_value();
    return worded_;
  }

  bool TakeTableOfTexts() {
    for (const std::string_view separator : {"\t", ";", ",", "|"}) {
      TextFormat tried = format_;
      tried.separators = separator;
      tried.merge_separators = false;
      const auto found = FindTableOfTexts(lines_.first, LayoutOf(tried, line_end_));
      if (!found) continue;
      TakeOnly(*found, tried.separators);
      return true;
    }
    return false;
  }

  /// Rows whose words passed for units, or that places cut, are fewer than begin with numbers.
  bool TakeListBesideWords() {
    const FoundTable* const best = HeaviestTable(tables_);
    const bool by_cuts = format_.cuts_from == CutsFrom::Rows;
    if (format_.is_table && best->fields > 1 && !by_cuts && !HoldsFewValues(*best)) return false;
    const auto found = FindListBesideWords(lines_.first, LayoutOf(format_, line_end_));
    if (!found || (best != nullptr && found->rows <= best->rows + best->odd_rows)) return false;
    TakeOnly(*found, " \t");
    return true;
  }

  /// Nothing else is a table.
  void TakeOnly(const FoundTable& table, const std::string& separators) {
    format_.separators = separators;
    format_.merge_separators = IsBlankSeparated(format_);
    format_.column_cuts.clear();
    format_.cuts_from = CutsFrom::Nowhere;
    tables_ = {table};
    format_.is_table = true;
  }

  void DropRemarks() {
    const TextLayout layout = LayoutOf(format_, line_end_);
    const auto ends = [&layout](std::string_view line, Before before) {
      return WithoutRemark(line, layout, before).size() < line.size();
    };
    const auto filled = std::ranges::count_if(
        lines_.first, [](std::string_view line) { return !TrimBlankBytes(line).empty(); });
    const auto ended = std::ranges::count_if(
        lines_.first, [&](std::string_view line) { return ends(line, Before::Words); });
    // Words before a mark are a row's where nearly every line has its remark.
    format_.has_remarks = ended > 1 && 5 * ended >= 4 * filled;
    const Before before = format_.has_remarks ? Before::Words : Before::Numbers;
    for (Lines* const lines : {&lines_.first, &lines_.later}) {
      for (std::string_view& line : *lines) line = WithoutRemark(line, layout, before);
    }
  }

  /// Where nothing parts the values of a row, blanks part its value from the remark.
  void PartFromRemarks() {
    const FoundTable* const best = HeaviestTable(tables_);
    if (IsBlankSeparated(format_) || best == nullptr || best->fields > 1) return;
    format_.separators = " \t";
    TextFormat merging = format_;
    merging.merge_separators = true;
    tables_ = FindTables(lines_.first, LayoutOf(merging, line_end_));
  }

  bool TakeDescribedTable() {
    if (hints_.column_cuts) return false;
    const TextLayout layout = LayoutOf(format_, line_end_);
    auto found = FindDescribedTable(lines_.first, layout);
    if (!found) found = FindBarredTable(lines_.first, layout);
    if (!found) return false;
    Take(*found, CutsFrom::Description);
    tables_ = {found->table};
    format_.is_table = true;
    return true;
  }

  bool TakeTouchingTable() {
    if (hints_.column_cuts || hints_.header_lines) return false;
    const auto found = FindTouchingTable(lines_.first, LayoutOf(format_, line_end_));
    if (!found) return false;
    Take(*found, CutsFrom::Rows);
    tables_ = {found->table};
    format_.is_table = true;
    return true;
  }

  /// Where blanks part the rows of most lines otherwise than others.
  bool TakePointColumns() {
    constexpr std::size_t kOddTwiceIn = 5;
    const FoundTable* const best = HeaviestTable(tables_);
    if (hints_.column_cuts || hints_.header_lines || best == nullptr) return false;
    if (kOddTwiceIn * best->odd_rows <= 2 * (best->rows + best->odd_rows)) return false;
    const auto found = FindPointColumns(lines_.first, LayoutOf(format_, line_end_));
    if (!found) return false;
    Take(*found, CutsFrom::Rows);
    tables_ = {found->table};
    return true;
  }

  void TakeGappedTable() {
    if (hints_.column_cuts) return;
    const auto found = FindGappedTable(lines_.first, text_, LayoutOf(format_, line_end_), tables_);
    const auto within = [&](const FoundTable& table) {
      const bool another = table.headed_anew || (table.stands_apart && table.rows >= kFewRows);
      return another && table.first > found->table.first && table.first < found->table.behind;
    };
    if (!found || std::ranges::any_of(tables_, within)) return;
    Take(*found, CutsFrom::Rows);
    std::erase_if(tables_, [&](const FoundTable& table) {
      return table.behind > found->table.first && table.first < found->table.behind;
    });
    tables_.push_back(found->table);
    std::ranges::sort(tables_, {}, &FoundTable::first);
  }

  void Take(const CutTable& found, CutsFrom from) {
    format_.column_cuts = ColumnCutsText(found.cuts);
    format_.cuts_from = from;
  }

  /// The number of the line of the first row, from 1.
  std::int32_t FirstRowLine(const TextLayout& layout) const {
    auto line = static_cast<std::size_t>(format_.header_lines);
    while (line < lines_.first.size() && !IsDataLine(lines_.first[line], layout)) ++line;
    return static_cast<std::int32_t>(line) + 1;
  }

  /// One unit behind all numbers of a column is that of the column, where no line of units says it.
  void TakeUnitsOfValues() {
    const auto has_units = [](const ColumnGuess& column) {
      return column.has_units && column.has_numbers;
    };
    const auto has_one = [](const ColumnGuess& column) {
      return column.units.size() == 1 && !column.units.front().empty();
    };
    std::vector<ColumnGuess> columns;
    std::ranges::copy_if(format_.columns, std::back_inserter(columns), has_units);
    const bool named = format_.names_line >= 0 && format_.units_line == 0 && !worded_;
    if (!named || columns.empty() || !std::ranges::all_of(columns, has_one)) return;
    format_.units_line = FirstRowLine(LayoutOf(format_, line_end_));
  }

  /// The words of the first row name its numbers.
  void NameByWords(const TextLayout& layout) {
    format_.names_line = FirstRowLine(layout);
    format_.units_line = 0;
    format_.stacked_names = false;
    format_.names_apart = 0;
  }

  void PlaceTable() {
    const TextLayout layout = LayoutOf(format_, line_end_);
    if (hints_.header_lines) {
      format_.header_lines = *hints_.header_lines;
      format_.is_table = true;
      PlaceStatedTable();
      return;
    }
    const FoundTable* const best = HeaviestTable(tables_);
    if (best == nullptr) return;
    table_ = *best;
    const Lines rows = RowsWithin(lines_.first, table_.first,
                                  std::min(table_.behind, table_.first + kRoughRows), layout);
    // Headers are told from rows by what stands in the middle of the table.
    const std::size_t skipped = rows.size() < 4 ? 0 : rows.size() / 3;
    const std::span<const std::string_view> body = std::span(rows).subspan(skipped);
    const TableBody judged{body, JudgeColumns(body, layout)};
    table_.first = FirstRow(lines_.first, table_.first, layout, judged);
    // Behind a line that names its columns it begins there.
    if (table_.first == best->first) {
      table_.first = WithAlikeRowsAbove(lines_.first, table_.first, layout, judged);
    }
    table_.first = WithRaggedRowsAbove(lines_.first, table_.first, layout);
    table_.first = WithRowsAsBelow(lines_.first, table_, layout, judged);
    table_.first = BehindCounts(lines_.first, table_.first, text_, layout, judged);
    table_.first = BehindHeadRow(lines_.first, table_.first, layout, judged);
    format_.header_lines = static_cast<std::int32_t>(table_.first);
    NoteOthers(*best);
    EndWithSection();
    EndWithBlock();
  }

  /// The line that ends it is no row.
  void EndWithBlock() {
    if (!block_ || block_->behind <= table_.first) return;
    const TextLayout layout = LayoutOf(format_, line_end_);
    table_.behind = std::min(table_.behind, block_->behind);
    format_.table_lines = static_cast<std::int32_t>(block_->behind - table_.first);
    const auto rest = std::span(lines_.first).subspan(block_->behind + 1);
    const bool more =
        std::ranges::any_of(rest, [&](std::string_view line) { return IsDataLine(line, layout); });
    format_.left_out_from = more ? static_cast<std::int32_t>(block_->behind) + 2 : 0;
  }

  /// A section that is headed otherwise holds another table.
  void EndWithSection() {
    const auto end = FindSectionEnd(text_, table_.first, line_end_);
    const auto lines = static_cast<std::size_t>(format_.table_lines);
    if (!end || (lines > 0 && *end >= table_.first + lines)) return;
    table_.behind = std::min(table_.behind, *end);
    format_.table_lines = static_cast<std::int32_t>(*end - table_.first);
    format_.left_out_from = static_cast<std::int32_t>(*end) + 1;
  }

  /// The user says where the rows begin: the table that stands there, to its end.
  void PlaceStatedTable() {
    table_.first = static_cast<std::size_t>(format_.header_lines);
    table_.behind = lines_.first.size();
    const auto stated = std::ranges::find_if(
        tables_, [&](const FoundTable& table) { return table.behind > table_.first; });
    if (stated == tables_.end()) return;
    table_.fields = stated->fields;
    table_.rows = stated->rows;
    table_.behind = stated->behind;
    NoteOthers(*stated);
  }

  void NoteOthers(const FoundTable& chosen) {
    format_.table_rows = chosen.rows + chosen.odd_rows;
    format_.odd_rows = chosen.odd_rows;
    bool more_behind = false;
    for (const FoundTable& other : tables_) {
      // Rows above may have turned out to be of the table.
      const bool own = other.first == chosen.first ||
                       (other.first >= table_.first && other.first < chosen.first);
      if (own || !IsWorthTelling(other, chosen)) continue;
      if (other.first < chosen.first) told_above_ = other.behind;
      format_.other_tables.push_back(
          {static_cast<std::int32_t>(other.first) + 1, other.rows + other.odd_rows});
      more_behind = more_behind || other.first >= chosen.behind;
    }
    const auto headed = std::ranges::find_if(tables_, [&](const FoundTable& table) {
      return (table.headed_anew || table.stands_apart) && table.first >= chosen.behind;
    });
    const std::optional<std::size_t> text =
        headed == tables_.end() ? TextThatEnds() : std::optional(headed->first);
    if (!more_behind && !text) return;
    if (!more_behind) format_.left_out_from = static_cast<std::int32_t>(*text) + 1;
    const std::size_t behind = more_behind ? table_.behind : *text;
    format_.table_lines =
        static_cast<std::int32_t>(behind - static_cast<std::size_t>(format_.header_lines));
  }

  /// "mean 5.0 2.5" below rows of two numbers: what sums them up has a label that they have not.
  bool IsLabelledOtherwise(std::size_t line, const LineShape& shape,
                           const TextLayout& layout) const {
    if (shape.kind != LineShape::Kind::Row || !IsBlankSeparated(format_) || IsByPlace(format_) ||
        shape.fields <= table_.fields) {
      return false;
    }
    const auto begins_with_word = [&layout](std::string_view text) {
      std::string buffer;
      const std::optional<std::string_view> field =
          FieldCursor(TrimBlankBytes(text), layout).Next();
      return field && KindOfField(FieldText(*field, layout, buffer)) == FieldKind::Text;
    };
    return begins_with_word(lines_.first[line]) && !begins_with_word(lines_.first[table_.first]);
  }

  /// The first line of text behind the table, where more such lines follow than may stand within it, or rows of another shape
  /// that would pass for its own. In a log that goes on, remarks may stand last: those end nothing. Where more lines follow than
  /// are looked at, only both end it.
  std::optional<std::size_t> TextThatEnds() const {
    const TextLayout layout = LayoutOf(format_, line_end_);
    std::optional<std::size_t> first;
    int texts = 0;
    for (std::size_t i = table_.behind; i < lines_.first.size(); ++i) {
      LineShape shape = ShapeOf(lines_.first[i], layout);
      if (IsLabelledOtherwise(i, shape, layout)) shape.kind = LineShape::Kind::Text;
      if (shape.kind == LineShape::Kind::Text && ++texts == 1) first = i;
      if (lines_.whole && shape.marks_part && table_.fields == 1) return i;
      // Its words would pass for further columns.
      if (lines_.whole && shape.kind == LineShape::Kind::Text && IsBlankSeparated(format_) &&
          !IsByPlace(format_) && shape.fields > table_.fields) {
        return first;
      }
      if (shape.kind != LineShape::Kind::Row || !first) continue;
      const bool full = table_.weight >= static_cast<double>(table_.rows);
      return (lines_.whole || (full && texts > kStrayLines)) && shape.fields != table_.fields
                 ? first
                 : std::nullopt;
    }
    return lines_.whole && texts > kStrayLines ? first : std::nullopt;
  }

  /// What looks like rows, too, is not to vanish without a word, but for the lines that describe the columns.
  void TellOfValuesAbove() {
    const bool described = format_.cuts_from == CutsFrom::Description;
    if (hints_.header_lines || described || table_.fields == 0) return;
    const auto named =
        static_cast<std::size_t>(std::max({format_.names_line, format_.units_line, 0}));
    const std::size_t from = std::max(named, told_above_);
    const auto headers = static_cast<std::size_t>(format_.header_lines);
    if (from >= headers) return;
    const auto above = std::span(lines_.first).subspan(from, headers - from);
    const ValuesAbove found = FindValuesAbove(above, static_cast<std::int32_t>(from) + 1,
                                              LayoutOf(format_, line_end_), format_.columns);
    format_.values_above = found.lines;
    format_.values_from = found.from;
  }

  void ChooseMerging() {
    if (hints_.merge_separators) return;
    const TextLayout apart = LayoutOf(format_, line_end_);
    // Blanks align columns; elsewhere a doubled separator may be an empty field.
    const bool merged = IsBlankSeparated(format_) || IsByPlace(format_);
    format_.merge_separators = merged || !HasGaps(apart);
  }

  /// True when rows that agree on the number of separators do not agree on the number of fields: a table with gaps. A
  /// single gap anywhere shifts columns, so every row counts, not only those that the rest is guessed from.
  bool HasGaps(const TextLayout& layout) {
    const std::optional<LineCount> common = CommonCount(Rows(layout), text_, layout);
    if (!common) return false;
    // A column that is empty throughout shows only beside the line of names.
    for (const std::int32_t number : {format_.header_lines, format_.names_line}) {
      const auto before = static_cast<std::size_t>(std::max(number, 0));
      if (before == 0 || before > lines_.first.size()) continue;
      const std::string_view names = lines_.first[before - 1];
      if (!IsDataLine(names, layout)) continue;
      if (IsGapBeside(CountLine(names, layout), *common) || NamesEmptyFirst(names, layout)) {
        return true;
      }
    }
    return HasGapBeside(
        *common, BehindLines(text_, static_cast<std::size_t>(format_.header_lines), line_end_),
        layout, progress_);
  }

  /// Rows begin with a separator throughout, but for one or the other, their names do not.
  bool NamesEmptyFirst(std::string_view names, const TextLayout& layout) const {
    const Lines rows = Rows(layout);
    const auto begins = [&layout](std::string_view line) {
      return !line.empty() && layout.IsSeparator(line.front());
    };
    const bool ends = std::ranges::all_of(
        rows, [&layout](std::string_view line) { return EndsWithSeparator(line, layout); });
    const std::int32_t missing = table_.fields - CountFields(names, layout, table_.fields);
    const auto empty_first = std::ranges::count_if(rows, begins);
    return !begins(names) && 10 * empty_first >= 9 * std::ssize(rows) &&
           (missing == 0 || (missing == 1 && ends));
  }

  std::size_t JudgedRows() const {
    const auto columns = static_cast<std::size_t>(std::max(table_.fields, 1));
    return std::clamp(kJudgedFields / columns, kRoughRows, kJudgedRows);
  }

  /// The first rows of the table.
  Lines FirstRows(const TextLayout& layout) const {
    const std::size_t behind = format_.table_lines > 0 ? table_.behind : lines_.first.size();
    const auto first = static_cast<std::size_t>(format_.header_lines);
    return RowsWithin(lines_.first, first, std::min(behind, first + JudgedRows()), layout);
  }

  /// These, and those of the places further on unless the table ends before.
  Lines Rows(const TextLayout& layout) const {
    Lines rows = FirstRows(layout);
    if (format_.table_lines > 0) return rows;
    std::ranges::copy_if(lines_.later, std::back_inserter(rows),
                         [&](std::string_view line) { return IsDataLine(line, layout); });
    return rows;
  }

  void JudgeAll() {
    const TextLayout layout = LayoutOf(format_, line_end_);
    const Lines rows = Rows(layout);
    format_.columns = JudgeColumns(rows, layout, rows.size() - FirstRows(layout).size());
    format_.samples = SampleTexts(rows, layout);
    if (!rows.empty() && std::cmp_equal(format_.columns.size(), kMostColumns)) {
      constexpr std::int32_t kMostCounted = 1'000'000;
      format_.columns_there = CountFields(rows.front(), layout, kMostCounted);
    }
  }

  std::string_view text_;
  const GuessHints& hints_;
  Progress& progress_;
  const char line_end_;
  GuessLines lines_;
  std::optional<DataBlock> block_;  // outside which there are no data
  std::vector<FoundTable> tables_;
  FoundTable table_;
  bool worded_ = false;         // the words between its numbers name these
  std::size_t told_above_ = 0;  // the line behind the last table above this one that is told
  TextFormat format_;
};

}  // namespace

void TextFormat::ApplyTo(TDSInfo& info) const {
  info.TextSeparators = separators;
  info.TextMarkers = markers;
  info.MergeSeparators = merge_separators;
  info.DivideTextByWidth = divide_by_width;
  info.ColumnWidth = column_width;
  info.ColumnCuts = column_cuts;
  info.FileHasHeaders = header_lines;
  info.NamesLine = names_line;
  info.StackedNames = stacked_names;
  info.UnitsLine = units_line;
  info.TableLines = table_lines;
  info.TableEndSought = table_lines > 0;
  info.CommentMarks = comment_marks;
}

TextFormat GuessTextFormat(std::string_view text, const GuessHints& hints) {
  NoProgress unseen;
  return GuessTextFormat(text, hints, unseen);
}

TextFormat GuessTextFormat(std::string_view text, const GuessHints& hints, Progress& progress) {
  return Guess(text, hints, progress).Run();
}

}  // namespace tarnwick
