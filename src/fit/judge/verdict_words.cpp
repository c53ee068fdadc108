#include "fit/judge/verdict_words.h"

#include <cmath>
#include <cstddef>
#include <optional>

#include "base/number_text.h"
#include "base/word_list.h"

namespace tarnwick {
namespace {

constexpr int kDigits = 6;
constexpr int kRoughDigits = 2;

}  // namespace

std::string FigureText(double value) {
  return GeneralText(value, kDigits);
}

std::string RoughText(double value) {
  const std::string rounded = GeneralText(value, kRoughDigits);
  // Digits that were rounded away are zeros: 120, not 1.2E2.
  const std::optional<double> number = ParseNumber(rounded);
  return number ? FigureText(*number) : rounded;
}

std::string PlacesText(double first_x, std::int64_t count) {
  std::string text = "X = " + FigureText(first_x);
  return count > 1 ? text + " and at " + Counted(count - 1, "other point") : text;
}

std::string NamesOf(const FitResult& result, const std::vector<std::int32_t>& which) {
  std::vector<std::string> names;
  names.reserve(which.size());
  for (const std::int32_t i : which) names.push_back(result.names.at(static_cast<std::size_t>(i)));
  return Listed(names);
}

std::string Described(const FarthestPoint& point) {
  return "X = " + FigureText(point.x) + ", " +
         (std::isfinite(point.deviations) ? RoughText(point.deviations) + " standard deviations"
                                          : "beyond all others");
}

}  // namespace tarnwick
