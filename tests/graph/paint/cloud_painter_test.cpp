#include "graph/paint/cloud_painter.h"

#include <vector>

#include <gtest/gtest.h>
#include <QImage>
#include <QPainter>
#include <QPicture>

namespace tarnwick {
namespace {

constexpr QSize kSize(40, 30);

QImage Blank(int dots_per_pixel) {
  QImage image(kSize * dots_per_pixel, QImage::Format_Grayscale8);
  image.fill(Qt::white);
  return image;
}

void Fill(QPainter& painter, const std::vector<QRectF>& areas) {
  for (const QRectF& area : areas) painter.fillRect(area, Qt::black);
}

// What a device that takes no images holds of a cloud made of the areas, drawn with that many dots to a pixel.
QImage Replayed(const std::vector<QRectF>& areas, int dots_per_pixel) {
  SeriesFrame frame;
  frame.plot = frame.clip = QRectF(QPointF(), QSizeF(kSize));
  QPicture picture;
  {
    QPainter painter(&picture);
    DeviceSpace space(painter, frame);
    PaintCloud(space, frame, Qt::black, [&](DeviceSpace& dots) {
      std::vector<QRectF> mapped;
      for (const QRectF& area : areas) mapped.push_back(dots.Map(area));
      Fill(dots.Painter(), mapped);
    });
  }
  QImage image = Blank(dots_per_pixel);
  QPainter painter(&image);
  painter.scale(dots_per_pixel, dots_per_pixel);
  painter.drawPicture(0, 0, picture);
  return image;
}

TEST(PaintCloud, RectanglesCoverWhatWasPaintedAndHardlyMore) {
  const struct {
    const char* what;
    std::vector<QRectF> areas;
  } rows[] = {
      {"within", {{5, 5, 7, 9}}},
      {"from edge to edge", {{0, 0, 40, 30}}},
      {"at the upper edge", {{3, 0, 9, 4}, {20, 0, 1, 1}}},
      {"at the lower edge", {{3, 26, 9, 4}, {20, 29, 1, 1}}},
      {"side by side", {{0, 10, 4, 4}, {8, 8, 4, 8}, {36, 10, 4, 4}}},
      {"steps", {{0, 0, 5, 30}, {5, 4, 5, 22}, {10, 8, 5, 14}, {15, 12, 5, 6}, {20, 14, 20, 2}}},
      {"wider below", {{18, 2, 2, 6}, {10, 8, 20, 6}, {2, 14, 36, 9}}},
  };
  for (const auto& row : rows) {
    constexpr int kFine = 9;  // three to a dot of the cloud
    QImage expected = Blank(kFine);
    QPainter painter(&expected);
    painter.scale(kFine, kFine);
    Fill(painter, row.areas);
    painter.end();
    const QImage drawn = Replayed(row.areas, kFine);
    const auto any_near = [&](int x, int y) {  // rectangles overlap by half a dot
      for (const int by : {-2, 0, 2}) {
        const QPoint place(x, y + by);
        if (expected.valid(place) && qGray(expected.pixel(place)) == 0) return true;
      }
      return false;
    };
    int missing = 0, beyond = 0;
    for (int y = 0; y < drawn.height(); ++y) {
      for (int x = 0; x < drawn.width(); ++x) {
        const bool dark = qGray(drawn.pixel(x, y)) < 128;
        missing += qGray(expected.pixel(x, y)) == 0 && !dark ? 1 : 0;
        beyond += dark && !any_near(x, y) ? 1 : 0;
      }
    }
    EXPECT_EQ(missing, 0) << row.what;
    EXPECT_EQ(beyond, 0) << row.what;
  }
}

}  // namespace
}  // namespace tarnwick
