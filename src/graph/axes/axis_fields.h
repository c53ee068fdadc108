// The stored fields of an axis: number, key and member of each, in the order of the file.
#pragma once

#include "graph/axes/axis_state.h"
#include "stream/field_table.h"

namespace tarnwick {

inline constexpr SectionName kAxisSection{"Section:", "Axis"};

/// Keys 1 to 21, with 20 and 21 before 18 and 19.
FieldTable<AxisState> AxisFields();

}  // namespace tarnwick
