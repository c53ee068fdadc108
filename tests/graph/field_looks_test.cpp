// What editors show of stored fields: every field of every section's table has what it takes.
#include "stream/field_control.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <variant>

#include <gtest/gtest.h>

#include "data/series/data_series_file.h"
#include "fit/model/curve_fit_file.h"
#include "graph/appearance_fields.h"
#include "graph/axes/axis_fields.h"

namespace tarnwick {
namespace {

constexpr AllowedRange kByte = {0, 255};

bool IsChoice(ControlKind kind) {
  return kind == ControlKind::Choice || kind == ControlKind::LineStyle ||
         kind == ControlKind::Symbol;
}

/// Whether a control of this kind can show such a value.
bool CanShow(ControlKind kind, const FieldValue& value) {
  const bool integer = std::holds_alternative<std::int32_t>(value);
  switch (kind) {
    case ControlKind::CheckBox:
      return integer || std::holds_alternative<bool>(value);
    case ControlKind::Number:
    case ControlKind::Moment:
      return std::holds_alternative<double>(value);
    case ControlKind::Color:
      return std::holds_alternative<Color>(value);
    case ControlKind::Font:
      return std::holds_alternative<Font>(value);
    case ControlKind::Text:
    case ControlKind::Expression:
    case ControlKind::DateFormat:
    case ControlKind::Column:
    case ControlKind::File:
    case ControlKind::Folder:
      return std::holds_alternative<std::string>(value);
    case ControlKind::ReadOnly:
    case ControlKind::Hidden:
      return true;
    default:
      return integer;
  }
}

/// What the control offers is taken, and what is stored at first is among it.
template <class Owner>
void ExpectOffersWhatIsTaken(const Field<Owner>& field, const Owner& fresh) {
  const FieldControl& control = field.look.control;
  const FieldValue first = GetField(field, fresh);
  if (control.kind == ControlKind::Integer) {
    EXPECT_GE(control.min, field.allowed.min);
    EXPECT_LE(control.max, field.allowed.max);
    EXPECT_GE(std::get<std::int32_t>(first), control.min);
    EXPECT_LE(std::get<std::int32_t>(first), control.max);
  } else if (control.kind == ControlKind::Number) {
    EXPECT_GE(std::get<double>(first), control.min);
    EXPECT_LE(std::get<double>(first), control.max);
  }
}

template <class Owner>
void ExpectCaptionsOfEveryValue(const Field<Owner>& field, Owner& owner) {
  std::set<std::string_view> captions;
  std::set<std::int32_t> values;
  for (const FieldChoice& choice : field.look.control.choices) {
    EXPECT_FALSE(choice.caption.empty()) << choice.value;
    EXPECT_TRUE(captions.insert(choice.caption).second) << choice.caption;
    values.insert(choice.value);
    EXPECT_TRUE(SetField(field, owner, FieldValue{choice.value})) << choice.value;
    EXPECT_TRUE(SameValue(GetField(field, owner), FieldValue{choice.value})) << choice.value;
  }
  EXPECT_GE(values.size(), 2U);
  // A field that stores any number, known or not, offers those that mean something.
  const bool stores_any = field.allowed.max == AllowedRange{}.max || field.allowed.max == kByte.max;
  for (std::int32_t value = 0; !stores_any && value <= field.allowed.max; ++value) {
    EXPECT_TRUE(values.contains(value)) << value;
  }
}

template <class Owner>
void ExpectLooks(const char* table, FieldTable<Owner> fields, Owner&& fresh = {}) {
  std::set<std::pair<std::string_view, std::string_view>> seen;
  for (const Field<Owner>& field : fields) {
    const FieldLook& look = field.look;
    SCOPED_TRACE(std::string(table) + " " + std::to_string(field.number) + " " +
                 std::string(look.caption));
    EXPECT_FALSE(look.caption.empty());
    EXPECT_FALSE(look.group.empty());
    EXPECT_TRUE(seen.emplace(look.group, look.caption).second) << "twice in " << look.group;
    EXPECT_TRUE(CanShow(look.control.kind, GetField(field, fresh)));
    const bool set_elsewhere =
        look.control.kind == ControlKind::Hidden || look.control.kind == ControlKind::ReadOnly;
    EXPECT_EQ(look.control.reason.empty(), !set_elsewhere);
    EXPECT_EQ(look.control.choices.empty(), !IsChoice(look.control.kind));
    ExpectOffersWhatIsTaken(field, fresh);
    if (IsChoice(look.control.kind)) ExpectCaptionsOfEveryValue(field, fresh);
  }
}

TEST(FieldLooks, EveryStoredFieldCanBeEdited) {
  ExpectLooks("Axis", AxisFields());
  ExpectLooks("Appearance", AppearanceFields());
  ExpectLooks("Dimensions", DimensionsFields());
  ExpectLooks("Legend", LegendFields());
  ExpectLooks("Series", SeriesFields());
  ExpectLooks("Mark", MarkFields());
  ExpectLooks("DataSet", DataSeriesFields());
  ExpectLooks("Model", CurveFitModelFields());
  ExpectLooks("Run", CurveFitRunFields());
  ExpectLooks("Parameter", ParameterFields());
  ExpectLooks("Template", TemplateFields());
}

}  // namespace
}  // namespace tarnwick
