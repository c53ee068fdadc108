// What is to be said of a value that the user gives a field, before the graph gets it: what it would ignore or could not draw is
// refused with the reason, what the user may not expect is told. Knows graphs; no widget.
#pragma once

#include <string>

#include "editors/graph/pages.h"

namespace tarnwick {

class TxyGraph;

/// Of a value for a field of the axis, DataSet or mark `id`.
FieldRemark Judge(const TxyGraph& graph, const PageField& field, std::int32_t id,
                  const FieldValue& value);

/// Why the field has no effect as the graph is now; empty when it has.
std::string IdleReason(const TxyGraph& graph, const PageField& field, std::int32_t id);

/// The axis along which a value of the field lies: that of its row for an axis, and for a mark's numbers.
AxisId AxisOfValue(const TxyGraph& graph, const PageField& field, std::int32_t id);

}  // namespace tarnwick
