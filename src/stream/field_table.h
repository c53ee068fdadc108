// Field tables: each field of a section is declared once, and writing, reading, listing, comparing and editing go by that
// table. Knows nothing of what the fields mean.
//
//   inline constexpr Field<AxisState> kAxisFields[] = {
//       {6, "Max", &AxisState::Max, {"Maximum", "Range", control::kMoment}},
//       {12, "TimeTickMode", kVia<&AxisState::TickType>, {"Unit", "Time", control::ChoiceOf(kUnits)}, {0, 12}},  // an enum
//       {37, "FileHasHeaders", kVia<&DataState::source, &TDSInfo::FileHasHeaders>},    // a member of a member
//       {48, "MergeSeparators", &S::merge, {}, {}, [](const S& s) { return !s.merge; }},  // written only when false
//       {12, "Y", Property<S, double>{[](const S& s) { return s.Y(); }, [](S& s, double v) { s.SetY(v); }}},
//   };
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "base/color.h"
#include "base/font.h"
#include "base/undefined.h"
#include "stream/field_control.h"
#include "stream/section_reader.h"
#include "stream/section_writer.h"

namespace tarnwick {

/// The value of a field, whatever its owner keeps it in (8-bit integers and enums as integers).
using FieldValue = std::variant<std::string, std::int32_t, double, bool, Color, Font>;

/// A field behind a getter and a setter, for properties with rules of their own.
template <class Owner, class Value>
struct Property {
  Value (*get)(const Owner&);
  void (*set)(Owner&, Value);
};

/// The integers that may be stored. A value outside is passed over in reading: the owner keeps what it has.
struct AllowedRange {
  std::int32_t min = std::numeric_limits<std::int32_t>::min();
  std::int32_t max = std::numeric_limits<std::int32_t>::max();
};

template <class Owner>
struct Field {
  using Access = std::variant<std::string Owner::*, std::int32_t Owner::*, std::uint8_t Owner::*,
                              double Owner::*, bool Owner::*, Color Owner::*, Font Owner::*,
                              Property<Owner, std::string>, Property<Owner, std::int32_t>,
                              Property<Owner, double>, Property<Owner, bool>,
                              Property<Owner, Color>, Property<Owner, Font>>;

