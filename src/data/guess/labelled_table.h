// Tables between blanks whose rows are mostly labels: "GLY  HA1  3.97". One value among words says little of a line, many such
// lines in a row do. Knows lines and fields.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "data/fields/text_fields.h"
#include "data/guess/table_search.h"

namespace tarnwick {

/// The rows to the end of the lines that hold as many words each, the same ones numbers and the others no words of sentences but
/// labels, or marks (":") that part these. Nothing where there are few, where more than a few other lines stand above them or
/// one in ten among them, or where all they hold is a number that counts them.
std::optional<FoundTable> FindLabelledTable(std::span<const std::string_view> lines,
                                            const TextLayout& layout);

}  // namespace tarnwick
