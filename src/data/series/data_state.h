// A DataSet as plain values: its stored settings and its whole state. Knows no rules; the DataSet applies them.
#pragma once

#include <cstdint>
#include <string>

#include "data/ds_info.h"
#include "data/points/point_chain.h"
#include "data/points/point_gaps.h"
#include "data/regression/regression_type.h"
#include "data/series/extremes.h"
#include "data/series/point_errors.h"
#include "fit/model/fit_record.h"

namespace tarnwick {

/// The settings of a DataSet that are stored with it, apart from its points. A plain value.
struct DataSettings {
  std::string SeriesName = "UnNamed Series";
  double ZeroValue = 0;           ///< base line at X = 0
  double BaseLineSlope = 0;       ///< Y units per X unit
  double NumericalTolerance = 0;  ///< X distance within which two points are the same abscissa
  bool AutoZero = false;          ///< keep ZeroValue at the smallest stored Y
  bool DuplicatesAllowed = false;
  bool BreakAtGaps = false;  ///< a line is broken where a piece of the measurement begins
  RegressionType regression_type = RegressionType::None;
  /// The integer control, stored as RegressionControlValue1: steps of the curve (spline, smoother).
  std::int32_t regression_steps = 100;
  /// The real control, stored as RegressionControlValue1: smoothing factor, 1/window, end slope.
  double regression_alpha = 0.05;
  TDSInfo source;
  bool operator==(const DataSettings&) const = default;
};

/// Everything a DataSet is, as a value. Copies share their chunks. What undo, autosave and worker threads hold.
struct DataState {
  DataSettings settings;
  PointChain points;
  PointGaps gaps;
  PointErrors errors;
  PointChain regression_curve;
  std::int32_t id_counter = 0;  ///< the last point id given out
  Extremes extremes;
  bool extremes_stale = false;
  bool regression_stale = true;
  FitSettings fit;
  LastFit last_fit;
};

/// Leaves nothing as if it still held of points that were edited in the state.
void PointsEdited(DataState& state);

/// True when both states have the same settings and model and share their points: nothing was edited between them.
bool SameState(const DataState& left, const DataState& right);

}  // namespace tarnwick
