#include "graph/raster/raster_surface.h"

#include <random>
#include <vector>

#include <gtest/gtest.h>
#include <QImage>
#include <QPainter>

namespace tarnwick {
namespace {

constexpr int kSide = 120;

QImage Background(QImage::Format format) {
  QImage image(kSide, kSide, QImage::Format_RGB32);
  std::mt19937 random(3);
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) image.setPixel(x, y, 0xFF000000U | static_cast<QRgb>(random()));
  }
  return image.convertToFormat(format);
}

std::vector<QRect> Rects() {
  std::mt19937 random(4);
  std::uniform_int_distribution<int> place(-20, kSide + 5), extent(1, 25);
  std::vector<QRect> rects;
  for (int i = 0; i < 60; ++i) {
    rects.emplace_back(place(random), place(random), extent(random), extent(random));
  }
  return rects;
}

TEST(RasterSurface, FillsThePixelsThatAPainterFills) {
  const std::vector<QRect> rects = Rects();
  const QRectF clip(10.2, 5.7, 90.4, 100.1);
  for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied}) {
    for (const int alpha : {255, 254, 127, 15, 1}) {
      QImage ours = Background(format), reference = ours;
      QPainter painter(&reference);
      painter.setClipRect(clip);
      painter.setPen(Qt::NoPen);
      painter.setBrush(QColor(200, 30, 99, alpha));
      painter.drawRects(rects.data(), static_cast<int>(rects.size()));
      painter.end();
      QPainter below(&ours);
      auto surface = RasterSurface::Of(below, clip);
      ASSERT_TRUE(surface);
      for (const QRect& rect : rects) surface->Fill(rect, RasterInk(qRgba(200, 30, 99, alpha)));
      below.end();
      EXPECT_EQ(ours, reference) << format << ' ' << alpha;
    }
  }
}

TEST(RasterSurface, LeavesToThePainterWhatOnlyAPainterCanDo) {
  const QRectF clip(0, 0, kSide, kSide);
  const auto surface_of = [&](QImage::Format format, auto prepare) {
    QImage image(kSide, kSide, format);
    QPainter painter(&image);
    prepare(painter);
    return RasterSurface::Of(painter, clip).has_value();
  };
  const auto nothing = [](QPainter&) {};
  EXPECT_TRUE(surface_of(QImage::Format_RGB32, nothing));
  EXPECT_FALSE(surface_of(QImage::Format_RGB888, nothing));
  EXPECT_FALSE(surface_of(QImage::Format_ARGB32, nothing));
  EXPECT_FALSE(surface_of(QImage::Format_RGB32, [](QPainter& p) { p.setOpacity(0.5); }));
  EXPECT_FALSE(surface_of(QImage::Format_RGB32, [](QPainter& p) { p.setClipRect(1, 1, 9, 9); }));
  EXPECT_FALSE(surface_of(QImage::Format_RGB32, [](QPainter& p) {
    p.setCompositionMode(QPainter::CompositionMode_Multiply);
  }));
}

}  // namespace
}  // namespace tarnwick
