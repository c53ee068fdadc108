#include "graph/metafile/metafile_engine.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/text_encoding.h"
#include "graph/metafile/metafile_shapes.h"
#include "graph/thinning/line_clip.h"

namespace tarnwick {
namespace {

constexpr double kPointsPerInch = 72;
constexpr std::size_t kMostVertices = 16000;  // of an area, whose record holds its count in 16 bits

// The engine transforms, strokes and fills everything itself; what it cannot do is drawn without, not as one large bitmap.
constexpr QPaintEngine::PaintEngineFeatures kFeatures = QPaintEngine::AllFeatures;

/// The text in Windows-1252; nothing when that lacks one of its letters.
std::optional<std::string> WindowsText(QString text) {
  text.replace(u'\u2212', u'-');  // readers that know no dashes would drop the minus of a number
  std::string bytes = EightBitFromUtf8(text.toStdString());
  if (bytes.starts_with("\xEF\xBB\xBF")) return std::nullopt;
  return bytes;
}

std::string FamilyOf(const QFont& font) {
  const QString family = font.families().isEmpty() ? font.family() : font.families().front();
  return WindowsText(family).value_or("Arial");
}

/// Where each letter of the text ends, as differences: rounded, they add up to the text's own width.
std::vector<int> Advances(const QString& text, const QFontMetricsF& metrics, double units) {
  constexpr int kWidest = 32767;
  std::vector<int> advances;
  int before = 0;
  for (qsizetype letters = 1; letters <= text.size(); ++letters) {
    const double end = metrics.horizontalAdvance(text.left(letters)) * units;
    const int here = std::clamp(static_cast<int>(std::lround(end)), before, before + kWidest);
    advances.push_back(here - before);
    before = here;
  }
  return advances;
}

bool IsFinite(QPointF point) {
  return std::isfinite(point.x()) && std::isfinite(point.y());
}

}  // namespace

MetafileEngine::MetafileEngine(QSize pixels, int dpi, int units_per_pixel)
    : QPaintEngine(kFeatures),
      page_(QPointF(0, 0), QSizeF(pixels)),
      dpi_(dpi),
      units_per_pixel_(units_per_pixel),
      records_(pixels * units_per_pixel, dpi * units_per_pixel),
      clip_(page_) {}

bool MetafileEngine::begin(QPaintDevice*) {
  return true;
}

bool MetafileEngine::end() {
  return true;
}

void MetafileEngine::updateState(const QPaintEngineState& changed) {
  const DirtyFlags dirty = changed.state();
  if (dirty & DirtyTransform) transform_ = changed.transform();
  if (dirty & DirtyPen) pen_ = changed.pen();
  if (dirty & DirtyBrush) brush_ = changed.brush();
  if (dirty & DirtyOpacity) opacity_ = changed.opacity();
  if (dirty & DirtyClipRegion) {
    QPainterPath path;
    path.addRegion(changed.clipRegion());
    ApplyClip(changed.clipOperation(), path);
  }
  if (dirty & DirtyClipPath) ApplyClip(changed.clipOperation(), changed.clipPath());
  if ((dirty & DirtyClipEnabled) && !changed.isClipEnabled()) clip_ = page_;
}

void MetafileEngine::ApplyClip(Qt::ClipOperation operation, const QPainterPath& path) {
  const QRectF area = transform_.mapRect(path.boundingRect()).intersected(page_);
  if (operation == Qt::NoClip) {
    clip_ = page_;
  } else {
    clip_ = operation == Qt::ReplaceClip ? area : clip_.intersected(area);
  }
}

/// Writes the clip when it is another than the one in force.
void MetafileEngine::SettleClip() {
  const QRect wanted(Units(clip_.topLeft()), Units(clip_.bottomRight()) - QPoint(1, 1));
  if (!written_ && clip_ == page_) return;
  if (written_ == wanted) return;
  records_.Clip(wanted);
  written_ = wanted;
}

QPoint MetafileEngine::Units(QPointF device) const {
  constexpr double kFarthest = 32767;
  const auto unit = [&](double pixel) {
    if (std::isnan(pixel)) return 0;
    return static_cast<int>(
        std::lround(std::clamp(pixel * units_per_pixel_, -kFarthest, kFarthest)));
  };
  return {unit(device.x()), unit(device.y())};
}

std::vector<QPoint> MetafileEngine::Units(const QPolygonF& device) const {
  std::vector<QPoint> points;
  points.reserve(static_cast<std::size_t>(device.size()));
  for (const QPointF& point : device) {
    const QPoint unit = Units(point);
    if (points.empty() || points.back() != unit) points.push_back(unit);
  }
  return points;
}

QRgb MetafileEngine::Opaque(const QColor& color) const {
  const double alpha = color.alphaF() * opacity_;
  const auto mixed = [&](int part) {
    return static_cast<int>(std::lround(part * alpha + 255 * (1 - alpha)));
  };
  return qRgb(mixed(color.red()), mixed(color.green()), mixed(color.blue()));
}

double MetafileEngine::PenWidth() const {
  const double scale = pen_.isCosmetic() ? 1 : std::sqrt(std::abs(transform_.determinant()));
  return pen_.widthF() > 0 ? pen_.widthF() * scale : 1;
}

void MetafileEngine::Stroke(const QPolygonF& line) {
  if (pen_.style() == Qt::NoPen || clip_.isEmpty()) return;
  SettleClip();
  const double width = PenWidth();
  const int units = std::max(1, static_cast<int>(std::lround(width * units_per_pixel_)));
  const QRgb color = Opaque(pen_.color());
  // Cut a little outside, where the clip hides the ends.
  const QRectF area = clip_.adjusted(-width, -width, width, width);
  std::vector<PixelPoint> points;
  for (const QPointF& point : line) points.push_back({point.x(), point.y()});
  QList<qreal> pattern;
  if (pen_.style() != Qt::SolidLine) {
    for (const qreal part : pen_.dashPattern()) pattern << part * width;
  }
  for (const QPolygonF& piece : ClipPolyline(points, area)) {
    for (const QPolygonF& dash : CutIntoDashes(piece, pattern, width / 2)) {
      std::vector<QPoint> drawn = Units(dash);
      if (drawn.size() == 1) drawn.push_back(drawn.front() + QPoint(1, 0));  // a dot
      records_.Polyline(drawn, units, color);
    }
  }
}

void MetafileEngine::Fill(const QList<QPolygonF>& polygons, MetafileFill fill,
                          const QColor& color) {
  std::vector<std::vector<QPoint>> areas;
  std::size_t vertices = 0;
  for (const QPolygonF& polygon : polygons) {
    std::vector<QPoint> area = Units(ClipPolygon(polygon, clip_));
    if (area.size() < 3 || vertices + area.size() > kMostVertices) continue;
    vertices += area.size();
    areas.push_back(std::move(area));
  }
  if (areas.empty()) return;
  SettleClip();
  records_.Polygons(areas, fill, Opaque(color));
}

void MetafileEngine::drawPath(const QPainterPath& path) {
  const QList<QPolygonF> polygons = path.toSubpathPolygons(transform_);
  if (brush_.style() != Qt::NoBrush) {
    const bool winding = path.fillRule() == Qt::WindingFill;
    Fill(polygons, winding ? MetafileFill::Winding : MetafileFill::Alternate, brush_.color());
  }
  for (const QPolygonF& polygon : polygons) Stroke(polygon);
}

void MetafileEngine::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) {
  QPolygonF polygon = transform_.map(QPolygonF(QList<QPointF>(points, points + count)));
  if (mode == PolylineMode) {
    Stroke(polygon);
    return;
  }
  if (brush_.style() != Qt::NoBrush) {
    Fill({polygon}, mode == WindingMode ? MetafileFill::Winding : MetafileFill::Alternate,
         brush_.color());
  }
  if (!polygon.isEmpty()) polygon << polygon.front();
  Stroke(polygon);
}

