#include "analysis/along_line.h"

#include <cmath>
#include <cstddef>

#include "analysis/variance_of_area.h"

namespace tarnwick {

double AreaEnclosed(const LineColumns& line) {
  long double twice = 0;
  // About the first point: an offset of X or Y costs no digits.
  const auto from_first = [](const std::vector<double>& values, std::size_t at) {
    return static_cast<long double>(values[at]) - values[0];
  };
  for (std::size_t i = 1; i + 1 < line.x.size(); ++i) {
    twice += from_first(line.x, i) * from_first(line.y, i + 1) -
             from_first(line.x, i + 1) * from_first(line.y, i);
  }
  return static_cast<double>(std::abs(twice) / 2);
}

LineResult IntegralAlong(const LineColumns& line) {
  LineResult result;
  long double area = 0;
  VarianceOfArea variance;
  for (std::size_t i = 1; i < line.x.size(); ++i) {
    const long double width = static_cast<long double>(line.x[i]) - line.x[i - 1];
    area += 0.5L * width * (static_cast<long double>(line.y[i]) + line.y[i - 1]);
    result.x.push_back(line.x[i]);
    result.y.push_back(static_cast<double>(area));
    if (line.variance.empty()) continue;
    result.y_error.push_back(std::sqrt(
        variance.Take(static_cast<double>(width), line.variance[i - 1], line.variance[i])));
  }
  return result;
}

LineResult SumAlong(const LineColumns& line) {
  LineResult result{line.x, {}, {}};
  result.y.reserve(line.y.size());
  long double sum = 0;
  for (const double y : line.y) result.y.push_back(static_cast<double>(sum += y));
  result.y_error.reserve(line.variance.size());
  double variance = 0;
  for (const double one : line.variance) result.y_error.push_back(std::sqrt(variance += one));
  return result;
}

LineResult SlopesAlong(const LineColumns& line) {
  LineResult result;
  for (std::size_t i = 1; i < line.x.size(); ++i) {
    const double width = line.x[i] - line.x[i - 1];
    if (width == 0) continue;
    result.x.push_back((line.x[i - 1] + line.x[i]) * 0.5);
    result.y.push_back((line.y[i] - line.y[i - 1]) / width);
    if (line.variance.empty()) continue;
    result.y_error.push_back(std::sqrt(line.variance[i] + line.variance[i - 1]) / std::abs(width));
  }
  return result;
}

}  // namespace tarnwick
