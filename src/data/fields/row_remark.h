// Remarks that stand behind the values of a row. Knows marks of comments; knows no columns.
#pragma once

#include <cstdint>
#include <string_view>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// What may stand before a remark: numbers and what separates them, or words between blanks with a number among them, too.
enum class Before : std::uint8_t { Numbers, Words };

/// A line without the remark behind its values: "1.5  2.5  # restarted", "O 15.999 ; oxygen". A mark counts behind a blank, and
/// before one where words stand before it; the line itself where there is none.
std::string_view WithoutRemark(std::string_view line, const TextLayout& layout,
                               Before before = Before::Numbers);

}  // namespace tarnwick
