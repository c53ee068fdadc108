#include "stream/field_table.h"

namespace tarnwick {
namespace {

template <class... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

}  // namespace

char LetterOf(const FieldValue& value) {
  return std::visit(
      Overloaded{[](const std::string&) { return 'S'; }, [](std::int32_t) { return 'I'; },
                 [](double) { return 'D'; }, [](bool) { return 'B'; }, [](Color) { return 'I'; },
                 [](const Font&) { return 'F'; }},
      value);
}

void WriteFieldValue(SectionWriter& writer, int number, std::string_view key,
                     const FieldValue& value) {
  std::visit(Overloaded{[&](const std::string& text) { writer.WriteString(number, key, text); },
                        [&](std::int32_t integer) { writer.WriteInteger(number, key, integer); },
                        [&](double real) { writer.WriteFloat(number, key, real); },
                        [&](bool boolean) { writer.WriteBoolean(number, key, boolean); },
                        [&](Color color) { writer.WriteInteger(number, key, color.value); },
                        [&](const Font& font) { writer.WriteFont(number, key, font); }},
             value);
}

FieldValue ReadFieldValue(SectionReader& reader, const FieldValue& shape) {
  return std::visit(
      Overloaded{[&](const std::string&) -> FieldValue { return reader.ReadAsString(); },
                 [&](std::int32_t) -> FieldValue { return reader.ReadAsInteger(); },
                 [&](double) -> FieldValue { return reader.ReadAsFloat(); },
                 [&](bool) -> FieldValue { return reader.ReadAsBoolean(); },
                 [&](Color) -> FieldValue { return Color{reader.ReadAsInteger()}; },
                 [&](const Font&) -> FieldValue { return reader.ReadFont(); }},
      shape);
}

bool SameValue(const FieldValue& left, const FieldValue& right) {
  const auto* left_real = std::get_if<double>(&left);
  const auto* right_real = std::get_if<double>(&right);
  if (left_real != nullptr && right_real != nullptr && IsUndefined(*left_real)) {
    return IsUndefined(*right_real);
  }
  return left == right;
}

}  // namespace tarnwick
