// Which column a line of names with one name less leaves without. Knows the first rows and lines above them; cuts no names.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// Whether the first column may be one of labels, which lines of names often leave without a name.
enum class RowLabels : std::uint8_t {
  Possible,
  Never,
  Ahead,  ///< it holds a text in every row, or counts them
  AtEnd   ///< the last one is without a name
};

/// Ahead for rows that begin with a text, or that other separators than blanks part and that count from 0 or 1. AtEnd for rows
/// that other separators than blanks part and that begin with a number without quotes, where they end with a text that is the
/// same in all of them, or with any where names on a line `above` stand over a clock only when read from the left; or where the
/// first of one name less than columns is what others are measured over, and the first column holds fractions, as numbers of rows
/// do not.
RowLabels LabelsOf(std::span<const std::string_view> rows, const TextLayout& layout,
                   std::span<const std::string_view> above);

}  // namespace tarnwick
