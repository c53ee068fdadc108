// What an editor needs to show a stored field: what it is called, where it stands, with what kind of control it is set.
// Plain texts and numbers; knows neither widgets nor what the fields mean.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

#include "base/line_style.h"

namespace tarnwick {

enum class ControlKind : std::uint8_t {
  CheckBox,    ///< a boolean, or an integer that is 0 or not
  Number,      ///< a real number
  Integer,     ///< a whole number
  Moment,      ///< a real number, shown as a date and time where its owner shows values so
  Text,        ///< one line
  Expression,  ///< one line that an expression parser reads
  DateFormat,  ///< one line that says how dates are written
  Column,      ///< the name of a column of the data source
  Separators,  ///< single characters between fields, blanks and tabs among them
  File,        ///< the name of a file
  Folder,      ///< the name of a folder
  Color,
  Font,
  Choice,     ///< an integer that is one of the choices
  LineStyle,  ///< a choice that can be shown by samples of the lines
  Symbol,     ///< a choice that can be shown by pictures of the symbols
  DataSet,    ///< the index of a DataSet of the graph, from 0; -1 none
  ReadOnly,   ///< shown, and set by other means, which the reason names
  Hidden      ///< not shown, for the reason given
};

/// One value of a choice and what the user reads for it.
struct FieldChoice {
  std::int32_t value = 0;
  std::string_view caption;

  constexpr FieldChoice(auto stored, std::string_view text)
      : value(static_cast<std::int32_t>(stored)), caption(text) {}
};

/// A kind of control with what belongs to it.
struct FieldControl {
  ControlKind kind = ControlKind::Hidden;
  double min = -std::numeric_limits<double>::infinity();  ///< what a number may be, both included
  double max = std::numeric_limits<double>::infinity();
  std::string_view unit = {};  ///< shown behind a number: "px", "%"; empty for none
  /// Of Choice, LineStyle and Symbol: every value that may be chosen.
  std::span<const FieldChoice> choices = {};
  std::string_view reason = {};  ///< of ReadOnly and Hidden: where the value comes from instead
};

/// How a field is shown. Captions differ within a group.
struct FieldLook {
  std::string_view caption;
  std::string_view group;  ///< the box of an editor's page that it stands in
  FieldControl control = {};
};

namespace control {

inline constexpr FieldControl kCheckBox{.kind = ControlKind::CheckBox};
inline constexpr FieldControl kNumber{.kind = ControlKind::Number};
inline constexpr FieldControl kMoment{.kind = ControlKind::Moment};
inline constexpr FieldControl kText{.kind = ControlKind::Text};
inline constexpr FieldControl kExpression{.kind = ControlKind::Expression};
inline constexpr FieldControl kDateFormat{.kind = ControlKind::DateFormat};
inline constexpr FieldControl kColumn{.kind = ControlKind::Column};
inline constexpr FieldControl kSeparators{.kind = ControlKind::Separators};
inline constexpr FieldControl kFile{.kind = ControlKind::File};
inline constexpr FieldControl kFolder{.kind = ControlKind::Folder};
inline constexpr FieldControl kColor{.kind = ControlKind::Color};
inline constexpr FieldControl kFont{.kind = ControlKind::Font};
inline constexpr FieldControl kDataSet{.kind = ControlKind::DataSet};

constexpr FieldControl RealWithin(double min, double max, std::string_view unit = {}) {
  return {.kind = ControlKind::Number, .min = min, .max = max, .unit = unit};
}

constexpr FieldControl WholeWithin(std::int32_t min, std::int32_t max, std::string_view unit = {}) {
  return {.kind = ControlKind::Integer,
          .min = static_cast<double>(min),
          .max = static_cast<double>(max),
          .unit = unit};
}

inline constexpr FieldControl kInteger =
    WholeWithin(std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max());

/// Of choices that outlive the control.
constexpr FieldControl ChoiceOf(std::span<const FieldChoice> choices,
                                ControlKind kind = ControlKind::Choice) {
  return {.kind = kind, .choices = choices};
}

constexpr FieldControl ReadOnly(std::string_view reason) {
  return {.kind = ControlKind::ReadOnly, .reason = reason};
}

constexpr FieldControl Hidden(std::string_view reason) {
  return {.kind = ControlKind::Hidden, .reason = reason};
}

inline constexpr std::array kLineStyles = {
    FieldChoice{LineStyle::Solid, "Solid"},
    FieldChoice{LineStyle::Dash, "Dashes"},
    FieldChoice{LineStyle::Dot, "Dots"},
    FieldChoice{LineStyle::DashDot, "Dash, dot"},
    FieldChoice{LineStyle::DashDotDot, "Dash, dot, dot"},
    FieldChoice{LineStyle::None, "None"},
};
inline constexpr FieldControl kLineStyle = ChoiceOf(kLineStyles, ControlKind::LineStyle);

}  // namespace control

}  // namespace tarnwick
