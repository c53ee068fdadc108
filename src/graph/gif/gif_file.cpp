#include "graph/gif/gif_file.h"

#include <gif_lib.h>

#include <QIODevice>
#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "graph/gif/color_palette.h"

namespace tarnwick {
namespace {

constexpr std::int64_t kMostPixels = std::int64_t{1} << 26;
constexpr int kLongestSide = 0xFFFF;

int FromDevice(GifFileType* gif, GifByteType* bytes, int count) {
  auto* const device = static_cast<QIODevice*>(gif->UserData);
  return static_cast<int>(device->read(reinterpret_cast<char*>(bytes), count));
}

int ToDevice(GifFileType* gif, const GifByteType* bytes, int count) {
  auto* const device = static_cast<QIODevice*>(gif->UserData);
  return static_cast<int>(device->write(reinterpret_cast<const char*>(bytes), count));
}

QString Reason(int code) {
  const char* const text = GifErrorString(code);
  return text ? QString::fromLatin1(text) : QStringLiteral("not a GIF picture");
}

struct ClosesReading {
  void operator()(GifFileType* gif) const { DGifCloseFile(gif, nullptr); }
};
struct ClosesWriting {
  void operator()(GifFileType* gif) const { EGifCloseFile(gif, nullptr); }
};
struct FreesMap {
  void operator()(ColorMapObject* map) const { GifFreeMapObject(map); }
};

/// One file being read, up to its first picture.
class Reading {
 public:
  explicit Reading(QIODevice& device) {
    int code = 0;
    gif_.reset(DGifOpen(&device, &FromDevice, &code));
    if (!gif_) error_ = Reason(code);
  }

  GifPicture FirstPicture() {
    bool found = false;
    while (error_.isEmpty() && !found) {
      GifRecordType type = UNDEFINED_RECORD_TYPE;
      if (!Good(DGifGetRecordType(gif_.get(), &type))) break;
      if (type == TERMINATE_RECORD_TYPE) Fail("there is no picture in it");
      if (type == EXTENSION_RECORD_TYPE) ReadExtension();
      if (type == IMAGE_DESC_RECORD_TYPE) found = ReadImage();
    }
    return error_.isEmpty() ? GifPicture{canvas_, {}} : GifPicture{{}, error_};
  }

 private:
  bool Good(int answer) {
    if (answer == GIF_OK) return true;
    error_ = Reason(gif_->Error);
    return false;
  }
  bool Fail(const char* reason) {
    error_ = QString::fromLatin1(reason);
    return false;
  }

  void ReadExtension() {
    int code = 0;
    GifByteType* block = nullptr;
    if (!Good(DGifGetExtension(gif_.get(), &code, &block))) return;
    while (block && error_.isEmpty()) {
      GraphicsControlBlock control{};
      if (code == GRAPHICS_EXT_FUNC_CODE &&
          DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK) {
        transparent_ = control.TransparentColor;
      }
      Good(DGifGetExtensionNext(gif_.get(), &block));
    }
  }

  bool ReadImage() {
    if (!Good(DGifGetImageDesc(gif_.get()))) return false;
    const GifImageDesc& part = gif_->Image;
    const QSize size(std::max(gif_->SWidth, part.Left + part.Width),
                     std::max(gif_->SHeight, part.Top + part.Height));
    if (part.Width < 1 || part.Height < 1) return Fail("its picture has no pixels");
    if (std::int64_t{size.width()} * size.height() > kMostPixels) return Fail("it is too large");
    const ColorMapObject* const map = part.ColorMap ? part.ColorMap : gif_->SColorMap;
    if (!map) return Fail("its colours are missing");
    canvas_ = QImage(size, QImage::Format_ARGB32);
    if (canvas_.isNull()) return Fail("not enough memory");
    canvas_.fill(Qt::transparent);
    TakeColors(*map);
    return part.Interlace ? ReadInterlaced() : ReadRows(0, 1);
  }

  void TakeColors(const ColorMapObject& map) {
    colors_.fill(0);
    for (std::size_t i = 0; i < static_cast<std::size_t>(map.ColorCount) && i < colors_.size(); ++i)
      colors_[i] = qRgb(map.Colors[i].Red, map.Colors[i].Green, map.Colors[i].Blue);
    if (transparent_ >= 0) colors_[static_cast<std::size_t>(transparent_) & 0xFF] = 0;
  }

