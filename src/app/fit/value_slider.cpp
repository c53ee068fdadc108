#include "app/fit/value_slider.h"

#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

namespace tarnwick {
namespace {

constexpr int kSteps = 1000;

/// Cut to the digits that a step of the slider can tell.
double Rounded(double value, double range) {
  if (!(range > 0) || !std::isfinite(range)) return value;
  const double unit = std::pow(10, std::floor(std::log10(range / kSteps)));
  // Division by a whole power gives 0.3 where multiplication gives 0.30000000000000004.
  return unit < 1 ? std::round(value / unit) / std::round(1 / unit)
                  : std::round(value / unit) * unit;
}

}  // namespace

ValueSlider::ValueSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
  setRange(0, kSteps);
  setMinimumWidth(110);
  setFocusPolicy(Qt::StrongFocus);
  setPageStep(kSteps / 20);
  setSingleStep(kSteps / 200);
  connect(this, &QSlider::valueChanged, this, &ValueSlider::Tell);
  connect(this, &QSlider::sliderReleased, this, [this] { Follow(parameter_); });
}

void ValueSlider::Follow(const ParameterSettings& parameter) {
  const bool new_bounds = parameter.Low != parameter_.Low || parameter.High != parameter_.High;
  parameter_ = parameter;
  const double value = parameter.Value;
  setEnabled(parameter.Tie.empty() && std::isfinite(value));
  if (isSliderDown() || !isEnabled()) return;
  const bool inside = value > lowest_ && value < highest_;
  if (new_bounds || !inside || !hasFocus()) FindRange();  // keys go on in the range they began in
  const QSignalBlocker quiet(this);
  if (highest_ > lowest_)
    setValue(static_cast<int>(std::lround((value - lowest_) / (highest_ - lowest_) * kSteps)));
}

void ValueSlider::FindRange() {
  const double value = parameter_.Value;
  const double reach = value == 0 ? 1 : std::abs(value);
  const bool bounded = std::isfinite(parameter_.Low) && std::isfinite(parameter_.High);
  lowest_ = bounded ? parameter_.Low : std::max(value - reach, parameter_.Low);
  highest_ = bounded ? parameter_.High : std::min(value + reach, parameter_.High);
  lowest_ = std::min(lowest_, value);
  highest_ = std::max(highest_, value);
}

void ValueSlider::Tell(int position) {
  const double range = highest_ - lowest_;
  if (!(range > 0) || !std::isfinite(range)) return;
  const double value = Rounded(lowest_ + range * position / kSteps, range);
  parameter_.Value = std::clamp(value, lowest_, highest_);
  emit dragged(parameter_.Value);
}

}  // namespace tarnwick
