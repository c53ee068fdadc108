// Rows and columns of a text. Knows lines, fields, headers and names; reads many rows at once too.
#pragma once

#include <memory>
#include <optional>

#include "data/data_supplier.h"
#include "data/fields/text_fields.h"
#include "data/text/row_index.h"
#include "data/text/text_source.h"

namespace tarnwick {

/// The first FileHasHeaders lines are header rows whatever they hold. Of the TableLines lines behind them (all when that is
/// 0) every one is a row but the blank ones and those that begin with a comment mark.
class TTxtSupplier final : public TDataSupplier, private BlockSource {
 public:
  TTxtSupplier(const TDSInfo& info, std::shared_ptr<const TextSource> source);

  std::int32_t CurrentRow() const override;
  std::int32_t HeaderRowsPassed() const override { return 0; }
  bool AtEnd() const override { return at_ == end_; }
  bool NextRow() override;
  void FirstRow() override;
  void SkipRows(std::int32_t rows) override;
  std::optional<double> ReadValue(std::int32_t column, ColumnFormat format) override;
  bool HasValue(std::int32_t column) override;
  /// Without markers, as UTF-8.
  std::string TextAt(std::int32_t column) override;
  std::int32_t BlankLinesPassed() const override { return blanks_passed_; }
  bool RemarkPassed() const override { return remark_passed_; }
  std::vector<std::string> NamesPassed() override;
  bool WasCutShort() const override { return source_->WasCutShort(); }
  std::int32_t RowCount() override;
  std::int32_t ColumnIndex(std::string_view name) override;
  const std::vector<std::string>& ColumnNames() override;
  bool HasNamesLine() override;
  bool CountRows(Progress& progress) override;
  std::int64_t EstimateRows() const override;
  std::int64_t Size() const override { return end_ - source_->Text().data(); }
  std::int64_t Position() const override { return at_ - source_->Text().data(); }
  const std::string& Describe() const override { return source_->Name(); }
  std::string Place() const override;
  std::int64_t Line() const override;

  const BlockSource* Blocks() const override { return this; }

 private:
  std::int32_t HeaderRows() const override { return header_rows_; }
  void ReadBlocks(std::span<const ColumnRequest> requests, int threads,
                  const BlockConsumer& consume) const override;
  std::int64_t PositionOf(const RowBlock& block) const override;
  std::int64_t LineOf(const RowBlock& block, std::int64_t row) const override;

  /// The text behind the header lines, where rows and line numbers of blocks begin.
  std::string_view Body() const { return {body_, static_cast<std::size_t>(end_ - body_)}; }
  void GoToBody(std::int64_t row);
  std::string_view CurrentLine();
  std::optional<std::string_view> CurrentField(std::int32_t column);
  void ReadNames();
  void ResolveTimeColumns();

  std::shared_ptr<const TextSource> source_;
  TDSInfo info_;
  TextLayout layout_;
  const char* end_;
  const char* body_;
  const char* at_;
  const char* measured_ = nullptr;  // the line that line_ is
  std::string_view line_;
  const char* split_ = nullptr;  // the line whose first fields these are, and what finds the next
  std::vector<std::string_view> fields_;
  std::optional<FieldCursor> cursor_;
  std::int64_t row_ = 1;
  std::int32_t header_rows_ = 0;
  std::int32_t blanks_passed_ = 0;
  bool remark_passed_ = false;
  std::string_view remark_;  // the last one passed on the way to the current row
  std::optional<RowIndex> index_;
  std::optional<std::vector<std::string>> names_;
  std::vector<std::string> bare_names_;  ///< without their units
  bool has_names_line_ = false;
  std::string buffer_;
};

}  // namespace tarnwick
