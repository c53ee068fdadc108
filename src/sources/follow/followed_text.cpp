#include "sources/follow/followed_text.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/error.h"
#include "base/undefined.h"
#include "data/fields/joined_time.h"
#include "data/fields/text_fields.h"
#include "data/fields/text_lines.h"
#include "data/text/text_source.h"
#include "data/text/text_supplier.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostHeaderBytes = std::size_t{16} << 20;

std::int32_t LeadingBlankLines(const std::string& text) {
  std::int32_t blanks = 0;
  LineWalker walker(text, '\n');
  while (!walker.AtEnd() && TrimBlankBytes(walker.Next()).empty()) ++blanks;
  return blanks;
}

/// The columns of a time by their positions: behind the headers nobody knows names.
std::string TimeByPositions(const std::string& columns, TDataSupplier& supplier) {
  std::optional<JoinedTime> time = JoinedTime::Parse(columns);
  if (!time) return columns;
  for (JoinedTime::Part& part : time->parts) {
    part.column = "#" + std::to_string(supplier.ColumnIndex(part.column));
  }
  return time->Text();
}

}  // namespace

FollowedText::FollowedText(const TDSInfo& info) : info_(ReadingOf(info)) {
  if (info.TableLines > 0) {
    throw Error("The table of " + info.DatasourceInfo + " ends after " +
                std::to_string(info.TableLines) + " lines: nothing that comes belongs to it");
  }
  if (info.RowChoiceMode == RowChoice::DropLast) {
    throw Error("The last rows of " + info.DatasourceInfo +
                " are left out: which are the last of a file that grows nobody knows");
  }
  BeginAnew();
}

void FollowedText::BeginText() {
  head_.clear();
  head_read_ = false;
}

void FollowedText::BeginAnew() {
  BeginText();
  taking_ = std::make_unique<RowTaking>(info_, std::nullopt, kPointLimit);
  blanks_ = 0;
  row_ = points_ = 0;
}

std::unique_ptr<TDataSupplier> FollowedText::Supplier(const TDSInfo& info,
                                                      const std::string& text) const {
  return std::make_unique<TTxtSupplier>(
      info, std::make_shared<const TextSource>(text, info_.DatasourceInfo));
}

void FollowedText::ResolveColumns(TDataSupplier& supplier) {
  reading_ = ResolveReading(info_, supplier);
  rest_info_ = info_;
  rest_info_.FileHasHeaders = 0;
  rest_info_.NamesLine = kNoNamesLine;
  rest_info_.UnitsLine = 0;
  rest_info_.TimeColumns = TimeByPositions(info_.TimeColumns, supplier);
  group_column_ = supplier.ColumnIndex(info_.GroupColumn);
}

void FollowedText::Take(const std::string& lines, StreamRows& rows) {
  if (lines.empty()) return;
  if (head_read_) return TakeRest(lines, rows);
  head_ += lines;
  TakeHead(rows);
}

void FollowedText::TakeHead(StreamRows& rows) {
  const std::unique_ptr<TDataSupplier> supplier = Supplier(info_, head_);
  supplier->FirstRow();
  supplier->SkipRows(info_.FileHasHeaders);
  if (supplier->AtEnd()) {
    if (head_.size() < kMostHeaderBytes) return;
    throw FileError("No row of data stands in the first 16 MiB", info_.DatasourceInfo, "");
  }
  ResolveColumns(*supplier);
  head_read_ = true;
  TakeRows(*supplier, rows);
  head_.clear();
}

void FollowedText::TakeRest(const std::string& lines, StreamRows& rows) {
  try {
    const std::unique_ptr<TDataSupplier> supplier = Supplier(rest_info_, lines);
    supplier->FirstRow();
    blanks_ += LeadingBlankLines(lines);
    taking_->Pieces().PassBlankLines(blanks_);
    TakeRows(*supplier, rows);
  } catch (const FileError&) {
    // No text: bytes of something else in the midst of it, counted as the lines that they stand in.
    rows.unreadable += std::ranges::count(lines, '\n');
  }
}

void FollowedText::TakeRows(TDataSupplier& supplier, StreamRows& rows) {
  while (!supplier.AtEnd() && !IsDone()) {
    TakeRow(supplier, rows);
    supplier.NextRow();
    blanks_ = supplier.BlankLinesPassed();
    taking_->Pieces().PassBlankLines(blanks_);
    if (supplier.RemarkPassed()) taking_->Pieces().PassRemark();
  }
}

void FollowedText::TakeRow(TDataSupplier& supplier, StreamRows& rows) {
  ++row_;
  if (row_ != taking_->Chooser().NextRow()) return;
  RowValues values = ReadRow(supplier, info_, reading_.columns, reading_.others);
  if (reading_.columns.x == kRowNumberColumn) values.x = static_cast<double>(row_);
  if (reading_.columns.y == kRowNumberColumn) values.y = static_cast<double>(row_);
  values.of_group = info_.GroupColumn.empty() || supplier.TextAt(group_column_) == info_.GroupValue;
  const std::optional<RowVerdict> verdict = taking_->Take(values);
  if (!verdict || verdict == RowVerdict::Stopped) return;
  if (verdict == RowVerdict::Point) values = PointOf(reading_.transforms, values);
  if (std::isnan(values.x) || std::isnan(values.y)) {
    taking_->Pieces().PassSkippedRow();
    ++rows.unreadable;
  } else {
    AddPoint(values, rows);
  }
}

void FollowedText::AddPoint(const RowValues& values, StreamRows& rows) {
  const std::size_t known = taking_->Pieces().Beginnings().size();
  taking_->Pieces().TakePoint(points_++);
  if (taking_->Pieces().Beginnings().size() > known &&
      taking_->Pieces().Beginnings().back().cause == PieceFinder::Cause::Break)
    rows.breaks.push_back(rows.x.size());
  AddDescribedRow(info_, values, rows);
}

}  // namespace tarnwick
