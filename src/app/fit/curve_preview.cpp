#include "app/fit/curve_preview.h"

#include <QPainter>
#include <algorithm>
#include <utility>

namespace tarnwick {
namespace {

/// Texts and lines are smaller than the graph's own by this.
constexpr double kReduced = 0.7;
constexpr double kScreenDpi = 96;

}  // namespace

CurvePreview::CurvePreview(DrawPicture draw, QWidget* parent)
    : QWidget(parent), draw_(std::move(draw)) {
  setObjectName("CurvePreview");
  setMinimumSize(160, 120);
  setAccessibleName(tr("The graph as it now is"));
}

void CurvePreview::paintEvent(QPaintEvent*) {
  const double ratio = devicePixelRatioF();
  PictureOptions options;
  options.width = std::max(1, qRound(width() * ratio));
  options.height = std::max(1, qRound(height() * ratio));
  options.dpi = std::max(PictureOptions::kLowestDpi, qRound(kScreenDpi * kReduced * ratio));
  QPainter(this).drawImage(rect(), draw_(options));
}

}  // namespace tarnwick
