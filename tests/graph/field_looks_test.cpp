// What editors show of stored fields: every field of every section's table has what it takes.
#include "stream/field_control.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "data/series/data_series_file.h"
#include "fit/model/curve_fit_file.h"
#include "graph/appearance_fields.h"
#include "graph/axes/axis_fields.h"
#include "support/field_lines.h"
#include "support/told.h"

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
    case ControlKind::Separators:
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

/// A field without its owner: the checks of all tables are compiled once.
struct StoredField {
  std::string name;  // its table and number
  FieldLook look;
  AllowedRange allowed;
  FieldValue first;                  // of a fresh owner
  std::vector<std::int32_t> stored;  // the choices that came back after they were set
};

template <class Owner>
std::vector<StoredField> Stored(const char* table, FieldTable<Owner> fields) {
  Owner owner;
  std::vector<StoredField> all;
  for (const Field<Owner>& field : fields) {
    all.push_back({table + std::to_string(field.number),
                   field.look,
                   field.allowed,
                   GetField(field, owner),
                   {}});
    for (const FieldChoice& choice : field.look.control.choices) {
      const FieldValue value = choice.value;
      if (SetField(field, owner, value) && SameValue(GetField(field, owner), value))
        all.back().stored.push_back(choice.value);
    }
  }
  return all;
}

/// What the control offers is taken, and what is stored at first is among it.
void ExpectOffersWhatIsTaken(const StoredField& field) {
  const FieldControl& control = field.look.control;
  if (control.kind == ControlKind::Integer) {
    EXPECT_GE(control.min, field.allowed.min);
    EXPECT_LE(control.max, field.allowed.max);
    EXPECT_GE(std::get<std::int32_t>(field.first), control.min);
    EXPECT_LE(std::get<std::int32_t>(field.first), control.max);
  } else if (control.kind == ControlKind::Number) {
    EXPECT_GE(std::get<double>(field.first), control.min);
    EXPECT_LE(std::get<double>(field.first), control.max);
  }
}

void ExpectCaptionsOfEveryValue(const StoredField& field) {
  std::set<std::string_view> captions;
  std::vector<std::int32_t> values;
  for (const FieldChoice& choice : field.look.control.choices) {
    EXPECT_FALSE(choice.caption.empty()) << choice.value;
    EXPECT_TRUE(captions.insert(choice.caption).second) << choice.caption;
    values.push_back(choice.value);
  }
  EXPECT_EQ(field.stored, values);
  EXPECT_GE(values.size(), 2U);
  // A field that stores any number, known or not, offers those that mean something.
  const bool stores_any = field.allowed.max == AllowedRange{}.max || field.allowed.max == kByte.max;
  for (std::int32_t value = 0; !stores_any && value <= field.allowed.max; ++value)
    EXPECT_EQ(std::ranges::count(values, value), 1) << value;
}

void ExpectLooks(const std::vector<StoredField>& fields) {
  std::set<std::pair<std::string_view, std::string_view>> seen;
  for (const StoredField& field : fields) {
    const FieldLook& look = field.look;
    SCOPED_TRACE(field.name + " " + std::string(look.caption));
    EXPECT_FALSE(look.caption.empty());
    EXPECT_FALSE(look.group.empty());
    EXPECT_TRUE(seen.emplace(look.group, look.caption).second) << "twice in " << look.group;
    EXPECT_TRUE(CanShow(look.control.kind, field.first));
    const bool set_elsewhere =
        look.control.kind == ControlKind::Hidden || look.control.kind == ControlKind::ReadOnly;
    EXPECT_EQ(look.control.reason.empty(), !set_elsewhere);
    EXPECT_EQ(look.control.choices.empty(), !IsChoice(look.control.kind));
    ExpectOffersWhatIsTaken(field);
    if (IsChoice(look.control.kind)) ExpectCaptionsOfEveryValue(field);
  }
}

TEST(FieldLooks, EveryStoredFieldCanBeEdited) {
  ExpectLooks(Stored("Axis ", AxisFields()));
  ExpectLooks(Stored("Appearance ", AppearanceFields()));
  ExpectLooks(Stored("Dimensions ", DimensionsFields()));
  ExpectLooks(Stored("Legend ", LegendFields()));
  ExpectLooks(Stored("Series ", SeriesFields()));
  ExpectLooks(Stored("Mark ", MarkFields()));
  ExpectLooks(Stored("DataSet ", DataSeriesFields()));
  ExpectLooks(Stored("Model ", CurveFitModelFields()));
  ExpectLooks(Stored("Run ", CurveFitRunFields()));
  ExpectLooks(Stored("Parameter ", ParameterFields()));
  ExpectLooks(Stored("Template ", TemplateFields()));
}

template <class Owner>
void ExpectFields(const char* name, FieldTable<Owner> table, const Owner& owner) {
  std::istringstream text(testing::FieldLines(table, owner));
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  testing::ExpectTold("graph/fields.txt", name, lines);
}

TEST(FieldLooks, StayAsFilesHaveThem) {
  ExpectFields("axis", AxisFields(), DefaultAxisState(AxisId::Y));
  ExpectFields("appearance", AppearanceFields(), Appearance());
  ExpectFields("dimensions", DimensionsFields(), Dimensions());
  ExpectFields("legend", LegendFields(), Legend());
  Legend placed;
  placed.automatic = placed.no_room = true, placed.room_beside = placed.room_above = 1;
  ExpectFields("placed legend", LegendFields(), placed);
  ExpectFields("DataSet", SeriesFields(), SeriesStyle());
  SeriesStyle loop;
  loop.line_order = LineOrder::AsTheyCame, loop.in_panel = true;
  ExpectFields("loop in the panel", SeriesFields(), loop);
  ExpectFields("mark", MarkFields(), Mark());
  Mark rectangle;
  rectangle.type = MarkType::Rectangle;
  ExpectFields("rectangle", MarkFields(), rectangle);
}

TEST(FieldLooks, AnUnknownPlaceOfAnAxisIsTheOthersBegin) {
  for (const std::int32_t value : {-1, 0, 1, 3, 4}) {
    AxisState axis;
    for (const Field<AxisState>& field : AxisFields())
      if (field.key == "OffsetMode") SetField(field, axis, FieldValue(value));
    EXPECT_EQ(static_cast<std::int32_t>(axis.Offset_type), value % 4 < 0 ? 0 : value % 4);
  }
}

}  // namespace
}  // namespace tarnwick