void MetafileEngine::drawPoints(const QPointF* points, int count) {
  for (int i = 0; i < count; ++i) Stroke(QPolygonF({transform_.map(points[i])}));
}

void MetafileEngine::drawTextItem(const QPointF& position, const QTextItem& item) {
  const QPointF corner = transform_.map(position - QPointF(0, item.ascent()));
  if (!IsFinite(corner) || clip_.isEmpty()) return;
  const QFont font = item.font();
  const std::optional<std::string> text = WindowsText(item.text());
  const QRectF box(position.x(), position.y() - item.ascent(), item.width(),
                   item.ascent() + item.descent());
  if (!transform_.mapRect(box).intersects(clip_)) return;
  if (!text) {
    QPainterPath letters;
    letters.setFillRule(Qt::WindingFill);
    letters.addText(position, font, item.text());
    Fill(letters.toSubpathPolygons(transform_), MetafileFill::Winding, pen_.color());
    return;
  }
  const double size =
      font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * dpi_ / kPointsPerInch;
  const double height = size * std::hypot(transform_.m21(), transform_.m22());
  const double along = std::hypot(transform_.m11(), transform_.m12()) * units_per_pixel_;
  // Device Y runs downwards: clockwise there is counterclockwise here.
  const double angle = -std::atan2(transform_.m12(), transform_.m11()) * 180 / std::numbers::pi;
  MetafileFont face;
  face.family = FamilyOf(font);
  face.height = std::clamp(static_cast<int>(std::lround(height * units_per_pixel_)), 1, 32767);
  face.angle = static_cast<int>(std::lround(angle * 10));
  face.bold = font.bold();
  face.italic = font.italic();
  face.underline = font.underline();
  face.strike_out = font.strikeOut();
  SettleClip();
  records_.Text(Units(corner), *text,
                Advances(item.text(), QFontMetricsF(font, paintDevice()), along), face,
                Opaque(pen_.color()));
}

void MetafileEngine::drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) {
  drawImage(target, pixmap.toImage(), source, Qt::AutoColor);
}

void MetafileEngine::drawImage(const QRectF& target, const QImage& image, const QRectF& source,
                               Qt::ImageConversionFlags) {
  constexpr int kLongestSide = 4096;
  const QRectF place = transform_.mapRect(target);
  if (!place.intersects(clip_)) return;
  QImage part = image.copy(source.toAlignedRect());
  if (part.isNull()) return;
  if (std::max(part.width(), part.height()) > kLongestSide) {
    part = part.scaled(kLongestSide, kLongestSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  }
  QImage opaque(part.size(), QImage::Format_RGB32);
  opaque.fill(Qt::white);
  QPainter painter(&opaque);
  painter.setOpacity(opacity_);
  painter.drawImage(0, 0, part);
  painter.end();
  SettleClip();
  records_.Image(QRect(Units(place.topLeft()), Units(place.bottomRight()) - QPoint(1, 1)), opaque);
}

}  // namespace tarnwick
