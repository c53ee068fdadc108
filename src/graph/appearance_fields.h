// The field tables of a graph's own sections and of a Mark section: which keys they have, in the order written. Knows the
// values, not the file.
#pragma once

#include "graph/appearance.h"
#include "graph/mark.h"
#include "graph/series_style.h"
#include "stream/field_table.h"

namespace tarnwick {

inline constexpr SectionName kAppearanceSection = {"Section", "Appearance"};
inline constexpr SectionName kDimensionsSection = {"Section:", "Dimensions"};
inline constexpr SectionName kLegendSection = {"Section:", "Legend"};
inline constexpr SectionName kSeriesSection = {"", "Series"};
inline constexpr SectionName kMarkSection = {"Section:", "Mark"};

FieldTable<Appearance> AppearanceFields();
FieldTable<Dimensions> DimensionsFields();
FieldTable<Legend> LegendFields();
FieldTable<SeriesStyle> SeriesFields();
FieldTable<Mark> MarkFields();

}  // namespace tarnwick