  bool ReadRows(int first, int step) {
    const GifImageDesc& part = gif_->Image;
    std::vector<GifByteType> line(static_cast<std::size_t>(part.Width));
    for (int y = first; y < part.Height; y += step) {
      if (!Good(DGifGetLine(gif_.get(), line.data(), part.Width))) return false;
      auto* const row = reinterpret_cast<QRgb*>(canvas_.scanLine(part.Top + y)) + part.Left;
      std::transform(line.begin(), line.end(), row,
                     [&](GifByteType number) { return colors_[number]; });
    }
    return true;
  }

  /// Every eighth row, those between, and so on.
  bool ReadInterlaced() {
    return ReadRows(0, 8) && ReadRows(4, 8) && ReadRows(2, 4) && ReadRows(1, 2);
  }

  std::unique_ptr<GifFileType, ClosesReading> gif_;
  QString error_;
  QImage canvas_;
  std::array<QRgb, 256> colors_{};
  int transparent_ = NO_TRANSPARENT_COLOR;
};

/// The table, filled up to the power of two that the format wants.
std::unique_ptr<ColorMapObject, FreesMap> MapOf(const QList<QRgb>& colors) {
  int size = 2;
  while (size < colors.size()) size *= 2;
  std::vector<GifColorType> entries(static_cast<std::size_t>(size));
  for (qsizetype i = 0; i < colors.size(); ++i) {
    const QRgb color = colors[i];
    entries[static_cast<std::size_t>(i)] = {static_cast<GifByteType>(qRed(color)),
                                            static_cast<GifByteType>(qGreen(color)),
                                            static_cast<GifByteType>(qBlue(color))};
  }
  return std::unique_ptr<ColorMapObject, FreesMap>(GifMakeMapObject(size, entries.data()));
}

bool PutTransparent(GifFileType* gif, int number) {
  GraphicsControlBlock control{};
  control.TransparentColor = number;
  std::array<GifByteType, 4> bytes{};
  const auto length = EGifGCBToExtension(&control, bytes.data());
  return EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, static_cast<int>(length), bytes.data()) ==
         GIF_OK;
}

bool PutPicture(GifFileType* gif, const QImage& picture) {
  const auto map = MapOf(picture.colorTable());
  if (!map) return false;
  EGifSetGifVersion(gif, true);
  const int width = picture.width();
  const int height = picture.height();
  if (EGifPutScreenDesc(gif, width, height, map->BitsPerPixel, 0, map.get()) != GIF_OK)
    return false;
  const QList<QRgb> colors = picture.colorTable();
  const auto clear =
      std::find_if(colors.begin(), colors.end(), [](QRgb color) { return qAlpha(color) == 0; });
  if (clear != colors.end() && !PutTransparent(gif, static_cast<int>(clear - colors.begin()))) {
    return false;
  }
  if (EGifPutImageDesc(gif, 0, 0, width, height, false, nullptr) != GIF_OK) return false;
  for (int y = 0; y < height; ++y) {
    // giflib takes the line without const but leaves it alone.
    std::vector<GifByteType> line(picture.constScanLine(y), picture.constScanLine(y) + width);
    if (EGifPutLine(gif, line.data(), width) != GIF_OK) return false;
  }
  return true;
}

}  // namespace

bool IsGif(QIODevice& device) {
  const QByteArray start = device.peek(6);
  return start == "GIF87a" || start == "GIF89a";
}

GifPicture ReadGif(QIODevice& device) {
  return Reading(device).FirstPicture();
}

QString WriteGif(QIODevice& device, const QImage& image) {
  if (image.isNull()) return QStringLiteral("there is no picture");
  if (std::max(image.width(), image.height()) > kLongestSide)
    return QStringLiteral("it is too large");
  const QImage picture = WithFewColors(image);
  if (picture.isNull()) return QStringLiteral("not enough memory");
  int code = 0;
  std::unique_ptr<GifFileType, ClosesWriting> gif(EGifOpen(&device, &ToDevice, &code));
  if (!gif) return Reason(code);
  if (!PutPicture(gif.get(), picture)) return Reason(gif->Error);
  return EGifCloseFile(gif.release(), &code) == GIF_OK ? QString() : Reason(code);
}

}  // namespace tarnwick
