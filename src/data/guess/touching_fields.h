// Numbers of fixed width that touch each other where a sign leaves no blank between them: "1.2345-0.0012". Knows lines; decides
// nothing about names.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "data/fields/text_fields.h"
#include "data/guess/format_guess_cuts.h"

namespace tarnwick {

/// The longest run of rows whose numbers end at the same places, if some of them touch there. `layout` says what comments are.
std::optional<CutTable> FindTouchingTable(std::span<const std::string_view> lines,
                                          const TextLayout& layout);

}  // namespace tarnwick
