// Rows of fixed width whose columns are told by the points of their numbers, since some are left blank and some touch others:
// "I -0.003225" above "P-0.223175". Knows lines; decides nothing about names.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "data/fields/text_fields.h"
#include "data/guess/format_guess_cuts.h"

namespace tarnwick {

/// The rows from the first to the last that hold numbers with decimals, if these are most lines and in nearly all of them the
/// points stand at the same characters, three at least, with as many decimals in each column, and fields are missing or touch.
/// `layout` says what comments are.
std::optional<CutTable> FindPointColumns(std::span<const std::string_view> lines,
                                         const TextLayout& layout);

}  // namespace tarnwick
