#include "cli/options/size_option.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "base/number_text.h"
#include "cli/options/command.h"
#include "graph/pictures/picture_export.h"

namespace tarnwick::cli {
namespace {

constexpr int kLargestSide = 30000;
constexpr std::string_view kMillimetres = "mm";

/// One side as typed: whole pixels, or positive millimetres.
std::optional<double> SideOf(std::string_view text, bool metric) {
  if (!metric) return ParseInteger(text);
  const std::optional<double> millimetres = ParseNumber(text);
  return millimetres && *millimetres > 0 ? millimetres : std::nullopt;
}

}  // namespace

PictureSize ParseSize(const std::string& text, int dpi) {
  std::string_view sides = text;
  const bool metric = sides.ends_with(kMillimetres);
  if (metric) sides.remove_suffix(kMillimetres.size());
  const std::size_t cross = sides.find_first_of("xX");
  if (cross != std::string_view::npos) {
    const std::optional<double> width = SideOf(sides.substr(0, cross), metric);
    const std::optional<double> height = SideOf(sides.substr(cross + 1), metric);
    if (width && height) {
      const auto pixels = [&](double side) {
        return metric ? WholePixels(side, dpi) : static_cast<int>(side);
      };
      const PictureSize size{pixels(*width), pixels(*height),
                             metric ? QSizeF(*width, *height) : QSizeF()};
      if (std::min(size.width, size.height) > 0 &&
          std::max(size.width, size.height) <= kLargestSide) {
        return size;
      }
    }
  }
  throw UsageError("\"" + text + "\" is no size; WxH in pixels or WxHmm in millimetres is, 1 to " +
                   std::to_string(kLargestSide) + " pixels");
}

std::pair<double, double> ParsePair(const std::string& text) {
  const std::size_t comma = text.find(',');
  if (comma != std::string::npos) {
    const std::optional<double> x = ParseNumber(text.substr(0, comma));
    const std::optional<double> y = ParseNumber(text.substr(comma + 1));
    if (x && y) return {*x, *y};
  }
  throw UsageError("\"" + text + "\" is no pair of numbers X,Y");
}

}  // namespace tarnwick::cli
