// Names that differ by numbers only, as those of the bands of a spectrum: "SPEC_360", "SPEC_365". Knows names; knows no values.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarnwick {

/// What such names have in common and what they count.
struct NumberedNames {
  /// "SPEC", without what joins it to the number; where numbers are all there is, the name before them.
  std::string stem;
  std::vector<std::string> numbers;  ///< as they are written
  bool labelled = false;             ///< a name without a number stands before them
};

/// Names of one stem, sixteen at least, whose numbers rise, not from 0 or 1; one of another kind may stand before them, that of
/// labels.
std::optional<NumberedNames> FindNumberedNames(std::span<const std::string> names);

}  // namespace tarnwick
