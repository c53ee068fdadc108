// The curve of a fitting model across an X axis, computed before anything is painted. Knows models and numbers; no
// DataSet, axis object or painter.
#pragma once

#include <memory>
#include <string>

#include "data/points/point_chain.h"
#include "expr/block/block_evaluator.h"
#include "fit/model/curve_fit.h"

namespace tarnwick {

/// How abscissae are spread: equally far apart, or by equal ratios.
enum class CurveSpacing { Linear, Geometric };

/// The stretch of X that a curve is wanted for.
struct CurveSpan {
  double from = 0;
  double to = 0;
  CurveSpacing spacing = CurveSpacing::Linear;
  bool operator==(const CurveSpan&) const = default;
};

/// The part of the axis that lies between the model's margins, where those are used.
CurveSpan WithinMargins(CurveSpan axis, const FitSettings& model);

class ModelCurve {
 public:
  /// No more points than this are computed, however many the model asks for: no picture shows them.
  static constexpr std::int32_t kMaxPoints = 100'000;

  /// Brings the curve of a TCurFit's settings up to date: NPoints abscissae over the span, undefined Y where the model has
  /// no value. Compiles only
  /// what is new, computes only what changed. A span without extent, or a model that cannot be compiled, gives no points.
  void Update(const FitSettings& model, const CurveSpan& span);
  void Clear();

  const PointChain& Points() const { return points_; }
  /// Why the model could not be compiled; empty when it could.
  const std::string& Error() const { return error_; }

 private:
  void Compile(const FitSettings& model);
  void Compute(const CurveSpan& span);
  std::vector<double> Values(const std::vector<double>& x);

  FitSettings settings_;
  CurveSpan span_;
  bool current_ = false;  // the points belong to settings_ and span_
  TCurFit model_;
  std::unique_ptr<BlockEvaluator> blocks_;  // null: the expression is evaluated record by record
  PointChain points_;
  std::string error_;
};

}  // namespace tarnwick
