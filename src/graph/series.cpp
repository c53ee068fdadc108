#include "graph/series.h"

#include "graph/xy_graph.h"

namespace tarnwick {

TSeries::~TSeries() = default;

void TSeries::SetStyle(const SeriesStyle& style) {
  has_own_style_ = true;
  if (style == style_) return;
  style_ = style;
  if (graph_ != nullptr) graph_->StyleChanged();
}

Color TSeries::ModelCurveColor() const {
  return style_.model_curve_color == SeriesStyle().model_curve_color ? Fit().CurveColor()
                                                                     : style_.model_curve_color;
}

void TSeries::Change(ChangeCode code) {
  TDataSeries::Change(code);
  if (graph_ != nullptr) graph_->SeriesChanged(*this, code);
}

}  // namespace tarnwick
