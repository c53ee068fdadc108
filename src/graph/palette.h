// The colours and symbols that DataSets get when they have none of their own. Knows no graph.
#pragma once

#include <cstddef>

#include "base/color.h"
#include "graph/series_style.h"

namespace tarnwick {

inline constexpr std::size_t kPaletteSize = 8;

/// The colour of DataSet number `index` (from 0), repeating: dark enough for a thin line on white, told apart with every common
/// form of colour blindness. After Okabe and Ito, "Color Universal Design" (2008), darkened, its yellow left out.
Color PaletteColor(std::size_t index);

/// The symbol of DataSet number `index`: another shape for each, shifted after every round of colours.
SymbolShape PaletteSymbol(std::size_t index);

}  // namespace tarnwick
