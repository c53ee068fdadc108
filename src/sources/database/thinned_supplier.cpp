#include "sources/database/thinned_supplier.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/error.h"
#include "data/packed/unpack.h"

namespace tarnwick {

ThinnedSupplier::ThinnedSupplier(std::unique_ptr<TDataSupplier> table, DatabasePlace place,
                                 FirstPicture picture)
    : table_(std::move(table)), place_(std::move(place)), picture_(picture) {}

bool ThinnedSupplier::Expect(const RowPlan& plan, Progress& progress) {
  const std::vector<std::string>& names = table_->ColumnNames();
  const auto named = [&](const ColumnRequest& request) {
    const auto at = static_cast<std::size_t>(request.column);
    if (request.column < 0 || at >= names.size()) {
      throw Error("A table is thinned by the values of its columns: " + Describe());
    }
    return ThinnedColumn{names[at], request.format};
  };
  const auto x = std::ranges::find(plan.columns, plan.x_column, &ColumnRequest::column);
  if (x == plan.columns.end()) {
    throw Error("DataSets that are thinned together have one column of X: " + Describe());
  }
  ThinnedView view{.place = place_, .x = named(*x)};
  view.columns = kColumnsOfWhole;
  columns_ = {*x};
  for (const ColumnRequest& request : plan.columns) {
    if (request == *x) continue;
    columns_.push_back(request);
    view.y.push_back(named(request));
  }
  if (view.y.empty()) {
    columns_.push_back(*x);
    view.y.push_back(view.x);
  }
  try {
    picked_ = picture_ == FirstPicture::Coarse ? FetchCoarse(view, progress) : std::nullopt;
    if (!picked_) picked_ = FetchThinned(view, progress);
  } catch (const UnpackingCancelled&) {
    return false;
  }
  row_ = 0;
  return true;
}

bool ThinnedSupplier::AtEnd() const {
  return picked_ ? row_ >= Size() : table_->AtEnd();
}

std::int32_t ThinnedSupplier::CurrentRow() const {
  return picked_ ? static_cast<std::int32_t>(row_ + 1) : table_->CurrentRow();
}

bool ThinnedSupplier::NextRow() {
  if (!picked_) return table_->NextRow();
  row_ = std::min(row_ + 1, Size());
  return AtEnd();
}

void ThinnedSupplier::FirstRow() {
  row_ = 0;
  if (!picked_) table_->FirstRow();
}

void ThinnedSupplier::SkipRows(std::int32_t rows) {
  if (!picked_) {
    table_->SkipRows(rows);
  } else {
    row_ = std::min(row_ + std::max(rows, 0), Size());
  }
}

std::int64_t ThinnedSupplier::Size() const {
  return picked_ ? static_cast<std::int64_t>(picked_->x.size()) : MostThinnedRows(kColumnsOfWhole);
}

std::int32_t ThinnedSupplier::RowCount() {
  return static_cast<std::int32_t>(Size());
}

std::optional<double> ThinnedSupplier::ReadValue(std::int32_t column, ColumnFormat format) {
  if (!picked_) return table_->ReadValue(column, format);
  const auto found = std::ranges::find(columns_, ColumnRequest{column, format});
  if (found == columns_.end() || AtEnd()) return std::nullopt;
  const auto at = static_cast<std::size_t>(found - columns_.begin());
  const auto row = static_cast<std::size_t>(row_);
  const double value = at == 0 ? picked_->x[row] : picked_->y[at - 1][row];
  return std::isnan(value) ? std::nullopt : std::optional(value);
}

bool ThinnedSupplier::HasValue(std::int32_t column) {
  if (!picked_) return table_->HasValue(column);
  const auto is_value = [&](const ColumnRequest& one) {
    return one.column == column && ReadValue(column, one.format).has_value();
  };
  return std::ranges::any_of(columns_, is_value);
}

}  // namespace tarnwick
