// Remarks that stand behind the values of a row. Knows marks of comments; knows no columns.
#pragma once

#include <string_view>

#include "data/text/text_fields.h"

namespace tarnwick {

/// A line without the remark behind its values: "1.5  2.5  # restarted". A mark counts behind a blank where only numbers, blanks
/// and what separates them stand before it; the line itself where there is none.
std::string_view WithoutRemark(std::string_view line, const TextLayout& layout);

}  // namespace tarnwick
