#include "data/import/row_taking.h"

#include <cmath>

#include "data/block_source.h"

namespace tarnwick {

RowTaking::RowTaking(TDSInfo& info, std::optional<std::int64_t> rows, std::int32_t point_limit)
    : info_(info),
      chooser_(info, rows, point_limit),
      goes_on_(info.XFormat == ColumnFormat::TimeGoingOn) {}

std::optional<RowVerdict> RowTaking::Take(RowValues& values) {
  if (goes_on_) values.x = days_.Placed(values.x);
  const RowVerdict verdict = chooser_.Take(values.x, values.y);
  if (verdict == RowVerdict::Passed || !values.of_group) return std::nullopt;
  if (verdict == RowVerdict::Point) pieces_.SeeRow(values.x);
  if (verdict == RowVerdict::Skipped && std::isnan(values.x)) {
    pieces_.PassBreak(IsMissingValue(values.x) && IsMissingValue(values.y) ? Break::Certain
                                                                           : Break::WhereXTurns);
  }
  return OfChosenRun() ? std::optional(verdict) : std::nullopt;
}

}  // namespace tarnwick
