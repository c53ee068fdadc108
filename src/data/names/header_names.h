// Names of columns that the head of a file lists in a form of its own: the curves of a well log, the legends of a graph, the
// labels of both axes. Knows such heads; knows no rows.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "data/names/listed_names.h"

namespace tarnwick {

/// Names and units of all columns, where the lines above the rows list as many: "DEPT.M : depth" below "~Curve",
/// `@ s0 legend "Potential"`, "Data columns are Q - I", "##XUNITS=1/CM" with "##YUNITS=…" over two columns.
std::optional<ListedNames> FindHeaderNames(std::span<const std::string_view> above,
                                           const TextLayout& layout, std::int32_t columns);

}  // namespace tarnwick
