#include "graph/panel_axis.h"

#include <algorithm>
#include <cmath>

#include "graph/axes/nice_step.h"

namespace tarnwick {

PanelPlace PlaceOfPanel(double height) {
  constexpr double kPanelShare = 0.25;
  constexpr double kGapShare = 0.025;
  constexpr double kLargestGap = 12;
  const double begin = height - std::round(kPanelShare * height);
  const double gap = std::min(std::round(kGapShare * height), kLargestGap);
  return {begin - gap, begin};
}

AxisState PanelAxisFor(double low, double high) {
  constexpr StepLimits kFewSteps{2, 20};
  const double farthest = std::max(std::abs(low), std::abs(high));
  const bool balanced = low < 0 && high > 0;
  const NumericRange range = FitNumericRange(balanced ? -farthest : std::min(low, 0.0),
                                             balanced ? farthest : std::max(high, 0.0), 0,
                                             StepChoice::Automatic, kFewSteps);
  AxisState axis = DefaultAxisState(AxisId::Y);
  axis.Min = range.min;
  axis.Max = range.max;
  axis.StepSize = range.step;
  axis.LabelDecimals = 0;  // as many as the step needs
  return axis;
}

}  // namespace tarnwick
