#include "cli/size_option.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "base/number_text.h"
#include "cli/command.h"
#include "graph/picture_export.h"

namespace tarnwick::cli {
namespace {

constexpr int kLargestSide = 30000;
constexpr std::string_view kMillimetres = "mm";

std::optional<int> PixelsOf(std::string_view text) {
  const std::optional<std::int32_t> pixels = ParseInteger(text);
  return pixels ? std::optional<int>(*pixels) : std::nullopt;
}

std::optional<int> PixelsOfMillimetres(std::string_view text, int dpi) {
  const std::optional<double> millimetres = ParseNumber(text);
  if (!millimetres || !(*millimetres > 0)) return std::nullopt;
  return WholePixels(*millimetres, dpi);
}

}  // namespace

PictureSize ParseSize(const std::string& text, int dpi) {
  std::string_view sides = text;
  const bool metric = sides.ends_with(kMillimetres);
  if (metric) sides.remove_suffix(kMillimetres.size());
  const std::size_t cross = sides.find_first_of("xX");
  if (cross != std::string_view::npos) {
    const auto side = [&](std::string_view digits) {
      return metric ? PixelsOfMillimetres(digits, dpi) : PixelsOf(digits);
    };
    const std::optional<int> width = side(sides.substr(0, cross));
    const std::optional<int> height = side(sides.substr(cross + 1));
    if (width && height && std::min(*width, *height) > 0 &&
        std::max(*width, *height) <= kLargestSide) {
      return {*width, *height};
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
