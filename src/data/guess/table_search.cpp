#include "data/guess/table_search.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "data/fields/field_kind.h"
#include "data/guess/remark_heads.h"

namespace tarnwick {
namespace {

constexpr std::int32_t kMostFields = 1000;
constexpr std::size_t kMostOthers = 12;  // rows of other shapes that are looked at together
constexpr std::size_t kHeadLines = 4;
constexpr std::size_t kMostFieldCounts = 32;
constexpr double kDoubt = 0.3;             // what a doubtful value counts less
constexpr double kDoubtAmongCommas = 0.9;  // where "12 400" may come from "0,12 400,5"
constexpr double kSingleColumnWeight =
    0.5;  // a list of numbers is a table only where nothing else is

/// A row has values; where blanks separate, so do the words of a sentence, and half of it must be values.
bool IsRow(const LineShape& shape, const TextLayout& layout) {
  if (shape.values == 0) return false;
  if (shape.values == shape.filled) return true;
  if (layout.IsSeparator(' ') && !layout.ByPlace())
    return shape.values >= 2 && 2 * shape.values >= shape.filled;
  return 4 * shape.values >= shape.filled;
}

/// Collects the tables while the lines go by.
class TableSearch {
 public:
  TableSearch(const TextLayout& layout, std::vector<FoundTable>& tables)
      : layout_(layout),
        doubt_(layout.IsSeparator(',') ? kDoubtAmongCommas : kDoubt),
        by_blanks_(layout.IsSeparator(' ')),
        framed_(layout.merge),
        tables_(tables) {}

  void Take(std::size_t line, const LineShape& shape, std::string_view text) {
    if (shape.kind == LineShape::Kind::Text && RepeatsHead(TrimBlankBytes(text))) return;
    switch (shape.kind) {
      case LineShape::Kind::Blank:
        blank_before_ = parted_ = true;
        return;
      case LineShape::Kind::Comment:
        TakeRemark(text);
        return;
      case LineShape::Kind::Row:
        TakeRemarkAbove(text);
        TakeRow(line, shape);
        break;
      case LineShape::Kind::Text:
        TakeText(shape);
        break;
    }
    blank_before_ = parted_ = false;
  }

  /// Remembers the last lines of text above a table; true when one of them stands in it again.
  bool RepeatsHead(std::string_view text) {
    // Behind other text it heads another table.
    if (table_) return stray_texts_ == 0 && std::ranges::find(head_, text) != head_.end();
    if (head_.size() == kHeadLines) head_.erase(head_.begin());
    head_.push_back(text);
    return false;
  }

  void Finish() {
    if (!table_) return;
    TakeCommonFields();
    table_->weight *= table_->fields == 1 ? kSingleColumnWeight : 1;
    tables_.push_back(*table_);
    table_.reset();
    stray_texts_ = 0;
    text_beside_blank_ = false;
    others_.clear();
    head_.clear();
    remark_head_.reset();
    counts_.clear();
  }

 private:
  /// Rows of one number of fields.
  struct FieldCount {
    std::int32_t fields = 0;
    std::size_t rows = 0;
    double weight = 0;
  };

  void Count(const LineShape& shape) {
    auto count = std::ranges::find(counts_, shape.fields, &FieldCount::fields);
    if (count == counts_.end() && counts_.size() == kMostFieldCounts) return;
    if (count == counts_.end()) count = counts_.insert(count, FieldCount{shape.fields, 0, 0});
    ++count->rows;
    count->weight += (shape.values - doubt_ * shape.doubtful) / shape.filled;
  }

  /// The first rows may have another number of fields than most. Between blanks such rows are words of another kind.
  void TakeCommonFields() {
    const auto most = std::ranges::max_element(counts_, {}, &FieldCount::rows);
    if (by_blanks_ || framed_ || most == counts_.end() || most->rows <= table_->rows) return;
    table_->odd_rows = table_->rows + table_->odd_rows - most->rows;
    table_->rows = most->rows;
    table_->fields = most->fields;
    table_->weight = most->weight;
  }

