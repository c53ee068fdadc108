// Turns what a painter draws into metafile records. Knows the painter's state and record kinds; no graph.
#pragma once

#include <QPaintEngine>
#include <QPainterPath>
#include <QTransform>

#include "graph/metafile/metafile_records.h"

namespace tarnwick {

class MetafileEngine final : public QPaintEngine {
 public:
  /// `units_per_pixel` logical units make a device pixel.
  MetafileEngine(QSize pixels, int dpi, int units_per_pixel);

  std::string Bytes() const { return records_.File(); }

  bool begin(QPaintDevice* device) override;
  bool end() override;
  void updateState(const QPaintEngineState& changed) override;
  void drawPath(const QPainterPath& path) override;
  void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
  void drawPoints(const QPointF* points, int count) override;
  void drawTextItem(const QPointF& position, const QTextItem& item) override;
  void drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) override;
  void drawImage(const QRectF& target, const QImage& image, const QRectF& source,
                 Qt::ImageConversionFlags flags) override;
  Type type() const override { return User; }

 private:
  void ApplyClip(Qt::ClipOperation operation, const QPainterPath& path);
  void SettleClip();
  QPoint Units(QPointF device) const;
  std::vector<QPoint> Units(const QPolygonF& device) const;
  double PenWidth() const;  // device pixels
  /// Device coordinates from here on.
  void Stroke(const QPolygonF& line);
  void Fill(const QList<QPolygonF>& polygons, MetafileFill fill, const QColor& color);
  QRgb Opaque(const QColor& color) const;

  QRectF page_;  // device pixels
  int dpi_;
  int units_per_pixel_;
  MetafileRecords records_;
  QRectF clip_;                   // device pixels
  std::optional<QRect> written_;  // the clip in force in the records, in units
  QTransform transform_;
  QPen pen_;
  QBrush brush_;
  double opacity_ = 1;
};

}  // namespace tarnwick
