#include "graph/palette.h"

#include <array>

namespace tarnwick {

Color PaletteColor(std::size_t index) {
  static constexpr std::array<Color, kPaletteSize> kColors = {
      Color::FromRgb(0x00, 0x5F, 0xA8),  // blue
      Color::FromRgb(0xD0, 0x4E, 0x00),  // vermilion
      Color::FromRgb(0x00, 0x87, 0x62),  // bluish green
      Color::FromRgb(0xB3, 0x4A, 0x87),  // reddish purple
      Color::FromRgb(0xC2, 0x83, 0x00),  // dark orange
      Color::FromRgb(0x2F, 0x9A, 0xD0),  // sky blue
      Color::FromRgb(0x6B, 0x3F, 0x1D),  // brown
      Color::FromRgb(0x40, 0x40, 0x40),  // dark grey
  };
  return kColors[index % kPaletteSize];
}

SymbolShape PaletteSymbol(std::size_t index) {
  static constexpr std::array kShapes = {
      SymbolShape::Circle,       SymbolShape::Square, SymbolShape::Diamond, SymbolShape::TriangleUp,
      SymbolShape::TriangleDown, SymbolShape::Plus,   SymbolShape::Cross,   SymbolShape::Star};
  return kShapes[(index + index / kPaletteSize) % kShapes.size()];
}

}  // namespace tarnwick
