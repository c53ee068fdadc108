// Names of quantities with their units, "Time (s)", as axis titles have them. Knows texts.
#pragma once

#include <string>
#include <string_view>

#include "results/tools/tool.h"

namespace tarnwick {

struct NamedUnit {
  std::string name;
  std::string unit;  ///< empty for none
};

/// "Time" and "s" of "Time (s)", "Time [s]" or "Time/s".
NamedUnit SplitNamedUnit(std::string_view title);

/// The two as one title; the name alone without a unit.
std::string TitleOf(const NamedUnit& named);

/// The same of a DataSet's X column; days where X is dates.
NamedUnit XNameOf(const ToolInput& input);

/// The unit of one by the other: "Hz" of "s", "1/m" of "m"; empty for none.
std::string InverseUnit(const std::string& unit);

/// "V²" of "V", "(m/s)²" of "m/s"; empty for none.
std::string SquaredUnit(const std::string& unit);

}  // namespace tarnwick
