#include "graph/metafile/metafile_records.h"

#include <QImage>
#include <algorithm>

namespace tarnwick {
namespace {

// Functions of records and their settings, by the names of [MS-WMF].
constexpr std::uint16_t kEof = 0x0000, kSaveDc = 0x001E, kRestoreDc = 0x0127;
constexpr std::uint16_t kSetBkMode = 0x0102, kSetMapMode = 0x0103, kSetPolyFillMode = 0x0106;
constexpr std::uint16_t kSetTextAlign = 0x012E, kSetTextColor = 0x0209;
constexpr std::uint16_t kSetWindowOrg = 0x020B, kSetWindowExt = 0x020C, kIntersectClipRect = 0x0416;
constexpr std::uint16_t kSelectObject = 0x012D, kDeleteObject = 0x01F0;
constexpr std::uint16_t kCreatePen = 0x02FA, kCreateFont = 0x02FB, kCreateBrush = 0x02FC;
constexpr std::uint16_t kPolygon = 0x0324, kPolyline = 0x0325, kPolyPolygon = 0x0538;
constexpr std::uint16_t kExtTextOut = 0x0A32, kStretchDib = 0x0F43;
constexpr int kTransparent = 1, kAnisotropic = 8, kAlignTop = 0;
constexpr int kSolidPen = 0, kNullPen = 5, kSolidBrush = 0;
constexpr std::uint32_t kCopySource = 0x00CC0020;

constexpr std::uint32_t kPlaceableKey = 0x9AC6CDD7;
constexpr int kHeaderWords = 9;
constexpr int kVersion = 0x0300;
constexpr std::size_t kWordBytes = 2;
constexpr std::size_t kMostPoints =
    8000;  // of one record; its length is held in 16 bits by some readers
constexpr std::size_t kFaceBytes = 32;

void PutWord(std::string& bytes, int word) {
  bytes += static_cast<char>(word & 0xFF);
  bytes += static_cast<char>((word >> 8) & 0xFF);
}

void PutLong(std::string& bytes, std::uint32_t number) {
  PutWord(bytes, static_cast<int>(number & 0xFFFF));
  PutWord(bytes, static_cast<int>(number >> 16));
}

void PutColor(std::string& bytes, QRgb color) {
  bytes += static_cast<char>(qRed(color));
  bytes += static_cast<char>(qGreen(color));
  bytes += static_cast<char>(qBlue(color));
  bytes += '\0';
}

void PutPoints(std::string& bytes, std::span<const QPoint> points) {
  for (const QPoint& point : points) {
    PutWord(bytes, point.x());
    PutWord(bytes, point.y());
  }
}

void PadToWord(std::string& bytes) {
  if (bytes.size() % kWordBytes != 0) bytes += '\0';
}

/// The image as a bitmap without compression: 24 bits a pixel, lowest row first, rows of whole 32-bit words.
void PutBitmap(std::string& bytes, const QImage& image) {
  constexpr int kInfoBytes = 40, kPlanes = 1, kBits = 24;
  const QImage pixels = image.convertToFormat(QImage::Format_BGR888);
  const auto used = static_cast<std::size_t>(pixels.width()) * 3;
  const std::size_t padding = (4 - used % 4) % 4;
  PutLong(bytes, kInfoBytes);
  PutLong(bytes, static_cast<std::uint32_t>(pixels.width()));
  PutLong(bytes, static_cast<std::uint32_t>(pixels.height()));
  PutWord(bytes, kPlanes);
  PutWord(bytes, kBits);
  PutLong(bytes, 0);  // not compressed
  PutLong(bytes,
          static_cast<std::uint32_t>((used + padding) * static_cast<std::size_t>(pixels.height())));
  bytes.append(4 * sizeof(std::uint32_t), '\0');  // resolution and palette: none
  for (int y = pixels.height() - 1; y >= 0; --y) {
    bytes.append(reinterpret_cast<const char*>(pixels.constScanLine(y)), used);
    bytes.append(padding, '\0');
  }
}

}  // namespace

MetafileRecords::MetafileRecords(QSize extent, int units_per_inch)
    : extent_(extent), units_per_inch_(units_per_inch) {
  Words(kSetMapMode, {kAnisotropic});
  Words(kSetWindowOrg, {0, 0});
  Words(kSetWindowExt, {extent.height(), extent.width()});
  Words(kSetBkMode, {kTransparent});
  Words(kSetTextAlign, {kAlignTop});
}

void MetafileRecords::Record(std::uint16_t function, std::string_view parameters) {
  const std::size_t bytes = sizeof(std::uint32_t) + kWordBytes + parameters.size();
  PutLong(records_, static_cast<std::uint32_t>(bytes / kWordBytes));
  PutWord(records_, function);
  records_ += parameters;
  longest_ = std::max(longest_, bytes);
}

void MetafileRecords::Words(std::uint16_t function, std::initializer_list<int> parameters) {
  std::string bytes;
  for (const int word : parameters) PutWord(bytes, word);
  Record(function, bytes);
}

void MetafileRecords::Use(Object kind, std::uint16_t create, const std::string& description) {
  Chosen& chosen = chosen_[static_cast<std::size_t>(kind)];
  const bool same = chosen.exists && chosen.description == description;
  if (same && chosen.selected) return;
  const Chosen old = chosen;
  if (!same) {
    // A new object gets the lowest free slot, and there is always one more than there are kinds.
    const auto free = std::find(taken_.begin(), taken_.end(), false);
    *free = true;
    chosen.slot = static_cast<std::uint16_t>(free - taken_.begin());
    chosen.description = description;
    chosen.exists = true;
    Record(create, description);
  }
  Words(kSelectObject, {chosen.slot});
  chosen.selected = true;
  if (!same && old.exists) {
    Words(kDeleteObject, {old.slot});
    taken_[old.slot] = false;
  }
}

void MetafileRecords::UsePen(int width, QRgb color) {
  std::string pen;
  PutWord(pen, kSolidPen);
  PutWord(pen, width);
  PutWord(pen, 0);
  PutColor(pen, color);
  Use(Object::Pen, kCreatePen, pen);
}

void MetafileRecords::UseNoPen() {
  std::string pen;
  PutWord(pen, kNullPen);
  PutLong(pen, 0);
  PutLong(pen, 0);
  Use(Object::Pen, kCreatePen, pen);
}

void MetafileRecords::UseBrush(QRgb color) {
  std::string brush;
  PutWord(brush, kSolidBrush);
  PutColor(brush, color);
  PutWord(brush, 0);
  Use(Object::Brush, kCreateBrush, brush);
}

void MetafileRecords::UseFont(const MetafileFont& font) {
  constexpr int kNormal = 400, kBold = 700;
  std::string bytes;
  PutWord(bytes, -font.height);  // negative: of the em square, not of the line
  PutWord(bytes, 0);             // width: the usual one
  PutWord(bytes, font.angle);
  PutWord(bytes, font.angle);
  PutWord(bytes, font.bold ? kBold : kNormal);
  for (const bool flag : {font.italic, font.underline, font.strike_out}) {
    bytes += static_cast<char>(flag);
  }
  bytes.append(5, '\0');  // Windows-1252; default precision, quality and pitch
  std::string face = font.family.substr(0, kFaceBytes - 1);
  face.resize(kFaceBytes, '\0');
  Use(Object::Font, kCreateFont, bytes + face);
}

void MetafileRecords::Clip(const QRect& area) {
  // Clip areas only ever shrink: going back to the state before the first one undoes them.
  if (saved_) Words(kRestoreDc, {-1});
  saved_ = true;
  for (Chosen& chosen : chosen_) chosen.selected = false;
  fill_.reset();
  text_color_.reset();
  Words(kSaveDc, {});
  Words(kIntersectClipRect,
        {area.top() + area.height(), area.left() + area.width(), area.top(), area.left()});
}

void MetafileRecords::PolylinePiece(std::span<const QPoint> points) {
  std::string bytes;
  PutWord(bytes, static_cast<int>(points.size()));
  PutPoints(bytes, points);
  Record(kPolyline, bytes);
}

void MetafileRecords::Polyline(std::span<const QPoint> points, int width, QRgb color) {
  UsePen(width, color);
  while (points.size() > 1) {
    const std::size_t count = std::min(points.size(), kMostPoints);
    PolylinePiece(points.first(count));
    points = points.subspan(count - 1);
  }
}

void MetafileRecords::Polygons(std::span<const std::vector<QPoint>> polygons, MetafileFill fill,
                               QRgb color) {
  if (polygons.empty()) return;
  UseNoPen();
  UseBrush(color);
  if (fill_ != fill) Words(kSetPolyFillMode, {static_cast<int>(fill)});
  fill_ = fill;
  std::string bytes;
  const bool several = polygons.size() > 1;
  if (several) PutWord(bytes, static_cast<int>(polygons.size()));
  for (const auto& polygon : polygons) PutWord(bytes, static_cast<int>(polygon.size()));
  for (const auto& polygon : polygons) PutPoints(bytes, polygon);
  Record(several ? kPolyPolygon : kPolygon, bytes);
}

void MetafileRecords::Text(QPoint corner, std::string_view text, std::span<const int> advances,
                           const MetafileFont& font, QRgb color) {
  UseFont(font);
  if (text_color_ != color) {
    std::string bytes;
    PutColor(bytes, color);
    Record(kSetTextColor, bytes);
  }
  text_color_ = color;
  std::string bytes;
  PutWord(bytes, corner.y());
  PutWord(bytes, corner.x());
  PutWord(bytes, static_cast<int>(text.size()));
  PutWord(bytes, 0);  // no rectangle
  bytes += text;
  PadToWord(bytes);
  for (const int advance : advances) PutWord(bytes, advance);
  Record(kExtTextOut, bytes);
}

void MetafileRecords::Image(const QRect& target, const QImage& image) {
  std::string bytes;
  PutLong(bytes, kCopySource);
  for (const int word : {0, image.height(), image.width(), 0, 0, target.height(), target.width(),
                         target.top(), target.left()}) {
    PutWord(bytes, word);
  }
  PutBitmap(bytes, image);
  PadToWord(bytes);
  Record(kStretchDib, bytes);
}

std::string MetafileRecords::File() const {
  std::string placeable;
  PutLong(placeable, kPlaceableKey);
  for (const int word : {0, 0, 0, extent_.width(), extent_.height(), units_per_inch_, 0, 0}) {
    PutWord(placeable, word);
  }
  int checksum = 0;
  for (std::size_t i = 0; i < placeable.size(); i += kWordBytes) {
    checksum ^= static_cast<unsigned char>(placeable[i]) |
                static_cast<unsigned char>(placeable[i + 1]) << 8;
  }
  PutWord(placeable, checksum);

  std::string end;
  PutLong(end, 3);
  PutWord(end, kEof);
  std::string header;
  PutWord(header, 1);
  PutWord(header, kHeaderWords);
  PutWord(header, kVersion);
  PutLong(header, static_cast<std::uint32_t>(kHeaderWords + (records_.size() + end.size()) / 2));
  PutWord(header, kSlots);
  PutLong(header, static_cast<std::uint32_t>(std::max(longest_, end.size()) / kWordBytes));
  PutWord(header, 0);
  return placeable + header + records_ + end;
}

}  // namespace tarnwick
