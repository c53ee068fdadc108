// One pass over a supplier that fills one or several DataSets. Knows two roads: row by row through any supplier, and block
// by block where the supplier offers it; both give the same points.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/undefined.h"
#include "data/import/load_target.h"
#include "data/import/loader.h"

namespace tarnwick {

/// Up to this sampling frequency reading every row in blocks beats skipping.
inline constexpr std::int32_t kDensestSampling = 16;

/// Progress that begins when there is something to show, and may never begin.
class LoadProgress final : public Progress {
 public:
  explicit LoadProgress(Progress* shown) : shown_(shown) {}
  void Begin(std::string_view title, std::string_view subject, std::int64_t total) override;
  bool Advance(std::int64_t done) override;
  bool Cancelled() const override { return shown_ != nullptr && shown_->Cancelled(); }
  bool Begun() const { return begun_; }

 private:
  Progress* shown_;
  bool begun_ = false;
};

class LoadRun {
 public:
  LoadRun(std::span<TDataSeries* const> all, TDataSupplier& supplier, const LoadOptions& options);

  /// Shows progress from the start. Otherwise it begins when a DataSet passes kPointLimit points.
  void ShowProgress(const std::string& subject);
  /// Loads everything; throws Error, with every DataSet as it was, when a column expression cannot be evaluated or the source
  /// lost bytes meanwhile.
  std::vector<LoadReport> Load();

 private:
  /// A DataSet that takes part, and where its values are found.
  struct Member {
    std::size_t number = 0;  // among the DataSets given
    std::int32_t x_column = 0;
    std::int32_t y_column = 0;
    std::int32_t headers = 0;  // header rows still ahead of its first row
    std::unique_ptr<LoadTarget> target;
    RowColumns row;             // row by row
    std::size_t x_request = 0;  // among the columns of a block; kRowNumbers = the row's number
    std::size_t y_request = 0;
    std::optional<std::size_t> y_error_request, x_error_request;
    std::vector<std::size_t> column_requests;  // of what its column expressions read
    std::vector<double> columns;               // their values in the row at hand
    std::optional<std::int32_t> group_column;  // of GroupColumn
  };
  static constexpr std::size_t kRowNumbers = ~std::size_t{0};

  void ResolveColumns();
  std::vector<ColumnTransforms> PrepareTransforms() const;
  bool CountRows();
  void BeginTargets(std::vector<ColumnTransforms> transforms);
  void FinishTargets();

  bool AdvanceProgress(std::int64_t done);
  bool AllDone() const;

  // Row by row
  void LoadRows();
  bool IsOfGroup(const Member& member);
  bool PassRowsBelow();
  RowPlan PlanAhead() const;
  bool TellPlan();
  bool GoToNextWantedRow();

  // Block by block
  const BlockSource* UsefulBlocks() const;
  void LoadBlocks(const BlockSource& blocks);
  std::size_t Request(std::int32_t column, ColumnFormat format);
  static void TakeBlock(Member& member, const RowBlock& block, const BlockSource& blocks);
  struct RowRange {
    std::int64_t begin = 0, end = 0;  // from 0 in the block
  };
  static void TakeBlockRows(Member& member, const RowBlock& block, RowRange rows,
                            const BlockSource& blocks);

  std::span<TDataSeries* const> all_;
  TDataSupplier& supplier_;
  const LoadOptions& options_;
  LoadProgress progress_;
  std::string subject_;
  std::vector<Member> members_;
  std::vector<ColumnRequest> requests_;
  std::vector<LoadReport> reports_;
  std::optional<std::int64_t> rows_;
  std::optional<std::size_t> searching_;  // DataSets without a first row when the plan was told
  bool cancelled_ = false;
  // What stands in a column that tells groups apart, in the row that was looked at last.
  struct GroupText {
    std::int64_t row = -1;
    std::int32_t column = -1;
    std::string text;
  };
  GroupText group_text_;
};

}  // namespace tarnwick