  /// Other remarks may stand between labels and rows.
  void TakeRemark(std::string_view text) {
    parted_ = true;
    if (!IsLineOfLabels(remark_) || IsLineOfLabels(text)) remark_ = text;
  }

  /// The last remark above a row may name its columns, otherwise than that above the table did.
  void TakeRemarkAbove(std::string_view row) {
    const std::string_view remark = std::exchange(remark_, {});
    if (remark.empty()) return;
    std::optional<RemarkHead> head = HeadOfRow(remark, row, layout_);
    if (!head) return;
    const bool anew = table_ && remark_head_ && HeadsAnotherTable(*remark_head_, *head);
    if (anew) Finish();
    if (table_) return;
    remark_head_ = std::move(head);
    headed_anew_ = anew;
  }

  void TakeRow(std::size_t line, const LineShape& shape) {
    if (table_ && shape.fields != table_->fields) {
      others_.push_back({line, shape, parted_});
      if (AnotherTableBegan()) return BeginFromOthers(AgreeingAtEnd());
      if (others_.size() <= kMostOthers) return;
      // Single numbers above rows of several are settings.
      if (table_->fields == 1 && AllAgree(others_)) return BeginFromOthers(others_.size());
      return AddOthers();
    }
    if (table_ && text_beside_blank_) Finish();
    if (!table_) {
      table_ = FoundTable{.first = line, .behind = line, .fields = shape.fields};
      table_->headed_anew = std::exchange(headed_anew_, false);
      table_->stands_apart = std::exchange(stands_apart_, false);
    }
    AddOthers();
    table_->behind = line + 1;
    ++table_->rows;
    table_->weight += (shape.values - doubt_ * shape.doubtful) / shape.filled;
    Count(shape);
  }

  /// Rows of another shape are stray ones or, where the table is ragged throughout, its own.
  void AddOthers() {
    if (!others_.empty()) table_->behind = others_.back().line + 1;
    table_->odd_rows += others_.size();
    for (const Other& other : others_) Count(other.shape);
    others_.clear();
    stray_texts_ = 0;
  }

  void BeginFromOthers(std::size_t count) {
    const std::vector<Other> begun(others_.end() - static_cast<std::ptrdiff_t>(count),
                                   others_.end());
    Finish();
    stands_apart_ = begun.front().parted;
    for (const Other& other : begun) TakeRow(other.line, other.shape);
  }

  void TakeText(const LineShape& shape) {
    if (!table_) return;
    const bool same = shape.fields == table_->fields && shape.fields > 1 && shape.values == 0;
    const bool names = (same || OneMore(shape)) && 4 * shape.filled >= 3 * shape.fields;
    if (same && !names) return;  // a row without values
    if (LacksValues(shape)) return;
    text_beside_blank_ = text_beside_blank_ || blank_before_;
    const bool part = shape.marks_part && table_->fields == 1;
    if (names || part || ++stray_texts_ > kStrayLines) Finish();
  }

  /// A row whose values are missing, all but one or the other.
  bool LacksValues(const LineShape& shape) const {
    return !by_blanks_ && shape.fields == table_->fields && shape.values > 0 &&
           2 * shape.filled <= shape.fields + 1;
  }

  /// Names may be one more than the fields: a column of remarks that most rows leave out.
  bool OneMore(const LineShape& shape) const {
    return !by_blanks_ && shape.values == 0 && shape.fields == table_->fields + 1 &&
           shape.fields > 2;
  }

  /// Rows that agree on another shape are another table where text parts them from this one, or when they are more; empty lines
  /// and remarks part them, too, unless these stand between its own rows as well.
  bool AnotherTableBegan() const {
    if (others_.size() <= kStrayLines) return false;
    const bool agree = AllAgree(std::span(others_).last(kStrayLines + 1));
    return agree && (stray_texts_ > 0 || others_.size() > table_->rows || StandApart());
  }

