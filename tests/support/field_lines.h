// A table of fields as text, one line each, to compare with what files and editors rely on.
#pragma once

#include <cmath>
#include <string>

#include "base/number_text.h"
#include "stream/field_table.h"

namespace tarnwick::testing {

inline std::string TextOfValue(const FieldValue& value) {
  if (const auto* const text = std::get_if<std::string>(&value)) return "\"" + *text + "\"";
  if (const auto* const whole = std::get_if<std::int32_t>(&value)) return std::to_string(*whole);
  if (const auto* const real = std::get_if<double>(&value)) return GeneralText(*real);
  if (const auto* const is = std::get_if<bool>(&value)) return *is ? "true" : "false";
  return "";
}

/// "18 RowSamplingFrequency I 1: 2, 1..2147483647 rows, allowed 1..2147483647, always": number, key, letter, value, kind of
/// control (its number), what it may be, the choices' values, what may be stored, and whether `owner` as it is has it written.
template <class Owner>
std::string FieldLines(FieldTable<Owner> table, const Owner& owner) {
  constexpr AllowedRange kAny;
  std::string lines;
  for (const Field<Owner>& field : table) {
    const FieldControl& control = field.look.control;
    char letter = '?';
    std::string value;
    VisitFields(FieldTable<Owner>(&field, 1), owner, [&](const FieldView& view) {
      letter = view.letter;
      value = TextOfValue(view.value);
    });
    lines += std::to_string(field.number) + " " + std::string(field.key) + " " + letter + " " +
             value + ": " + std::to_string(static_cast<int>(control.kind));
    if (std::isfinite(control.min) || std::isfinite(control.max)) {
      lines += ", " + GeneralText(control.min) + ".." + GeneralText(control.max) + " " +
               std::string(control.unit);
    }
    for (const FieldChoice& choice : control.choices) lines += " " + std::to_string(choice.value);
    if (field.allowed.min != kAny.min || field.allowed.max != kAny.max) {
      lines += ", allowed " + std::to_string(field.allowed.min) + ".." +
               std::to_string(field.allowed.max);
    }
    const bool written = field.condition == nullptr || field.condition(owner);
    lines += field.condition == nullptr ? ", always\n" : written ? ", written\n" : ", left out\n";
  }
  return lines;
}

}  // namespace tarnwick::testing
