#include "graph/gif/color_palette.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace tarnwick {
namespace {

constexpr std::size_t kMostColors = 256;
constexpr int kHalfOpaque = 128;
constexpr QRgb kTransparent = 0;  // stands for every pixel that is less than half opaque

struct Counted {
  QRgb color;
  std::uint64_t pixels;
};

using Histogram = std::unordered_map<QRgb, std::uint64_t>;

QRgb Opaque(QRgb color) {
  return qAlpha(color) < kHalfOpaque ? kTransparent : color | 0xFF000000U;
}

Histogram ColorsOf(const QImage& image) {
  Histogram colors;
  for (int y = 0; y < image.height(); ++y) {
    const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width();) {
      int end = x + 1;
      while (end < image.width() && row[end] == row[x]) ++end;
      colors[Opaque(row[x])] += static_cast<std::uint64_t>(end - x);
      x = end;
    }
  }
  return colors;
}

constexpr std::array kParts = {0, 1, 2};

int Part(QRgb color, int which) {
  return which == 0 ? qRed(color) : which == 1 ? qGreen(color) : qBlue(color);
}

/// Colours that will share one entry of the table.
struct Box {
  std::vector<Counted> colors;
  int longest = 0;  // red, green or blue: where the colours lie furthest apart
  std::uint64_t weight = 0;

  explicit Box(std::vector<Counted> held) : colors(std::move(held)) {
    std::array<int, 3> extents;
    std::ranges::transform(kParts, extents.begin(), [&](int which) {
      const auto part = [&](const Counted& counted) { return Part(counted.color, which); };
      const auto [low, high] = std::ranges::minmax_element(colors, {}, part);
      return part(*high) - part(*low);
    });
    longest = static_cast<int>(std::ranges::max_element(extents) - extents.begin());
    std::uint64_t pixels = 0;
    for (const Counted& counted : colors) pixels += counted.pixels;
    weight = pixels * static_cast<std::uint64_t>(std::ranges::max(extents));
  }

  /// Takes the upper half of the pixels out.
  Box SplitOff() {
    std::sort(colors.begin(), colors.end(), [&](const Counted& a, const Counted& b) {
      return Part(a.color, longest) < Part(b.color, longest);
    });
    std::uint64_t all = 0;
    for (const Counted& counted : colors) all += counted.pixels;
    std::uint64_t passed = 0;
    std::size_t cut = 0;
    while (cut + 1 < colors.size() && passed + colors[cut].pixels <= all / 2) {
      passed += colors[cut++].pixels;
    }
    cut = std::clamp<std::size_t>(cut, 1, colors.size() - 1);
    const auto middle = colors.begin() + static_cast<std::ptrdiff_t>(cut);
    std::vector<Counted> upper(middle, colors.end());
    *this = Box(std::vector<Counted>(colors.begin(), middle));
    return Box(std::move(upper));
  }

  QRgb Mean() const {
    std::array<std::uint64_t, 3> sums{};
    std::uint64_t pixels = 0;
    for (const Counted& counted : colors) {
      for (const int which : kParts) {
        sums[static_cast<std::size_t>(which)] +=
            counted.pixels * static_cast<std::uint64_t>(Part(counted.color, which));
      }
      pixels += counted.pixels;
    }
    const auto part = [&](std::size_t which) {
      return static_cast<int>((sums[which] + pixels / 2) / pixels);
    };
    return qRgb(part(0), part(1), part(2));
  }
};

std::vector<Box> MedianCut(std::vector<Counted> colors, std::size_t count) {
  std::vector<Box> boxes;
  boxes.emplace_back(std::move(colors));
  while (boxes.size() < count) {
    const auto widest = std::max_element(
        boxes.begin(), boxes.end(), [](const Box& a, const Box& b) { return a.weight < b.weight; });
    if (widest->colors.size() < 2) break;
    Box upper = widest->SplitOff();
    boxes.push_back(std::move(upper));
  }
  return boxes;
}

/// What becomes of each colour, and the table.
struct Palette {
  std::unordered_map<QRgb, uchar> numbers;
  QList<QRgb> table;

  explicit Palette(Histogram histogram) {
    const bool transparent = histogram.erase(kTransparent) != 0;
    std::vector<Counted> colors;
    for (const auto& [color, pixels] : histogram) colors.push_back({color, pixels});
    // The order of a hash table is nobody's: equal pictures are to give equal files.
    std::sort(colors.begin(), colors.end(),
              [](const Counted& a, const Counted& b) { return a.color < b.color; });
    if (transparent) Add({{kTransparent, 1}}, kTransparent);
    const std::size_t room = kMostColors - (transparent ? 1 : 0);
    if (colors.size() <= room) {
      for (const Counted& counted : colors) Add({counted}, counted.color);
    } else {
      for (const Box& box : MedianCut(std::move(colors), room)) Add(box.colors, box.Mean());
    }
  }
  void Add(const std::vector<Counted>& colors, QRgb entry) {
    for (const Counted& counted : colors) {
      numbers[counted.color] = static_cast<uchar>(table.size());
    }
    table.append(entry);
  }
};

}  // namespace

QImage WithFewColors(const QImage& image) {
  if (image.isNull()) return {};
  const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
  const Palette palette(ColorsOf(pixels));
  QImage few(pixels.size(), QImage::Format_Indexed8);
  if (few.isNull()) return {};
  few.setColorTable(palette.table);
  for (int y = 0; y < pixels.height(); ++y) {
    const auto* const from = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
    uchar* const to = few.scanLine(y);
    for (int x = 0; x < pixels.width(); ++x) {
      to[x] = x > 0 && from[x] == from[x - 1] ? to[x - 1] : palette.numbers.at(Opaque(from[x]));
    }
  }
  return few;
}

}  // namespace tarnwick