  /// The rows of one shape at the end follow each other behind what parts them from the rows before.
  bool StandApart() const {
    const auto alike = std::span(others_).last(AgreeingAtEnd());
    return alike.front().parted && std::ranges::none_of(alike.subspan(1), &Other::parted);
  }

  /// How many of the last rows of another shape have one.
  std::size_t AgreeingAtEnd() const {
    std::size_t count = 0;
    while (count < others_.size() && AllAgree(std::span(others_).last(count + 1))) ++count;
    return count;
  }

  struct Other {
    std::size_t line = 0;
    LineShape shape;
    bool parted = false;  ///< an empty line or a remark is right above
  };

  static bool AllAgree(std::span<const Other> others) {
    return std::ranges::all_of(others, [&others](const Other& other) {
      return other.shape.fields == others.front().shape.fields;
    });
  }

  const TextLayout& layout_;
  const double doubt_;
  const bool by_blanks_;
  const bool framed_;  // brackets and the like part fields beside the separator
  std::vector<FoundTable>& tables_;
  std::vector<std::string_view> head_;     // the lines of text nearest above the table
  std::string_view remark_;                // the last since the last row
  std::optional<RemarkHead> remark_head_;  // above the table
  bool headed_anew_ = false;
  bool stands_apart_ = false;
  std::optional<FoundTable> table_;
  std::vector<FieldCount> counts_;
  std::vector<Other> others_;  // rows of another number of fields since the last that fitted
  int stray_texts_ = 0;
  bool blank_before_ = false;
  bool parted_ = false;  // by an empty line or a remark from the line before
  bool text_beside_blank_ = false;
};

}  // namespace

LineShape ShapeOf(std::string_view line, const TextLayout& layout) {
  LineShape shape;
  if (TrimBlankBytes(line).empty()) return shape;
  if (!IsDataLine(line, layout)) {
    shape.kind = LineShape::Kind::Comment;
    return shape;
  }
  FieldCursor cursor(layout.merge && !layout.ByPlace() ? TrimBlankBytes(line) : line, layout);
  std::string buffer;
  std::int32_t widths = 0;
  while (shape.fields < kMostFields) {
    const std::optional<std::string_view> field = cursor.Next();
    if (!field) break;
    ++shape.fields;
    const std::string_view text = FieldText(*field, layout, buffer);
    const FieldKind kind = KindOfField(text);
    if (kind == FieldKind::Empty || kind == FieldKind::Placeholder) continue;
    ++shape.filled;
    shape.values += IsValue(kind) ? 1 : 0;
    shape.doubtful += kind == FieldKind::Quantity ? 1 : 0;
    widths += kind != FieldKind::Number && IsColumnWidth(text) ? 1 : 0;
  }
  // What is missing at the end of a line that is cut by places is there, and empty.
  if (!layout.cuts.empty()) shape.fields = static_cast<std::int32_t>(layout.cuts.size());
  if (widths == shape.filled && widths > 1) shape.values = 0;
  shape.kind = IsRow(shape, layout) ? LineShape::Kind::Row : LineShape::Kind::Text;
  constexpr std::string_view kPartMarks = "$<[~>@";
  shape.marks_part = kPartMarks.find(TrimBlankBytes(line).front()) != kPartMarks.npos;
  return shape;
}

std::vector<FoundTable> FindTables(std::span<const std::string_view> lines,
                                   const TextLayout& layout) {
  std::vector<FoundTable> tables;
  TableSearch search(layout, tables);
  for (std::size_t i = 0; i < lines.size(); ++i)
    search.Take(i, ShapeOf(lines[i], layout), lines[i]);
  search.Finish();
  return tables;
}

const FoundTable* HeaviestTable(std::span<const FoundTable> tables) {
  const auto heaviest = std::ranges::max_element(tables, {}, &FoundTable::weight);
  return heaviest == tables.end() ? nullptr : &*heaviest;
}

}  // namespace tarnwick
