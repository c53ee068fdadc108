#include "graph/gif/gif_file.h"

#include <gif_lib.h>
#include <gtest/gtest.h>

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>

#include "graph/gif/gif_format.h"

namespace tarnwick {
namespace {

QByteArray Written(const QImage& image) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  EXPECT_EQ(WriteGif(buffer, image), QString());
  return buffer.data();
}

GifPicture Read(QByteArray bytes) {
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  return ReadGif(buffer);
}

/// Few or many colours; the upper left corner is clear.
QImage Sample(int width, int height, int step) {
  QImage image(width, height, QImage::Format_ARGB32);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      image.setPixel(x, y, qRgb(x * step % 256, y * step % 256, (x + y) % 2));
  image.setPixel(0, 0, qRgba(9, 9, 9, 0));
  return image;
}

TEST(Gif, FewColoursComeBackExactlyAndManyNearly) {
  const QImage few = Sample(70, 40, 32);
  const GifPicture same = Read(Written(few));
  ASSERT_TRUE(same.error.isEmpty()) << same.error.toStdString();
  EXPECT_EQ(qAlpha(same.image.pixel(0, 0)), 0);
  EXPECT_EQ(same.image.copy(1, 0, 69, 40), few.copy(1, 0, 69, 40));

  const QImage many = Sample(200, 150, 1);
  const QImage near = Read(Written(many)).image;
  ASSERT_EQ(near.size(), many.size());
  int worst = 0;
  for (int y = 0; y < many.height(); ++y)
    for (int x = 1; x < many.width(); ++x)
      worst = std::max(worst, std::abs(qRed(near.pixel(x, y)) - qRed(many.pixel(x, y))));
  EXPECT_LE(worst, 16);
}

int Append(GifFileType* gif, const GifByteType* bytes, int count) {
  static_cast<QByteArray*>(gif->UserData)->append(reinterpret_cast<const char*>(bytes), count);
  return count;
}

TEST(Gif, InterlacedRowsFindTheirPlaces) {
  QByteArray bytes;
  GifFileType* const gif = EGifOpen(&bytes, &Append, nullptr);
  ColorMapObject* const map = GifMakeMapObject(16, nullptr);
  for (int i = 0; i < 16; ++i) map->Colors[i] = {static_cast<GifByteType>(i * 10), 0, 0};
  EGifPutScreenDesc(gif, 3, 13, 4, 0, map);
  EGifPutImageDesc(gif, 0, 0, 3, 13, true, nullptr);
  for (const auto& [first, step] : {std::pair(0, 8), {4, 8}, {2, 4}, {1, 2}}) {
    for (int y = first; y < 13; y += step) {
      GifByteType line[] = {GifByteType(y), GifByteType(y), GifByteType(y)};
      EGifPutLine(gif, line, 3);
    }
  }
  GifFreeMapObject(map);
  EGifCloseFile(gif, nullptr);
  const QImage image = Read(bytes).image;
  ASSERT_EQ(image.size(), QSize(3, 13));
  for (int y = 0; y < 13; ++y) EXPECT_EQ(qRed(image.pixel(2, y)), y * 10);
}

// A part of its own place, with colours of its own, within a larger screen or beyond it.
TEST(Gif, APartStandsWhereItsFileSays) {
  for (const auto& [left, top] : {std::pair(0, 0), {2, 0}, {0, 3}, {4, 5}}) {
    QByteArray bytes;
    GifFileType* const gif = EGifOpen(&bytes, &Append, nullptr);
    ColorMapObject* const map = GifMakeMapObject(4, nullptr);
    ColorMapObject* const own = GifMakeMapObject(4, nullptr);
    for (int i = 0; i < 4; ++i) {
      map->Colors[i] = {1, 2, 3};
      own->Colors[i] = {static_cast<GifByteType>(i * 50), 7, 9};
    }
    EGifPutScreenDesc(gif, 6, 5, 2, 0, map);
    EGifPutImageDesc(gif, left, top, 3, 2, false, own);
    for (const int first : {0, 1}) {
      GifByteType line[] = {GifByteType(first), GifByteType(first + 1), GifByteType(first + 2)};
      EGifPutLine(gif, line, 3);
    }
    EGifCloseFile(gif, nullptr);
    GifFreeMapObject(map);
    GifFreeMapObject(own);
    const GifPicture picture = Read(bytes);
    ASSERT_TRUE(picture.error.isEmpty()) << picture.error.toStdString();
    EXPECT_EQ(picture.image.size(), QSize(std::max(6, left + 3), std::max(5, top + 2)));
    for (int y = 0; y < picture.image.height(); ++y) {
      for (int x = 0; x < picture.image.width(); ++x) {
        const bool within = x >= left && x < left + 3 && y >= top && y < top + 2;
        EXPECT_EQ(picture.image.pixel(x, y),
                  within ? qRgb(50 * (x - left + y - top), 7, 9) : qRgba(0, 0, 0, 0))
            << x << ',' << y << " from " << left << ',' << top;
      }
    }
  }
}

TEST(Gif, DamagedFilesAreRefusedOrStayPictures) {
  const QByteArray good = Written(Sample(40, 30, 7));
  for (qsizetype length = 0; length < good.size() - 3; ++length) {
    EXPECT_FALSE(Read(good.first(length)).error.isEmpty()) << "cut off after " << length;
  }
  for (qsizetype at = 0; at < good.size(); ++at) {
    for (const int damage : {0x01, 0x80, 0xFF}) {
      QByteArray bad = good;
      bad[at] = static_cast<char>(bad[at] ^ damage);
      const GifPicture picture = Read(bad);
      EXPECT_NE(picture.image.isNull(), picture.error.isEmpty()) << at;
    }
  }
  EXPECT_FALSE(Read("GIF89a").error.isEmpty());
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  EXPECT_NE(WriteGif(buffer, QImage()), QString());
}

TEST(Gif, IsAPictureFormatOnceRegistered) {
  RegisterGifFormat();
  RegisterGifFormat();
  EXPECT_EQ(QImageWriter::supportedImageFormats().count("gif"), 1);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImage image = Sample(20, 20, 32);
  ASSERT_TRUE(image.save(&buffer, "gif"));
  QImage back;
  ASSERT_TRUE(back.loadFromData(bytes));
  EXPECT_EQ(back.pixel(5, 7), image.pixel(5, 7));
}

}  // namespace
}  // namespace tarnwick