  int number = 0;        ///< 1 to 99
  std::string_view key;  ///< the name, seen in text mode and listings
  Access access;
  FieldLook look = {};  ///< how an editor shows it
  AllowedRange allowed = {};
  /// Written only when this holds (always when null). Rows may share a number under conditions that exclude each other;
  /// reading takes the one whose condition holds for the owner as read so far, else the first.
  bool (*condition)(const Owner&) = nullptr;
};

/// A table of fields, in the order in which they are written.
template <class Owner>
using FieldTable = std::span<const Field<Owner>>;

/// One field as VisitFields shows it. The letter is that of the key tag: S, I, D, B or F.
struct FieldView {
  int number = 0;
  std::string_view key;
  char letter = 'S';
  FieldValue value;
};

/// Every section begins with key 99, whose value names it.
struct SectionName {
  std::string_view key;
  std::string_view value;
};

inline constexpr int kSectionNameKey = 99;

/// The type letter of a value: colours are integers.
char LetterOf(const FieldValue& value);
void WriteFieldValue(SectionWriter& writer, int number, std::string_view key,
                     const FieldValue& value);
/// Reads the pending value as the type that `shape` holds.
FieldValue ReadFieldValue(SectionReader& reader, const FieldValue& shape);
/// Equal values; undefined equals undefined.
bool SameValue(const FieldValue& left, const FieldValue& right);

namespace field_table_detail {

template <class Class, class Value>
Class ClassOf(Value Class::*);

template <auto First, auto...>
struct PathOwner {
  using Type = decltype(ClassOf(First));
};

template <auto First, auto... Rest, class Owner>
constexpr auto& Follow(Owner& owner) {
  if constexpr (sizeof...(Rest) == 0) {
    return owner.*First;
  } else {
    return Follow<Rest...>(owner.*First);
  }
}

/// How a member's type travels: enums and integers as std::int32_t, the rest as itself.
template <class Member>
using Stored = std::conditional_t<(std::is_enum_v<Member> ||
                                   std::is_integral_v<Member>)&&!std::is_same_v<Member, bool>,
                                  std::int32_t, Member>;

template <class Integer>
bool Fits(std::int32_t value) {
  if constexpr (std::is_enum_v<Integer>) {
    return std::in_range<std::underlying_type_t<Integer>>(value);
  } else {
    return std::in_range<Integer>(value);
  }
}

template <auto... Path>
constexpr auto MakeVia() {
  using Owner = typename PathOwner<Path...>::Type;
  using Member = std::remove_cvref_t<decltype(Follow<Path...>(std::declval<Owner&>()))>;
  using Value = Stored<Member>;
  return Property<Owner, Value>{
      [](const Owner& owner) -> Value { return static_cast<Value>(Follow<Path...>(owner)); },
      [](Owner& owner, Value value) {
        if constexpr (std::is_same_v<Member, Value>) {
          Follow<Path...>(owner) = std::move(value);
        } else if (Fits<Member>(value)) {
          Follow<Path...>(owner) = static_cast<Member>(value);
        }
      }};
}

}  // namespace field_table_detail

/// Access along a path of members, enums (and other integers) included. An integer that does not fit is passed over.
template <auto... Path>
inline constexpr auto kVia = field_table_detail::MakeVia<Path...>();

/// The present value of a field.
template <class Owner>
FieldValue GetField(const Field<Owner>& field, const Owner& owner) {
  return std::visit(
      [&owner](const auto& access) -> FieldValue {
        if constexpr (std::is_member_object_pointer_v<std::remove_cvref_t<decltype(access)>>) {
          using Member = std::remove_cvref_t<decltype(owner.*access)>;
          return static_cast<field_table_detail::Stored<Member>>(owner.*access);
        } else {
          return access.get(owner);
        }
      },
      field.access);
}

/// Stores a value of the field's own type. False, with the owner unchanged, when an integer is not allowed.
template <class Owner>
bool SetField(const Field<Owner>& field, Owner& owner, const FieldValue& value) {
  if (const auto* integer = std::get_if<std::int32_t>(&value);
      integer != nullptr && (*integer < field.allowed.min || *integer > field.allowed.max)) {
    return false;
  }
  return std::visit(
      [&](const auto& access) {
        if constexpr (std::is_member_object_pointer_v<std::remove_cvref_t<decltype(access)>>) {
          using Member = std::remove_cvref_t<decltype(owner.*access)>;
          const auto& stored = std::get<field_table_detail::Stored<Member>>(value);
          if constexpr (std::is_same_v<Member, std::uint8_t>) {
            if (!field_table_detail::Fits<Member>(stored)) return false;
          }
          owner.*access = static_cast<Member>(stored);
        } else {
          access.set(owner, std::get<std::remove_cvref_t<decltype(access.get(owner))>>(value));
        }
        return true;
      },
      field.access);
}

template <class Owner>
void WriteField(SectionWriter& writer, const Field<Owner>& field, const Owner& owner) {
  if (field.condition == nullptr || field.condition(owner)) {
    WriteFieldValue(writer, field.number, field.key, GetField(field, owner));
  }
}

/// Every field of the table, without the section's name and end mark.
template <class Owner>
void WriteFields(SectionWriter& writer, std::type_identity_t<FieldTable<Owner>> table,
                 const Owner& owner) {
  for (const Field<Owner>& field : table) WriteField(writer, field, owner);
}

/// A whole section: key 99 with its name, the fields, the end mark.
template <class Owner>
void WriteSection(SectionWriter& writer, const SectionName& name,
                  std::type_identity_t<FieldTable<Owner>> table, const Owner& owner) {
  writer.WriteString(kSectionNameKey, name.key, name.value);
  WriteFields<Owner>(writer, table, owner);
  writer.WriteEndOfSection();
}

/// The row that reads key `number`, or null.
template <class Owner>
const Field<Owner>* FindField(std::type_identity_t<FieldTable<Owner>> table, int number,
                              const Owner& owner) {
  const Field<Owner>* found = nullptr;
  for (const Field<Owner>& field : table) {
    if (field.number != number) continue;
    if (field.condition == nullptr || field.condition(owner)) return &field;
    if (found == nullptr) found = &field;
  }
  return found;
}

/// Reads the pending value of key `number` into the owner. False: no such field, the value is still pending.
template <class Owner>
bool ReadField(SectionReader& reader, int number, std::type_identity_t<FieldTable<Owner>> table,
               Owner& owner) {
  const Field<Owner>* field = FindField<Owner>(table, number, owner);
  if (field == nullptr) return false;
  SetField(*field, owner, ReadFieldValue(reader, GetField(*field, owner)));
  return true;
}

/// Reads keys to the end mark, passing over those that the table does not know (the section's name, key 99, too).
template <class Owner>
void ReadSection(SectionReader& reader, std::type_identity_t<FieldTable<Owner>> table,
                 Owner& owner) {
  for (int number = reader.ReadKey(); number != 0; number = reader.ReadKey()) {
    if (!ReadField<Owner>(reader, number, table, owner)) reader.SkipValue();
  }
}

/// Calls `visitor(const FieldView&)` for every field in the table's order, those under a condition too.
template <class Owner, class Visitor>
void VisitFields(std::type_identity_t<FieldTable<Owner>> table, const Owner& owner,
                 Visitor&& visitor) {
  for (const Field<Owner>& field : table) {
    const FieldValue value = GetField(field, owner);
    visitor(FieldView{field.number, field.key, LetterOf(value), value});
  }
}

/// True when every field of the table has the same value in both.
template <class Owner>
bool FieldsEqual(std::type_identity_t<FieldTable<Owner>> table, const Owner& left,
                 const Owner& right) {
  for (const Field<Owner>& field : table) {
    if (!SameValue(GetField(field, left), GetField(field, right))) return false;
  }
  return true;
}

}  // namespace tarnwick
