// A part of a graph, as one points at it. A plain value; knows no picture.
#pragma once

#include <cstdint>

#include "graph/axes/axis_state.h"

namespace tarnwick {

struct GraphPart {
  enum class Kind : std::uint8_t { Graph, Title, Axis, Legend, DataSet, Mark };
  Kind kind = Kind::Graph;
  std::int32_t id = 0;  ///< an AxisId, the index of a DataSet, the ID of a mark

  bool operator==(const GraphPart&) const = default;
};

constexpr GraphPart PartOf(AxisId axis) {
  return {GraphPart::Kind::Axis, static_cast<std::int32_t>(axis)};
}

}  // namespace tarnwick
