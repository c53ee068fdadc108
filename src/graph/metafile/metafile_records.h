// The records of a placeable Windows metafile, one after another: header, objects, drawing. Knows bytes and whole logical units;
// neither painters nor pens of Qt.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <QPoint>
#include <QRect>
#include <QRgb>

class QImage;

namespace tarnwick {

struct MetafileFont {
  std::string family;  ///< Windows-1252, at most 31 bytes count
  int height = 0;      ///< of the em square, in logical units
  int angle = 0;       ///< counterclockwise, in tenths of a degree
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strike_out = false;
};

enum class MetafileFill : std::uint16_t { Alternate = 1, Winding = 2 };

/// Writes records as [MS-WMF] describes them. Coordinates are logical units with the origin at the upper left and must lie within
/// -32768 to 32767; colours are opaque.
class MetafileRecords {
 public:
  /// A picture of `extent` units, each side at most 32767.
  MetafileRecords(QSize extent, int units_per_inch);

  /// Nothing is drawn outside the rectangle from here on.
  void Clip(const QRect& area);
  /// A solid line with round ends; long ones are written in pieces.
  void Polyline(std::span<const QPoint> points, int width, QRgb color);
  /// Closed polygons filled as one area, without an outline.
  void Polygons(std::span<const std::vector<QPoint>> polygons, MetafileFill fill, QRgb color);
  /// Windows-1252 text whose letters' upper left corner, before it is turned, is `corner`: not every reader minds another
  /// alignment. `advances` holds each letter's width, so that another font in the named one's place takes the same room.
  void Text(QPoint corner, std::string_view text, std::span<const int> advances,
            const MetafileFont& font, QRgb color);
  /// The image, its sides at most 32767, stretched over `target`.
  void Image(const QRect& target, const QImage& image);

  /// The whole file.
  std::string File() const;

 private:
  enum class Object : std::size_t { Pen, Brush, Font };
  // One object of each kind exists at a time: a new one is created, selected, and only then the old one deleted.
  struct Chosen {
    std::string description;
    std::uint16_t slot = 0;
    bool exists = false;
    bool selected = false;
  };
  static constexpr std::size_t kKinds = 3;
  static constexpr std::uint16_t kSlots = kKinds + 1;

  void Record(std::uint16_t function, std::string_view parameters);
  void Words(std::uint16_t function, std::initializer_list<int> parameters);
  void Use(Object kind, std::uint16_t create, const std::string& description);
  void UsePen(int width, QRgb color);
  void UseNoPen();
  void UseBrush(QRgb color);
  void UseFont(const MetafileFont& font);
  void PolylinePiece(std::span<const QPoint> points);

  QSize extent_;
  int units_per_inch_;
  std::string records_;
  std::size_t longest_ = 0;  // bytes of the longest record
  std::array<Chosen, kKinds> chosen_;
  std::array<bool, kSlots> taken_{};
  std::optional<MetafileFill> fill_;
  std::optional<QRgb> text_color_;
  bool saved_ = false;
};

}  // namespace tarnwick
