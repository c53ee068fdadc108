#include "graph/axes/axis_fields.h"

#include "graph/axes/log_divisions.h"

namespace tarnwick {
namespace {

using Integer = Property<AxisState, std::int32_t>;

constexpr Integer kLogDivisions{
    [](const AxisState& axis) { return axis.LogCycleDivisions; },
    [](AxisState& axis, std::int32_t value) { axis.LogCycleDivisions = SnapLogDivisions(value); }};

/// A value that names no placement places the axis at the other's Min.
constexpr Integer kOffsetMode{
    [](const AxisState& axis) { return static_cast<std::int32_t>(axis.Offset_type); },
    [](AxisState& axis, std::int32_t value) {
      axis.Offset_type = static_cast<OffsetType>(value >= 1 && value <= 3 ? value : 0);
    }};

const Field<AxisState> kFields[] = {
    {1, "AxisTitle", &AxisState::Title},
    {2, "NumberOfDecimals", &AxisState::LabelDecimals},
    {3, "AdjustDecPlaces", &AxisState::AdjustDecPlaces},
    {4, "LogDivisions", kLogDivisions},
    {5, "useLogScale", &AxisState::LogScale},
    {6, "Max", &AxisState::Max},
    {7, "Min", &AxisState::Min},
    {8, "TickSpace", &AxisState::StepSize},
    {9, "MinimumScale", &AxisState::MinScaleLength},
    {10, "ShowAsTime", &AxisState::ShowAsTime},
    {11, "TimeFormat", &AxisState::DateTimeFormat},
    {12, "TimeTickMode", kVia<&AxisState::TickType>, {0, 12}},
    {13, "AxisVisible", &AxisState::ShowAxis},
    {14, "FlipAxis", &AxisState::Reversed},
    {15, "OffsetMode", kOffsetMode},
    {16, "OffSetValue", &AxisState::Offset},
    {17, "ShowGridlines", &AxisState::Gridlines},
    {20, "EnableAutoTitle", &AxisState::EnableAutoTitle},
    {21, "LabelFormat", kVia<&AxisState::Label_format>, {0, 6}},
    {18, "AllowAutoSize", &AxisState::AutoSizing},
    {19, "AllowTickRescale", &AxisState::AutoStepping},
};

}  // namespace

FieldTable<AxisState> AxisFields() {
  return kFields;
}

}  // namespace tarnwick
