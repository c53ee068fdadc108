#include "analysis/sums.h"

namespace tarnwick {

double Sum(const TDataSeries& series) {
  const BaseLine line = series.GetBaseLine();
  long double sum = 0;
  series.Points().ForEachPoint([&](double x, double y) { sum += line.CorrectedY(x, y); });
  return static_cast<double>(sum);
}

double Area(const TDataSeries& series) {
  const BaseLine line = series.GetBaseLine();
  const long double twice_zero = 2 * static_cast<long double>(line.offset);
  const long double slope = line.slope;
  long double twice_area = 0;
  bool first = true;
  double last_x = 0;
  double last_y = 0;
  series.Points().ForEachPoint([&](double x, double y) {
    if (!first) {
      const long double sum_x = static_cast<long double>(last_x) + x;
      const long double sum_y = static_cast<long double>(last_y) + y;
      twice_area += (static_cast<long double>(x) - last_x) * (sum_y - twice_zero - slope * sum_x);
    }
    first = false;
    last_x = x;
    last_y = y;
  });
  return static_cast<double>(twice_area / 2);
}

}  // namespace tarnwick
