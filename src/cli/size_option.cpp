#include "cli/size_option.h"

#include <optional>

#include "base/number_text.h"
#include "cli/command.h"

namespace tarnwick::cli {
namespace {

constexpr int kLargestSide = 30000;

}  // namespace

PictureSize ParseSize(const std::string& text) {
  const std::size_t cross = text.find_first_of("xX");
  if (cross != std::string::npos) {
    const std::optional<std::int32_t> width = ParseInteger(text.substr(0, cross));
    const std::optional<std::int32_t> height = ParseInteger(text.substr(cross + 1));
    if (width && height && *width > 0 && *height > 0 && *width <= kLargestSide &&
        *height <= kLargestSide) {
      return {*width, *height};
    }
  }
  throw UsageError("\"" + text + "\" is no size; WxH in pixels is, 1 to " +
                   std::to_string(kLargestSide));
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
