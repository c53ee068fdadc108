// Fills DataSets from suppliers by their data-source descriptions: row choice, sampling, skipped rows. Knows no file
// format and no window.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/progress.h"
#include "data/data_supplier.h"
#include "data/import/load_report.h"
#include "data/import/source_kinds.h"
#include "data/series/data_series.h"

namespace tarnwick {

/// What a column expression makes of a row. An empty one stands for "take the raw value" (the texts "X" and "Y").
struct ColumnTransform {
  /// The value, or nothing when it is undefined. `columns`: the values of `columns` below, all of them numbers.
  using Function =
      std::function<std::optional<double>(double x, double y, std::span<const double> columns)>;

  Function value;
  std::vector<std::int32_t> columns = {};  ///< what it reads beside the raw X and Y, by position

  explicit operator bool() const { return static_cast<bool>(value); }
};

struct ColumnTransforms {
  ColumnTransform x;
  ColumnTransform y;
};
/// Compiles XColExpr and YColExpr for a source with these columns.
using TransformFactory = std::function<ColumnTransforms(
    const TDataSeries&, const std::vector<std::string>& column_names)>;

/// Points that automatic sampling lets through.
inline constexpr std::int32_t kPointLimit = 5000;
inline constexpr std::int32_t kReducedPointLimit = 500;

struct LoadOptions {
  bool reduced_points = false;   ///< the owning graph is in its reduced-points mode
  Progress* progress = nullptr;  ///< shown from the start when given
  int threads = 0;               ///< for large text; 0 = as many as help on this machine
  TransformFactory transforms;   ///< empty: CompileColumnExpressions
  bool value_by_value =
      false;  ///< only the one-value-at-a-time interface: the reference of the fast road
  SourceKinds kinds = BasicSourceKinds();  ///< what can be opened
};

/// Replaces the points of `series` by those its description picks from `supplier`. Keeps the old points (and answers
/// loaded = false) when the source is not active or a column is missing. Stores the sampling frequency and row bounds
/// it computed in the description.
LoadReport LoadDataSet(TDataSeries& series, TDataSupplier& supplier,
                       const LoadOptions& options = {});

/// The same for several DataSets in one pass over the rows, each with its own columns, row choice and sampling, and the
/// same result as loading each alone. The progress window ("Loading data") begins only when a DataSet passes
/// kPointLimit points. One report per DataSet, in order.
std::vector<LoadReport> LoadShared(std::span<TDataSeries* const> all, TDataSupplier& supplier,
                                   const LoadOptions& options = {});

/// Re-reads every DataSet whose kind of source can be opened again, each source once, where SourcePlace finds it; that is its
/// place from then on. The end of a table that nobody stated is looked for anew. The others are left alone (loaded =
/// false). A source that cannot be opened throws its Error before any DataSet of it changes; the DataSets of the sources
/// before it are loaded by then.
std::vector<LoadReport> RefreshAll(std::span<TDataSeries* const> all,
                                   const LoadOptions& options = {});

}  // namespace tarnwick
