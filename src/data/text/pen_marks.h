// Rows that lift the pen between the outlines of a map: "999.00 99.00". Knows lines and fields; knows no columns' meaning.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// The numbers, each once, of a row that holds nothing but nines in two fields or more and comes again in the same form; empty
/// where there is none. Reads no more than the first megabytes of the text.
std::vector<std::string> FindPenMarks(std::string_view text, const TextLayout& layout);

}  // namespace tarnwick
