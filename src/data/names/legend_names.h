// Names of columns in the head of a graph that a plotting program wrote ("@"): labels of its axes, legends of its sets. Knows
// such heads; knows no rows.
#pragma once

#include <span>
#include <string_view>

#include "data/names/listed_names.h"

namespace tarnwick {

/// The label of X and the legends of all sets, or that of Y for one without: `@ xaxis label "t (ps)"`, `@ s0 legend "Epot"`,
/// `@ legend string 0 "Epot"`. Below `@target G0.S1` those of X and of Y, or of that set where Y has none or there is no other;
/// with its error for `@type xydy`. Plain text
/// (WithoutPlotMarkup). Empty names stand for those that are missing.
ListedNames FindLegendNames(std::span<const std::string_view> above, const TextLayout& layout);

}  // namespace tarnwick
