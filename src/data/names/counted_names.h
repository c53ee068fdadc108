// Names of columns that remarks count one behind the other: "# 1=time  2=T_min", "# c1: x, c2: y". Knows such lines; knows no
// rows.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// The name of each of `columns` columns among the lines above the first row, where a remark counts several of them from 1, or of
/// three and more from 0 on, the next remarks go on with it, and the last number is that of the last column; empty where none
/// does. A number may stand in brackets, behind "c", "col", "column", "ch" or "channel", and before ":", "=", ")" or "."; ahead
/// of all stands nothing or "Legend:" and the like. A blank alone behind a number counts where the remark begins so and goes on
/// over three columns and more.
std::vector<std::string> FindCountedNames(std::span<const std::string_view> above,
                                          const TextLayout& layout, std::int32_t columns);

}  // namespace tarnwick
