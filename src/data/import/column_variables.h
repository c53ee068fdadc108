// What the columns of a source are called in column expressions. Knows names and positions; nothing of values, rows and
// compiled expressions.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// `column_name` (UTF-8) as the scanner of expressions takes a name: in lower case, every character but letters, digits
/// and "_" replaced by "_", and a "_" before a leading digit. "Temp (°C)" is temp___c_.
std::string LegalVariableName(std::string_view column_name);

/// The column that a lower-case name of an expression stands for: the first column of that very name, else the first
/// whose legal name it is, else "col" and a position from 0, else (row_number) kRowNumberColumn. Nothing when there is
/// none.
std::optional<std::int32_t> ColumnOfVariable(const std::vector<std::string>& column_names,
                                             std::string_view variable);

/// What to write for a column: its legal name where that finds it, else "col" and its position. A name that is X, Y or a
/// built-in word never finds a column.
std::string VariableOfColumn(const std::vector<std::string>& column_names, std::int32_t column);

}  // namespace tarnwick
