#include "graph/paint/plot_pen.h"

#include <QFontMetricsF>
#include <QPen>
#include <algorithm>
#include <cmath>

#include "graph/paint/curve_painter.h"

namespace tarnwick {
namespace {

/// Numbers with the top bit set name colours of the desktop: window texts, backgrounds, button faces.
QColor DesktopColor(int number) {
  constexpr std::array kTexts = {6, 7, 8, 9, 18};
  constexpr int kWindow = 5;
  if (std::find(kTexts.begin(), kTexts.end(), number) != kTexts.end()) return Qt::black;
  return number == kWindow ? QColor(Qt::white) : QColor(0xF0, 0xF0, 0xF0);
}

}  // namespace

QColor QtColor(Color color) {
  constexpr int kNumberMask = 0xFF;
  if (color.value < 0) return DesktopColor(color.value & kNumberMask);
  return {color.Red(), color.Green(), color.Blue()};
}

void PaintText(QPainter& painter, const PlacedText& text) {
  if (text.text.IsEmpty()) return;
  const QFont font = QtFont(text.font);
  const QFontMetricsF metrics(font);
  painter.save();
  painter.setPen(QtColor(text.font.color));
  painter.setFont(font);
  painter.translate(text.center);
  painter.rotate(-text.angle);
  const double left = -text.size.width() / 2;
  const double baseline = text.size.height() / 2 - metrics.descent();
  painter.drawText(QPointF(left, baseline), text.text.text);
  if (!text.text.superscript.isEmpty()) {
    const double behind = left + metrics.horizontalAdvance(text.text.text);
    painter.setFont(SuperscriptFont(font));
    painter.drawText(QPointF(behind, baseline - metrics.ascent() * SuperscriptRise()),
                     text.text.superscript);
  }
  painter.restore();
}

CrispPen::CrispPen(QPainter& painter, PaintTarget target)
    : painter_(painter), on_pixels_(target == PaintTarget::Screen) {
  const QTransform& transform = painter.deviceTransform();
  if (transform.type() > QTransform::TxScale || transform.m11() <= 0) on_pixels_ = false;
  if (!on_pixels_) return;
  scale_ = transform.m11();
  shift_x_ = transform.dx();
  shift_y_ = transform.dy();
}

/// The middle of a line `device_width` pixels wide: in the middle of a pixel when that is odd, between two when even.
double CrispPen::SnapX(double x, double device_width) const {
  const double device = x * scale_ + shift_x_;
  const double middle =
      std::fmod(device_width, 2) == 1 ? std::floor(device) + 0.5 : std::round(device);
  return (middle - shift_x_) / scale_;
}

double CrispPen::SnapY(double y, double device_width) const {
  const double device = y * scale_ + shift_y_;
  const double middle =
      std::fmod(device_width, 2) == 1 ? std::floor(device) + 0.5 : std::round(device);
  return (middle - shift_y_) / scale_;
}

void CrispPen::Draw(const QLineF& line, const QColor& color, double width, LineStyle style) {
  QLineF drawn = line;
  double pen_width = width;
  const bool level = line.y1() == line.y2();
  const bool upright = line.x1() == line.x2();
  if (on_pixels_ && (level || upright)) {
    const double device_width = std::max(1.0, std::round(width * scale_));
    pen_width = device_width / scale_;
    drawn = {
        SnapX(line.x1(), upright ? device_width : 2), SnapY(line.y1(), level ? device_width : 2),
        SnapX(line.x2(), upright ? device_width : 2), SnapY(line.y2(), level ? device_width : 2)};
  }
  if (on_pixels_ && level != upright && style == LineStyle::Solid) {
    // The same pixels, which no blending has to be reckoned for: a grid is half of a picture's time else.
    const double half = pen_width / 2;
    const QRectF covered = QRectF(drawn.p1(), drawn.p2()).normalized();
    painter_.setRenderHint(QPainter::Antialiasing, false);
    painter_.fillRect(
        upright ? covered.adjusted(-half, 0, half, 0) : covered.adjusted(0, -half, 0, half), color);
    painter_.setRenderHint(QPainter::Antialiasing, true);
    return;
  }
  QPen pen = MakePen({color, pen_width, style});
  pen.setCapStyle(Qt::FlatCap);
  painter_.setPen(pen);
  painter_.setRenderHint(QPainter::Antialiasing, true);
  painter_.drawLine(drawn);
}

QRectF CrispPen::Snapped(const QRectF& box) const {
  if (!on_pixels_) return box;
  return QRectF(QPointF(SnapX(box.left(), 2), SnapY(box.top(), 2)),
                QPointF(SnapX(box.right(), 2), SnapY(box.bottom(), 2)));
}

void CrispPen::DrawFrame(const QRectF& box, const QColor& color, double width) {
  const double half =
      on_pixels_ ? std::max(1.0, std::round(width * scale_)) / scale_ / 2 : width / 2;
  const QRectF inner = Snapped(box).adjusted(half, half, -half, -half);
  Draw({inner.left() - half, inner.top(), inner.right() + half, inner.top()}, color, width);
  Draw({inner.left() - half, inner.bottom(), inner.right() + half, inner.bottom()}, color, width);
  Draw({inner.left(), inner.top(), inner.left(), inner.bottom()}, color, width);
  Draw({inner.right(), inner.top(), inner.right(), inner.bottom()}, color, width);
}

}  // namespace tarnwick
