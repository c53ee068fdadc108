// The DataSets of a graph as entries of a menu: of Data and of the graph's popup menu. Knows documents, no menu.
#pragma once

#include <vector>

#include "desk/commands/menu_list.h"

namespace tarnwick {

/// Numbered from 1, the current one checked, those that cannot be chosen disabled; none without a document.
std::vector<MenuItem> DataSetItems(const CommandContext& context, const QFontMetrics& metrics);

}  // namespace tarnwick
