#include "graph/series.h"

#include <utility>

#include "data/points/arrival_order.h"
#include "graph/thinning/arrival_line.h"
#include "graph/thinning/error_bars.h"
#include "graph/xy_graph.h"

namespace tarnwick {

TSeries::~TSeries() = default;

void TSeries::SetStyle(const SeriesStyle& style) {
  has_own_style_ = true;
  if (style == style_) return;
  if (style.line_order != style_.line_order) path_.reset();
  style_ = style;
  if (graph_ != nullptr) graph_->StyleChanged();
}

Color TSeries::ModelCurveColor() const {
  return style_.model_curve_color == SeriesStyle().model_curve_color ? Fit().CurveColor()
                                                                     : style_.model_curve_color;
}

const LinePath* TSeries::Path() const {
  const PointGaps gaps = Settings().BreakAtGaps ? Gaps() : PointGaps();
  const bool as_they_came = style_.line_order == LineOrder::AsTheyCame;
  if (!as_they_came && gaps.Empty()) return nullptr;
  if (path_ == nullptr) {
    LinePath path;
    if (as_they_came && !IdsAscend(Points())) {
      path.arrivals = std::make_unique<ArrivalLine>(Points(), gaps);
    } else {
      path.breaks = BreaksAlongChain(Points(), gaps);
    }
    path_ = std::make_shared<const LinePath>(std::move(path));
  }
  return path_.get();
}

const ErrorBars* TSeries::Bars() const {
  if (!HasYErrors(Errors()) && !HasXErrors(Errors())) return nullptr;
  if (bars_ == nullptr) bars_ = std::make_shared<const ErrorBars>(Points(), Errors());
  return bars_.get();
}

void TSeries::Change(ChangeCode code) {
  if (code == ChangeCode::Data || code == ChangeCode::PointAdded) {
    path_.reset();
    bars_.reset();
  }
  TDataSeries::Change(code);
  if (graph_ != nullptr) graph_->SeriesChanged(*this, code);
}

}  // namespace tarnwick
