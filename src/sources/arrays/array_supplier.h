// Rows and columns of arrays of one length; a column is read when it is first asked for, as a whole. Knows values; knows no
// file.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "data/data_supplier.h"
#include "sources/arrays/array_columns.h"

namespace tarnwick {

/// Reads the stored numbers of columns, all of one length. Throws UnpackingCancelled when the progress cancels.
using ArrayReader = std::function<std::vector<std::vector<double>>(std::span<const ArrayColumn>,
                                                                   Progress& progress)>;

class TArraySupplier final : public TDataSupplier, private BlockSource {
 public:
  TArraySupplier(ArrayTable table, std::string name, ArrayReader read);

  std::int32_t CurrentRow() const override;
  std::int32_t HeaderRowsPassed() const override { return 0; }
  bool AtEnd() const override { return row_ >= table_.rows; }
  bool NextRow() override;
  void FirstRow() override { row_ = 0; }
  void SkipRows(std::int32_t rows) override;
  std::optional<double> ReadValue(std::int32_t column, ColumnFormat format) override;
  bool HasValue(std::int32_t column) override;
  /// Days as dates.
  std::string TextAt(std::int32_t column) override;
  std::int32_t RowCount() override;
  /// Reads the columns, which nothing but this can cancel.
  bool Expect(const RowPlan& plan, Progress& progress) override;
  /// Paths are names, too, and their last parts.
  std::int32_t ColumnIndex(std::string_view name) override;
  const std::vector<std::string>& ColumnNames() override { return names_; }
  bool HasNamesLine() override { return true; }
  std::int64_t Size() const override { return table_.rows; }
  std::int64_t Position() const override { return row_; }
  const std::string& Describe() const override { return name_; }
  std::string Place() const override;
  std::int64_t Line() const override { return row_ + 1; }
  const BlockSource* Blocks() const override { return this; }

 private:
  std::int32_t HeaderRows() const override { return 0; }
  void ReadBlocks(std::span<const ColumnRequest> requests, int threads,
                  const BlockConsumer& consume) const override;
  std::int64_t PositionOf(const RowBlock& block) const override;
  std::int64_t LineOf(const RowBlock& block, std::int64_t row) const override;

  using Values = std::vector<double>;
  void Require(std::span<const std::size_t> columns, Progress& progress) const;
  const Values& ValuesOf(std::int32_t column) const;
  bool IsColumn(std::int32_t column) const;

  ArrayTable table_;
  std::vector<std::string> names_;
  std::string name_;
  ArrayReader read_;
  std::int64_t row_ = 0;                          // from 0
  mutable std::map<std::size_t, Values> values_;  // of the columns asked for so far, as they mean
};

}  // namespace tarnwick
