// An expression cut into the parts that are seen: numbers, functions, brackets. Knows places and what stands there; compiles
// nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tarnwick {

enum class PartKind : std::uint8_t { Number, Text, Function, Operator, Bracket, Name };

struct ExpressionPart {
  std::size_t place = 0;  ///< byte of the expression, from 0
  std::size_t length = 0;
  PartKind kind = PartKind::Name;
  /// Of a bracket: the part that closes or opens it; nothing where there is none.
  std::optional<std::size_t> partner = {};
};

/// The parts as formulas read them, in their order; what stands behind a number that cannot be read is left out.
std::vector<ExpressionPart> PartsOf(std::string_view expression);

}  // namespace tarnwick
