// Texts of tick labels, and the shorter forms that a painter may choose when the plain ones do not fit. Knows values and
// settings of an axis, no fonts and no pixels.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "graph/axes/axis_state.h"
#include "graph/axes/tick.h"

namespace tarnwick {

/// Digits after the point that show `x`: t = log10(1.01 x); 1 - trunc(t) when t < 0, else -trunc(t). Negative for large
/// values: callers clamp at 0. 0 for x that is not a positive number.
int DecimalsFor(double x);

/// The label of a tick at `value`: by DateTimeFormat on a time axis, else by LabelFormat. On a logarithmic axis every
/// value has decimals of its own.
std::string TickLabelText(const AxisState& axis, double value);

/// Labels with a common power of ten taken out.
struct CompactLabelSet {
  std::vector<std::string> labels;  ///< one per tick, "" where the tick has none
  int exponent = 0;                 ///< 0: nothing taken out, the labels are the ticks' own
  std::string factor;  ///< "×10³" in UTF-8 with superscript digits; "" when the exponent is 0
};

/// True for labels from which something common may be taken out: of a linear axis that shows no time, in the formats General,
/// Fixed and Thousands.
bool TakesCommonPart(const AxisState& axis);

/// Takes a power of ten (a multiple of three) out of all labels of a linear axis when that makes them shorter.
CompactLabelSet CompactLabels(const AxisState& axis, const std::vector<Tick>& ticks);

/// A label as a power of ten: "10" with exponent "-3", or "2×10" with "5". Both empty for an unlabelled tick.
struct PowerLabel {
  std::string base;
  std::string exponent;  ///< to be drawn raised; "" when base is the whole label
};

/// True for a logarithmic axis that reads better with powers of ten: six decades and more, or labels of many zeros.
bool WantsPowerLabels(const AxisState& axis);
std::vector<PowerLabel> PowerLabels(const std::vector<Tick>& ticks);

/// "-12" as "⁻¹²" (UTF-8). Characters other than digits and minus stay.
std::string Superscript(std::string_view digits);

}  // namespace tarnwick
