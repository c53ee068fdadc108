// Which scale suits the X of a file that nobody has looked at yet. Knows DataSets; knows no file and no axis.
#pragma once

#include <span>
#include <string_view>

#include "graph/series.h"

namespace tarnwick {

/// What a note says where X is shown logarithmically.
inline constexpr std::string_view kLogScaleNote =
    "X is shown logarithmically, since it steps through decades";

/// True where X steps through three decades or more in about even ratios, as a sweep of frequencies does.
bool SuggestsLogX(std::span<TSeries* const> all);

}  // namespace tarnwick
