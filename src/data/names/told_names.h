// Names of columns that the head of a file tells in words: in a sentence that begins with the columns, or one below the other
// behind a mark of the data. Knows such heads; knows no rows.
#pragma once

#include <span>
#include <string_view>

#include "data/names/listed_names.h"

namespace tarnwick {

/// "Data columns are Qx - Qy - I", "The 3 columns are | Q (1/A) | I | dI |", "Columns: t, U, I": of the last such line. Empty
/// where there is none.
ListedNames FindSaidNames(std::span<const std::string_view> above, const TextLayout& layout);

/// A name on each of the last lines, blank ones at the end apart, down from one like "Data:" or "[Data]", or where all are
/// remarks, five at least. Empty where there are none.
ListedNames FindNamesInTurn(std::span<const std::string_view> above, const TextLayout& layout);

}  // namespace tarnwick
