// A DataSet as a graph draws it: the drawing attributes beside the data. Knows no painter.
#pragma once

#include <memory>

#include "base/color.h"
#include "data/series/data_series.h"
#include "graph/model_curve.h"
#include "graph/series_style.h"

namespace tarnwick {

class ErrorBars;
class TxyGraph;
struct LinePath;

/// The drawing subclass of the DataSet: owned by one graph, which it tells of every change.
class TSeries : public TDataSeries {
 public:
  TSeries() = default;
  ~TSeries() override;

  const SeriesStyle& Style() const { return style_; }
  /// Stores the style; tells the graph when anything changed. A style set before the DataSet joins a graph is kept there.
  void SetStyle(const SeriesStyle& style);
  /// True while the model's curve is to be drawn with the DataSet.
  bool ShowsModelCurve() const {
    return Fit().Status() != FitStatus::cf_None && Fit().CurveShown() && style_.visible;
  }
  /// The model's curve over what the X axis shows of the data; empty unless it is shown. Kept up to date by the graph.
  const ModelCurve& Curve() const { return curve_; }
  /// The model's own colour, unless the style has been given another than it starts with.
  Color ModelCurveColor() const;

  /// How the line goes through the points, worked out when first asked for after a change. Null where it simply joins
  /// neighbours in the chain.
  const LinePath* Path() const;

  /// The bars of the points' errors, kept up in the same way. Null while there are none.
  const ErrorBars* Bars() const;

  /// Tells the listeners, then the graph.
  void Change(ChangeCode code) override;

 private:
  friend class TxyGraph;
  SeriesStyle style_;
  ModelCurve curve_;
  mutable std::shared_ptr<const LinePath> path_;   // null: not known
  mutable std::shared_ptr<const ErrorBars> bars_;  // likewise
  TxyGraph* graph_ = nullptr;
  bool has_own_style_ = false;     // SetStyle was called: the graph leaves the style alone
  bool thinning_settled_ = false;  // too many points were asked about, and are as they were then
};

}  // namespace tarnwick
