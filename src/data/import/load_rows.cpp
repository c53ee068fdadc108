// Loading row by row through the supplier's own operations: the road open to every supplier, and the one that reads only
// the rows that sampling wants.
#include <algorithm>
#include <limits>

#include "data/import/load_run.h"

namespace tarnwick {
namespace {

constexpr std::int64_t kRowsPerAdvance = 32;  // sampled rows may lie far apart

}  // namespace

void LoadRun::LoadRows() {
  supplier_.FirstRow();
  for (std::int64_t taken = 0; GoToNextWantedRow(); ++taken) {
    if (taken % kRowsPerAdvance == 0 && !AdvanceProgress(supplier_.Position())) return;
    const std::int32_t blanks = supplier_.BlankLinesPassed();
    for (Member& member : members_) {
      LoadTarget& target = *member.target;
      if (blanks > 0) target.PassBlankLines(blanks);
      if (target.Chooser().NextRow() != supplier_.CurrentRow() - member.headers) continue;
      target.Take(ReadRow(member), [this] { return supplier_.Line(); });
    }
  }
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

RowValues LoadRun::ReadRow(Member& member) const {
  const TDSInfo& info = member.target->Info();
  RowValues values;
  values.x = ReadCode(member.x_column, info.XFormat);
  if (!IsUndefined(values.x)) values.y = ReadCode(member.y_column, info.YFormat);
  const LoadTarget& target = *member.target;
  if (const auto column = target.YErrorColumn()) {
    values.y_error = ReadCode(*column, ErrorFormatOf(member, *column, info.YFormat));
  }
  if (const auto column = target.XErrorColumn()) {
    values.x_error = ReadCode(*column, ErrorFormatOf(member, *column, info.XFormat));
  }
  const std::vector<std::int32_t>& columns = target.Columns();
  for (std::size_t i = 0; i < columns.size(); ++i) {
    member.columns[i] = ReadCode(columns[i], FormatOf(member, columns[i]));
  }
  values.columns = member.columns;
  return values;
}

double LoadRun::ReadCode(std::int32_t column, ColumnFormat format) const {
  if (const std::optional<double> value = supplier_.ReadValue(column, format)) return *value;
  return supplier_.HasValue(column) ? kNotNumberValue : kMissingValue;
}

}  // namespace tarnwick
