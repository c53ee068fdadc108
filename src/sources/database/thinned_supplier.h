// A table of a data base as the rows that a view of the whole shows: the kind of supplier for DataSets that are thinned at
// their source. Knows the table and what is picked of it; knows no DataSet.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "data/data_supplier.h"
#include "sources/database/first_picture.h"
#include "sources/database/thinned_view.h"

namespace tarnwick {

/// Until Expect() names columns, its rows are those of the table, for a look at them; from then on those that were picked.
class ThinnedSupplier final : public TDataSupplier {
 public:
  /// Of what the supplier reads at that place.
  ThinnedSupplier(std::unique_ptr<TDataSupplier> table, DatabasePlace place, FirstPicture picture);

  std::int32_t CurrentRow() const override;
  std::int32_t HeaderRowsPassed() const override { return 0; }
  bool AtEnd() const override;
  bool NextRow() override;
  void FirstRow() override;
  void SkipRows(std::int32_t rows) override;
  std::optional<double> ReadValue(std::int32_t column, ColumnFormat format) override;
  bool HasValue(std::int32_t column) override;
  std::int32_t RowCount() override;
  bool CountRows(Progress& progress) override { return !progress.Cancelled(); }
  bool Expect(const RowPlan& plan, Progress& progress) override;
  const std::vector<std::string>& ColumnNames() override { return table_->ColumnNames(); }
  bool HasNamesLine() override { return true; }
  /// Rows that are picked at most, or were.
  std::int64_t Size() const override;
  std::int64_t Position() const override { return row_; }
  const std::string& Describe() const override { return table_->Describe(); }
  std::string Place() const override { return "row " + std::to_string(row_ + 1); }
  std::int64_t Line() const override { return row_ + 1; }

 private:
  std::unique_ptr<TDataSupplier> table_;
  DatabasePlace place_;
  FirstPicture picture_;
  std::vector<ColumnRequest> columns_;  // X, then every Y, as they were picked
  std::optional<ThinnedRows> picked_;
  std::int64_t row_ = 0;  // of the picked ones, from 0
};

}  // namespace tarnwick
