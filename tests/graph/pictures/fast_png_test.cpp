#include "graph/pictures/fast_png.h"

#include <gtest/gtest.h>

#include <QImage>

namespace tarnwick {
namespace {

TEST(FastPng, ImagesOfEveryFormatComeBackAsTheyWere) {
  for (const int colors : {3, 200, 5000}) {
    QImage image(97, 61, QImage::Format_ARGB32);
    for (int i = 0; i < 97 * 61; ++i) {
      const auto part = static_cast<unsigned>(i * 7 % colors);
      image.setPixel(i % 97, i / 97, qRgba(part & 0xFF, part >> 8, 90, i % 3 == 0 ? 128 : 255));
    }
    image.setDotsPerMeterX(4000);
    for (const QImage::Format format :
         {QImage::Format_ARGB32, QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied,
          QImage::Format_RGB888, QImage::Format_Grayscale8}) {
      const QImage given = image.convertToFormat(format);
      const QImage back = QImage::fromData(QByteArray::fromStdString(EncodePng(given)));
      EXPECT_EQ(back.convertToFormat(QImage::Format_ARGB32),
                given.convertToFormat(QImage::Format_ARGB32))
          << format << ", " << colors;
      EXPECT_EQ(back.dotsPerMeterX(), 4000);
    }
  }
}

}  // namespace
}  // namespace tarnwick
