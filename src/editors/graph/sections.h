// The sections of a graph as the editor changes them: the rows of each with how a value is read and set. Knows graphs and
// their field tables; no widget.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "desk/fields/field_row.h"

namespace tarnwick {

class TxyGraph;

enum class SectionId : std::uint8_t { Appearance, Dimensions, Legend, Axis, Style, DataSet, Mark };

/// `id` says which one, where there are several: an AxisId, the index of a DataSet, the ID of a mark.
struct Section {
  std::vector<FieldRow> rows;
  /// The value of a row, by its place among them.
  std::function<FieldValue(const TxyGraph&, std::int32_t id, std::size_t row)> get;
  std::function<void(TxyGraph&, std::int32_t id, std::size_t row, const FieldValue&)> set;
};

const Section& SectionOf(SectionId section);

}  // namespace tarnwick
