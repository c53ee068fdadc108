#include "analysis/average.h"

#include <vector>

#include "analysis/interpolation.h"
#include "data/column_caption.h"

namespace tarnwick {

void Average(const TDataSeries& reference, std::span<const TDataSeries* const> averaged,
             TDataSeries& target) {
  std::vector<Interpolation> curves;
  for (const TDataSeries* series : averaged) curves.emplace_back(series->Points());
  std::vector<double> x_values;
  std::vector<double> y_values;
  x_values.reserve(reference.Points().Size());
  y_values.reserve(reference.Points().Size());
  reference.Points().ForEachPoint([&](double x, double) {
    long double sum = 0;
    int count = 0;
    for (const Interpolation& curve : curves) {
      const std::optional<double> y = curve.At(x);
      if (!y) continue;
      sum += *y;
      ++count;
    }
    x_values.push_back(x);
    y_values.push_back(count > 0 ? static_cast<double>(sum / count) : 0);
  });
  target.BeginUpdate();
  target.Clear();
  target.SetDuplicatesAllowed(reference.DuplicatesAllowed());
  target.Source().XDataColumn = CaptionOfX(reference.Source());
  target.Source().YDataColumn = CaptionOfY(reference.Source());
  target.SetErrors({});
  target.AddPoints(x_values, y_values);
  target.EndUpdate();
}

}  // namespace tarnwick
