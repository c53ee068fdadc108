#include "data/text/text_supplier.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/text_encoding.h"
#include "data/fields/text_lines.h"
#include "data/names/names_judge.h"
#include "data/names/names_line.h"
#include "data/names/text_names.h"
#include "data/text/row_block.h"
#include "data/text/row_pipeline.h"
#include "data/text/turned_rows.h"

namespace tarnwick {
namespace {

constexpr std::int64_t kIndexedSkip = 32;  // from here on the index finds a row sooner than walking
constexpr std::size_t kPlacesLookedAt = 16;
constexpr std::size_t kBytesOfPlace = 65536;
constexpr std::int64_t kMostRows = std::numeric_limits<std::int32_t>::max() - 1;

std::shared_ptr<const TextSource> Turned(const TextSource& source, const TDSInfo& info) {
  return std::make_shared<const TextSource>(TurnedText(source.Text(), info, source.LineEnd()),
                                            source.Name());
}

std::int32_t RowNumber(std::int64_t row) {
  return static_cast<std::int32_t>(std::min(row, kMostRows));
}

}  // namespace

TTxtSupplier::TTxtSupplier(const TDSInfo& info, std::shared_ptr<const TextSource> source)
    : source_(TurnsRows(info) ? Turned(*source, info) : std::move(source)),
      info_(TurnsRows(info) ? TurnedInfo(info) : info),
      layout_(info_, source_->LineEnd()),
      end_(source_->Text().data() + source_->Text().size()) {
  LineWalker walker(source_->Text(), layout_.line_end);
  for (; header_rows_ < info_.FileHasHeaders && !walker.AtEnd(); ++header_rows_) walker.Next();
  body_ = walker.Position();
  if (info_.TableLines > 0) {
    for (std::int32_t i = 0; i < info_.TableLines && !walker.AtEnd(); ++i) walker.Next();
    end_ = walker.Position();
  }
  ResolveTimeColumns();
  FirstRow();
}

/// Where a column of the time is not there, no column makes it.
void TTxtSupplier::ResolveTimeColumns() {
  const std::optional<JoinedTime> time = JoinedTime::Parse(info_.TimeColumns);
  if (!time) return;
  TimeParts found;
  for (const JoinedTime::Part& part : time->parts) {
    const std::int32_t column = TDataSupplier::ColumnIndex(part.column);
    if (column < 0 || column == kRowNumberColumn) return;
    found.parts.push_back(part.part);
    found.columns.push_back(column);
  }
  layout_.time = std::move(found);
}

std::int32_t TTxtSupplier::ColumnIndex(std::string_view name) {
  const std::int32_t column = TDataSupplier::ColumnIndex(name);
  if (column < 0) {
    const auto bare = std::ranges::find(bare_names_, name);
    if (bare != bare_names_.end()) return static_cast<std::int32_t>(bare - bare_names_.begin());
    // Kept when the column had no name that was found.
    for (std::size_t i = 0; i < bare_names_.size(); ++i) {
      const auto unnamed = static_cast<std::int32_t>(i);
      if (name == UnnamedColumn(unnamed)) return unnamed;
    }
  }
  const bool joined = column < 0 && name == kJoinedTimeName && !layout_.time.parts.empty();
  return joined ? kJoinedTimeColumn : column;
}

void TTxtSupplier::FirstRow() {
  row_ = 1;
  blanks_passed_ = 0;
  remark_passed_ = false;
  at_ = source_->Text().data();
  if (header_rows_ == 0) GoToBody(0);
}

/// Goes to a row of the body from 0, or to the end when there are fewer.
void TTxtSupplier::GoToBody(std::int64_t row) {
  if (index_) {
    at_ = row < index_->Rows() ? index_->RowBegin(row) : end_;
    row_ = header_rows_ + std::min(row, index_->Rows()) + 1;
    return;
  }
  LineWalker walker(Body(), layout_.line_end);
  row_ = header_rows_ + 1;
  for (at_ = body_; at_ != end_; at_ = walker.Position()) {
    if (!IsDataLine(walker.Next(), layout_)) continue;
    if (row-- == 0) return;
    ++row_;
  }
}

bool TTxtSupplier::NextRow() {
  if (AtEnd()) return true;
  LineWalker walker({at_, static_cast<std::size_t>(end_ - at_)}, layout_.line_end);
  walker.Next();
  ++row_;
  blanks_passed_ = 0;
  remark_passed_ = false;
  for (at_ = walker.Position(); at_ != end_ && row_ > header_rows_; at_ = walker.Position()) {
    const std::string_view line = walker.Next();
    if (IsDataLine(line, layout_)) break;
    const bool blank = TrimBlankBytes(line).empty();
    blanks_passed_ += blank ? 1 : 0;
    remark_passed_ = remark_passed_ || !blank;
    if (!blank) remark_ = line;
  }
  return AtEnd();
}

std::vector<std::string> TTxtSupplier::NamesPassed() {
  const auto columns = static_cast<std::int32_t>(ColumnNames().size());
  if (!remark_passed_) return {};
  std::optional<std::vector<std::string>> names =
      SplitNames(remark_, layout_, columns, RowLabels::Never);
  return names && AreNames(*names, remark_) ? std::move(*names) : std::vector<std::string>();
}

void TTxtSupplier::SkipRows(std::int32_t rows) {
  const std::int64_t target = row_ + rows - 1;  // from 0
  if (index_ && rows >= kIndexedSkip && target >= header_rows_) {
    GoToBody(target - header_rows_);
    return;
  }
  std::int32_t most_blanks = 0;
  bool remark = false;
  for (; rows > 0 && !AtEnd(); --rows) {
    NextRow();
    most_blanks = std::max(most_blanks, blanks_passed_);
    remark = remark || remark_passed_;
  }
  blanks_passed_ = most_blanks;
  remark_passed_ = remark;
}

std::int32_t TTxtSupplier::CurrentRow() const {
  return RowNumber(row_);
}

std::string_view TTxtSupplier::CurrentLine() {
  // Kept for the row's other fields: a line may be as long as the file.
  if (measured_ != at_) line_ = LineView(at_, FindLineEnd(at_, end_, layout_.line_end));
  measured_ = at_;
  return line_;
}

std::optional<std::string_view> TTxtSupplier::CurrentField(std::int32_t column) {
  if (AtEnd() || column < 0) return std::nullopt;
  if (split_ != at_) {
    cursor_.emplace(CurrentLine(), layout_);
    fields_.clear();
    split_ = at_;
  }
  while (std::cmp_less_equal(fields_.size(), column)) {
    const std::optional<std::string_view> next = cursor_->Next();
    if (!next) return std::nullopt;
    fields_.push_back(*next);
  }
  return fields_[static_cast<std::size_t>(column)];
}

std::optional<double> TTxtSupplier::ReadValue(std::int32_t column, ColumnFormat format) {
  if (column == kRowNumberColumn && !AtEnd()) return static_cast<double>(row_ - header_rows_);
  if (AtEnd()) return std::nullopt;
  const double value = column == kJoinedTimeColumn
                           ? JoinedTimeValue(CurrentLine(), format, layout_)
                           : BlockValue(CurrentField(column), {column, format}, layout_, buffer_);
  return std::isnan(value) ? std::nullopt : std::optional(value);
}

bool TTxtSupplier::HasValue(std::int32_t column) {
  if (column == kRowNumberColumn) return !AtEnd();
  if (column == kJoinedTimeColumn) {
    const auto& columns = layout_.time.columns;
    return std::ranges::all_of(columns, [this](std::int32_t part) { return HasValue(part); });
  }
  const std::optional<std::string_view> field = CurrentField(column);
  return field && !FieldText(*field, layout_, buffer_).empty();
}

std::string TTxtSupplier::TextAt(std::int32_t column) {
  if (column < 0) return TDataSupplier::TextAt(column);
  const std::optional<std::string_view> field = CurrentField(column);
  return field ? Utf8FromText(FieldText(*field, layout_, buffer_)) : std::string();
}

bool TTxtSupplier::CountRows(Progress& progress) {
  if (index_) return true;
  RowIndex index(Body(), layout_);
  if (!index.Build(progress)) return false;
  index_.emplace(std::move(index));
  return true;
}

std::int64_t TTxtSupplier::EstimateRows() const {
  const std::string_view body = Body();
  if (body.size() <= kPlacesLookedAt * kBytesOfPlace)
    return RowIndex::CountRows(body, 0, body.size(), layout_);
  std::int64_t rows = 0;
  for (std::size_t place = 0; place < kPlacesLookedAt; ++place) {
    const std::size_t from = body.size() / kPlacesLookedAt * place;
    rows += RowIndex::CountRows(body, from, from + kBytesOfPlace, layout_);
  }
  const double share =
      static_cast<double>(kPlacesLookedAt * kBytesOfPlace) / static_cast<double>(body.size());
  return static_cast<std::int64_t>(static_cast<double>(rows) / share);
}

std::int32_t TTxtSupplier::RowCount() {
  NoProgress silent;
  CountRows(silent);
  return RowNumber(header_rows_ + index_->Rows());
}

const std::vector<std::string>& TTxtSupplier::ColumnNames() {
  if (!names_) ReadNames();
  return *names_;
}

bool TTxtSupplier::HasNamesLine() {
  if (!names_) ReadNames();
  return has_names_line_;
}

void TTxtSupplier::ReadNames() {
  TextNames read = ReadTextNames(source_->Text(), layout_, info_);
  names_ = std::move(read.names);
  bare_names_ = std::move(read.bare_names);
  has_names_line_ = read.has_names_line;
}

std::int64_t TTxtSupplier::Line() const {
  const std::string_view text = source_->Text();
  return 1 + std::count(text.data(), at_, layout_.line_end);
}

void TTxtSupplier::ReadBlocks(std::span<const ColumnRequest> requests, int threads,
                              const BlockConsumer& consume) const {
  ReadRowBlocks(Body(), layout_, requests, threads, consume);
}

std::int64_t TTxtSupplier::PositionOf(const RowBlock& block) const {
  return block.text.data() - source_->Text().data();
}

std::int64_t TTxtSupplier::LineOf(const RowBlock& block, std::int64_t row) const {
  return 1 + header_rows_ + block.first_line + LineInBlock(block, row, layout_);
}

std::string TTxtSupplier::Place() const {
  return "line " + std::to_string(Line());
}

}  // namespace tarnwick
