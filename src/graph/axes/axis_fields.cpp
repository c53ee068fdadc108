#include "graph/axes/axis_fields.h"

#include <array>

#include "graph/axes/log_divisions.h"

namespace tarnwick {
namespace {

using namespace control;
using A = AxisState;
using Whole = Property<AxisState, std::int32_t>;

constexpr Whole kLogDivisions{
    [](const AxisState& axis) { return axis.LogCycleDivisions; },
    [](AxisState& axis, std::int32_t value) { axis.LogCycleDivisions = SnapLogDivisions(value); }};

/// A value that names no placement places the axis at the other's Min.
constexpr Whole kOffsetMode{
    [](const AxisState& axis) { return static_cast<std::int32_t>(axis.Offset_type); },
    [](AxisState& axis, std::int32_t value) {
      axis.Offset_type = static_cast<OffsetType>(value >= 1 && value <= 3 ? value : 0);
    }};

constexpr Whole kLabelFormat{
    [](const AxisState& axis) { return static_cast<std::int32_t>(axis.Label_format); },
    [](AxisState& axis, std::int32_t value) {
      axis.Label_format = static_cast<LabelFormat>(value);
    }};

constexpr std::array kDivisionSets = {
    FieldChoice{0, "Decades only"},
    FieldChoice{1, "1 5"},
    FieldChoice{2, "1 2 5"},
    FieldChoice{5, "1 1.5 2 3 5 7"},
    FieldChoice{7, "1 1.5 2 3 4 5 6 8"},
    FieldChoice{9, "1 1.2 1.5 2 2.5 3 4 5 6 8"},
};

constexpr std::array kTickTypes = {FieldChoice{DateTickType::Minute, "1 minute"},
                                   FieldChoice{DateTickType::FiveMinutes, "5 minutes"},
                                   FieldChoice{DateTickType::HalfHour, "Half hour"},
                                   FieldChoice{DateTickType::Hour, "Hour"},
                                   FieldChoice{DateTickType::Day, "Day"},
                                   FieldChoice{DateTickType::Week, "Week"},
                                   FieldChoice{DateTickType::Month, "Month"},
                                   FieldChoice{DateTickType::TwoMonths, "2 months"},
                                   FieldChoice{DateTickType::Quarter, "Quarter"},
                                   FieldChoice{DateTickType::Year, "Year"},
                                   FieldChoice{DateTickType::Decade, "10 years"},
                                   FieldChoice{DateTickType::Century, "100 years"},
                                   FieldChoice{DateTickType::Automatic, "Automatic"}};

constexpr std::array kOffsetTypes = {
    FieldChoice{OffsetType::OtherMin, "Minimum of the other axis"},
    FieldChoice{OffsetType::OtherMax, "Maximum of the other axis"},
    FieldChoice{OffsetType::Percent, "Percentage of the other axis"},
    FieldChoice{OffsetType::Value, "Value of the other axis"},
};

constexpr std::array kLabelFormats = {
    FieldChoice{LabelFormat::General, "General"},
    FieldChoice{LabelFormat::Scientific, "Scientific, 1.2E3"},
    FieldChoice{LabelFormat::Fixed, "Fixed decimals"},
    FieldChoice{LabelFormat::Thousands, "Fixed decimals, groups of thousands"},
    FieldChoice{LabelFormat::Engineering, "Engineering, 1.2k"},
    FieldChoice{LabelFormat::Percent, "Percent"},
    FieldChoice{LabelFormat::Hexadecimal, "Hexadecimal"},
};

const Field<AxisState> kFields[] = {
    {1, "AxisTitle", &A::Title, {"Title", "Title", kText}},
    {2, "NumberOfDecimals", &A::LabelDecimals, {"Decimals", "Labels", WholeWithin(0, 15)}},
    {3, "AdjustDecPlaces", &A::AdjustDecPlaces, {"Decimals follow the step", "Labels", kCheckBox}},
    {4, "LogDivisions", kLogDivisions, {"Ticks in a decade", "Scale", ChoiceOf(kDivisionSets)}},
    {5, "useLogScale", &A::LogScale, {"Logarithmic scale", "Scale", kCheckBox}},
    {6, "Max", &A::Max, {"Maximum", "Range", kMoment}},
    {7, "Min", &A::Min, {"Minimum", "Range", kMoment}},
    {8, "TickSpace", &A::StepSize, {"Step", "Ticks", kNumber}},
    {9, "MinimumScale", &A::MinScaleLength, {"Shortest range", "Range", kNumber}},
    {10, "ShowAsTime", &A::ShowAsTime, {"Dates and times", "Scale", kCheckBox}},
    {11, "TimeFormat", &A::DateTimeFormat, {"Date format", "Labels", kDateFormat}},
    {12,
     "TimeTickMode",
     kVia<&A::TickType>,
     {"Calendar unit", "Ticks", ChoiceOf(kTickTypes)},
     {0, 12}},
    {13, "AxisVisible", &A::ShowAxis, {"Show the axis", "Position", kCheckBox}},
    {14, "FlipAxis", &A::Reversed, {"Ticks and labels on the other side", "Position", kCheckBox}},
    {15, "OffsetMode", kOffsetMode, {"Crosses at", "Position", ChoiceOf(kOffsetTypes)}},
    {16, "OffSetValue", &A::Offset, {"Percentage or value", "Position", kNumber}},
    {17, "ShowGridlines", &A::Gridlines, {"Grid lines", "Grid", kCheckBox}},
    {20, "EnableAutoTitle", &A::EnableAutoTitle, {"Title from the data", "Title", kCheckBox}},
    {21, "LabelFormat", kLabelFormat, {"Number format", "Labels", ChoiceOf(kLabelFormats)}, {0, 6}},
    {18, "AllowAutoSize", &A::AutoSizing, {"Range follows the data", "Range", kCheckBox}},
    {19, "AllowTickRescale", &A::AutoStepping, {"Step follows the range", "Ticks", kCheckBox}},
};

}  // namespace

FieldTable<AxisState> AxisFields() {
  return kFields;
}

}  // namespace tarnwick
