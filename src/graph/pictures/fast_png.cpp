#include "graph/pictures/fast_png.h"

#include <array>
#include <optional>

#include <QBuffer>
#include <QImage>
#include <QImageWriter>

#include "base/error.h"

namespace tarnwick {

namespace {

// The scale of QImageWriter runs to 100, of which 11 is the compressor's level 1.
constexpr int kLightCompression = 11;

// Numbers the colours of a picture in the order met, up to 256 of them.
class ColorTable {
 public:
  // The colour's number; nothing when there are too many colours.
  std::optional<uchar> NumberOf(QRgb color) {
    std::size_t slot = (color * 2654435761u) >> (32 - kBits);
    while (used_[slot]) {
      if (keys_[slot] == color) return numbers_[slot];
      slot = (slot + 1) % kSlots;
    }
    if (colors_.size() == 256) return std::nullopt;
    used_[slot] = true;
    keys_[slot] = color;
    numbers_[slot] = static_cast<uchar>(colors_.size());
    colors_.append(color);
    return numbers_[slot];
  }
  const QList<QRgb>& Colors() const { return colors_; }

 private:
  static constexpr unsigned kBits = 10;
  static constexpr std::size_t kSlots = std::size_t{1} << kBits;
  std::array<bool, kSlots> used_{};
  std::array<QRgb, kSlots> keys_{};
  std::array<uchar, kSlots> numbers_{};
  QList<QRgb> colors_;
};

// The picture with a colour table; a null image when it has more than 256 colours. `image` has 32 bits a pixel.
QImage WithPalette(const QImage& image) {
  QImage indexed(image.size(), QImage::Format_Indexed8);
  if (indexed.isNull()) return {};
  ColorTable table;
  const QRgb opaque = image.hasAlphaChannel() ? 0 : 0xFF000000u;
  QRgb previous = 0;
  std::optional<uchar> number;
  for (int y = 0; y < image.height(); ++y) {
    const auto* const from = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    uchar* const to = indexed.scanLine(y);
    for (int x = 0; x < image.width(); ++x) {
      const QRgb color = from[x] | opaque;
      if (!number || color != previous) {
        number = table.NumberOf(color);
        if (!number) return {};
        previous = color;
      }
      to[x] = *number;
    }
  }
  indexed.setColorTable(table.Colors());
  return indexed;
}

}  // namespace

std::string EncodePng(const QImage& image) {
  QImage picture = image;
  const QImage::Format format =
      image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32;
  if (image.format() != format) picture = image.convertToFormat(format);
  const QImage indexed = picture.isNull() ? QImage() : WithPalette(picture);
  if (!indexed.isNull()) picture = indexed;
  picture.setDotsPerMeterX(image.dotsPerMeterX());
  picture.setDotsPerMeterY(image.dotsPerMeterY());

  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, "png");
  writer.setCompression(kLightCompression);
  if (!writer.write(picture)) throw Error("Can not write the picture");
  return bytes.toStdString();
}

}  // namespace tarnwick
