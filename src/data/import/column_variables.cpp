#include "data/import/column_variables.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/data_supplier.h"
#include "expr/words/builtin_words.h"

namespace tarnwick {
namespace {

constexpr std::string_view kPositionPrefix = "col";

bool BelongsToName(char c) {
  return (c >= 'a' && c <= 'z') || IsDigit(c) || c == '_';
}

bool ContinuesCharacter(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// True when the name cannot stand for a column: expressions read something else there, or nothing.
bool IsTaken(std::string_view variable) {
  if (variable.empty() || variable == "x" || variable == "y") return true;
  const auto words = BuiltinWords();
  return std::any_of(words.begin(), words.end(),
                     [&](const BuiltinWord& word) { return LowerAscii(word.name) == variable; });
}

std::optional<std::int32_t> Position(std::string_view variable, std::size_t columns) {
  if (!variable.starts_with(kPositionPrefix)) return std::nullopt;
  const std::string_view digits = variable.substr(kPositionPrefix.size());
  if (!std::all_of(digits.begin(), digits.end(), IsDigit)) return std::nullopt;
  const std::optional<std::int32_t> position = ParseInteger(digits);
  const bool exists = position && static_cast<std::size_t>(*position) < columns;
  return exists ? position : std::nullopt;
}

}  // namespace

std::string LegalVariableName(std::string_view column_name) {
  std::string legal;
  for (const char c : LowerAscii(column_name)) {
    if (ContinuesCharacter(c)) continue;
    legal += BelongsToName(c) ? c : '_';
  }
  if (!legal.empty() && IsDigit(legal.front())) legal.insert(legal.begin(), '_');
  return legal;
}

std::optional<std::int32_t> ColumnOfVariable(const std::vector<std::string>& column_names,
                                             std::string_view variable) {
  std::optional<std::int32_t> made_legal;
  for (std::size_t i = 0; i < column_names.size(); ++i) {
    if (LegalVariableName(column_names[i]) != variable) continue;
    const auto column = static_cast<std::int32_t>(i);
    if (LowerAscii(column_names[i]) == variable) return column;
    if (!made_legal) made_legal = column;
  }
  if (made_legal) return made_legal;
  if (const auto position = Position(variable, column_names.size())) return position;
  if (variable == LegalVariableName(kRowNumberName)) return kRowNumberColumn;
  return std::nullopt;
}

std::string VariableOfColumn(const std::vector<std::string>& column_names, std::int32_t column) {
  std::string legal = LegalVariableName(column_names[static_cast<std::size_t>(column)]);
  if (!IsTaken(legal) && ColumnOfVariable(column_names, legal) == column) return legal;
  return std::string(kPositionPrefix) + std::to_string(column);
}

}  // namespace tarnwick
