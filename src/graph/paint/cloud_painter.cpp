#include "graph/paint/cloud_painter.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include <QImage>
#include <QList>
#include <QPaintEngine>
#include <QPainter>

namespace tarnwick {

namespace {

constexpr double kCloudDotsPerPixel = 3;  // about 300 dots an inch

QImage CloudImage(const SeriesFrame& frame, const std::function<void(DeviceSpace&)>& paint) {
  const QSize size = (frame.clip.size() * kCloudDotsPerPixel).toSize().expandedTo(QSize(1, 1));
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return image;
  image.fill(Qt::transparent);
  {
    QPainter painter(&image);
    painter.scale(size.width() / frame.clip.width(), size.height() / frame.clip.height());
    painter.translate(-frame.clip.topLeft());
    DeviceSpace dots(painter, frame);
    paint(dots);
  }
  return image;
}

// The covered dots of an image, row by row.
class CoveredRows {
 public:
  explicit CoveredRows(const QImage& image) : rows_(static_cast<std::size_t>(image.height())) {
    constexpr int kCovered = 128;
    for (int y = 0; y < image.height(); ++y) {
      const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
      for (int x = 0; x < image.width(); ++x) {
        if (qAlpha(row[x]) < kCovered) continue;
        const int first = x;
        while (x < image.width() && qAlpha(row[x]) >= kCovered) ++x;
        rows_[static_cast<std::size_t>(y)].push_back({first, x});
      }
    }
  }

  // Rectangles that cover the same dots. They overlap, so that no viewer shows seams between them.
  QList<QRectF> Rectangles() const {
    constexpr int kOverlap = 12;
    const int count = static_cast<int>(rows_.size());
    QList<QRectF> rectangles;
    for (int y = 0; y < count; ++y) {
      for (const Run& run : rows_[static_cast<std::size_t>(y)]) {
        if (Around(run, y - 1) == run) continue;  // part of the rectangle that began there
        int top = y;
        int bottom = y;
        while (Around(run, bottom + 1) == run) ++bottom;
        for (int i = 0; i < kOverlap && Around(run, top - 1); ++i) --top;
        for (int i = 0; i < kOverlap && Around(run, bottom + 1); ++i) ++bottom;
        rectangles << QRectF(run.first, top - 0.5, run.end - run.first, bottom + 2 - top);
      }
    }
    return rectangles;
  }

 private:
  struct Run {
    int first;
    int end;
    bool operator==(const Run&) const = default;
  };

  // The run of row `y` that holds all of `run`.
  std::optional<Run> Around(const Run& run, int y) const {
    if (y < 0 || std::cmp_greater_equal(y, rows_.size())) return std::nullopt;
    const std::vector<Run>& row = rows_[static_cast<std::size_t>(y)];
    const auto after = std::upper_bound(row.begin(), row.end(), run.first,
                                        [](int x, const Run& other) { return x < other.first; });
    if (after == row.begin() || (after - 1)->end < run.end) return std::nullopt;
    return *(after - 1);
  }

  std::vector<std::vector<Run>> rows_;
};

bool TakesImages(const QPainter& painter) {
  const QPaintEngine* const engine = painter.paintEngine();
  return engine != nullptr &&
         (engine->type() == QPaintEngine::Pdf || engine->type() == QPaintEngine::SVG);
}

}  // namespace

void PaintCloud(DeviceSpace& space, const SeriesFrame& frame, const QColor& color,
                const std::function<void(DeviceSpace&)>& paint) {
  const QImage image = CloudImage(frame, paint);
  if (image.isNull()) return;
  QPainter& painter = space.Painter();
  const QRectF place = space.Map(frame.clip);
  if (TakesImages(painter)) {
    painter.setRenderHint(QPainter::LosslessImageRendering);
    painter.drawImage(place, image);
    return;
  }
  painter.save();
  painter.translate(place.topLeft());
  painter.scale(place.width() / image.width(), place.height() / image.height());
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawRects(CoveredRows(image).Rectangles());
  painter.restore();
}

}  // namespace tarnwick
