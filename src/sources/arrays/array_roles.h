// What arrays say of others: which are bounds of a coordinate, which are coordinates. Knows the conventions' attributes; reads
// no values.
#pragma once

#include <set>
#include <span>
#include <string>

#include "sources/arrays/named_array.h"

namespace tarnwick {

/// Paths of arrays by what the others use them for.
struct ArrayRoles {
  std::set<std::string> bounds;       ///< say from where to where a place of a coordinate reaches
  std::set<std::string> coordinates;  ///< say where, or when, others were measured

  bool IsBounds(const NamedArray& array) const { return bounds.contains(array.path); }
  bool IsMeasured(const NamedArray& array) const;
};

ArrayRoles RolesOf(std::span<const NamedArray> arrays);

}  // namespace tarnwick
