// Loading row by row through the supplier's own operations: the road open to every supplier, and the one that reads only
// the rows that sampling wants.
#include <algorithm>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <set>
#include <utility>

#include "data/import/load_run.h"

namespace tarnwick {
namespace {

constexpr std::int64_t kRowsPerAdvance = 32;  // sampled rows may lie far apart

class MovingUnder {
 public:
  MovingUnder(TDataSupplier& supplier, Progress& progress) : supplier_(supplier) {
    supplier_.MoveUnder(&progress);
  }
  ~MovingUnder() { supplier_.MoveUnder(nullptr); }
  MovingUnder(const MovingUnder&) = delete;
  MovingUnder& operator=(const MovingUnder&) = delete;

 private:
  TDataSupplier& supplier_;
};

}  // namespace

void LoadRun::LoadRows() {
  const MovingUnder cancellable(supplier_, progress_);
  supplier_.FirstRow();
  if (!PassRowsBelow()) return;
  for (std::int64_t taken = 0; TellPlan() && GoToNextWantedRow(); ++taken) {
    if (taken % kRowsPerAdvance == 0 && !AdvanceProgress(supplier_.Position())) return;
    const std::int32_t blanks = supplier_.BlankLinesPassed();
    for (Member& member : members_) {
      LoadTarget& target = *member.target;
      if (blanks > 0) target.PassBlankLines(blanks);
      if (supplier_.RemarkPassed()) target.PassRemark();
      if (target.Chooser().NextRow() != supplier_.CurrentRow() - member.headers) continue;
      RowValues values = ReadRow(supplier_, target.Info(), member.row, member.columns);
      values.of_group = IsOfGroup(member);
      target.Take(values, [this] { return supplier_.Line(); });
    }
  }
  cancelled_ = cancelled_ || progress_.Cancelled();
}

bool LoadRun::IsOfGroup(const Member& member) {
  if (!member.group_column) return true;
  const std::int32_t column = *member.group_column;
  const std::int64_t row = supplier_.CurrentRow();
  if (group_text_.row != row || group_text_.column != column) {
    group_text_ = {row, column, supplier_.TextAt(column)};
  }
  return group_text_.text == member.target->Info().GroupValue;
}

/// What the source can say of rows before the first one taken need not be read. False when cancelled.
bool LoadRun::PassRowsBelow() {
  if (options_.value_by_value) return true;
  for (Member& member : members_) {
    LoadTarget& target = *member.target;
    if (!target.Chooser().Searching() || member.headers > 0) continue;
    const TDSInfo& info = target.Info();
    const std::int64_t rows =
        supplier_.RowsBelow(member.x_column, info.XFormat, info.RowChoiceValue1, progress_);
    target.PassSearched(rows);
    cancelled_ = cancelled_ || progress_.Cancelled();
  }
  return !cancelled_;
}

/// Rows that all DataSets want lie on one grid: the widest that holds theirs.
RowPlan LoadRun::PlanAhead() const {
  RowPlan plan{.x_column = members_.front().x_column, .columns = {}, .every = 0};
  std::set<std::pair<std::int32_t, ColumnFormat>> columns;
  for (const Member& member : members_) {
    const LoadTarget& target = *member.target;
    const TDSInfo& info = target.Info();
    if (member.x_column != plan.x_column) plan.x_column = -1;
    columns.insert({member.x_column, info.XFormat});
    columns.insert({member.y_column, info.YFormat});
    if (const auto column = target.YErrorColumn()) {
      columns.insert({*column, FormatOfYErrors(info, *column)});
    }
    if (const auto column = target.XErrorColumn()) {
      columns.insert({*column, FormatOfXErrors(info, *column)});
    }
    for (const std::int32_t column : target.Columns()) {
      columns.insert({column, FormatOfColumn(info, column)});
    }
    const RowChooser& chooser = target.Chooser();
    if (chooser.NextRow() == RowChooser::kNoRow) continue;
    const std::int64_t row = chooser.NextRow() + member.headers;
    const std::int64_t first = plan.every == 0 ? row : std::min(plan.first, row);
    const std::int64_t apart = plan.every == 0 ? 0 : std::abs(row - plan.first);
    plan.every = std::gcd(std::gcd(plan.every, std::int64_t{chooser.Every()}), apart);
    plan.first = first;
  }
  for (const auto& [column, format] : columns) plan.columns.push_back({column, format});
  if (options_.value_by_value) plan.first = plan.every = 1;
  return plan;
}

/// Anew when a first row is found, from which on rows are leapt over. False when cancelled.
bool LoadRun::TellPlan() {
  const auto searching = static_cast<std::size_t>(std::ranges::count_if(
      members_, [](const Member& m) { return m.target->Chooser().Searching(); }));
  if (searching_ == searching || members_.empty() || AllDone()) return true;
  searching_ = searching;
  if (!supplier_.Expect(PlanAhead(), progress_)) cancelled_ = true;
  return !cancelled_;
}

/// Moves ahead to the first row that a DataSet wants; false when there is none.
bool LoadRun::GoToNextWantedRow() {
  std::int64_t wanted = RowChooser::kNoRow;
  for (const Member& member : members_) {
    const std::int64_t next = member.target->Chooser().NextRow();
    if (next != RowChooser::kNoRow) wanted = std::min(wanted, next + member.headers);
  }
  if (wanted == RowChooser::kNoRow) return false;
  const std::int64_t ahead = wanted - supplier_.CurrentRow();
  supplier_.SkipRows(static_cast<std::int32_t>(
      std::min<std::int64_t>(ahead, std::numeric_limits<std::int32_t>::max())));
  return !supplier_.AtEnd();
}

}  // namespace tarnwick
