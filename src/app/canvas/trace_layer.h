// Lines drawn freely over a graph, to point something out: they move with the scales, are no part of the graph and are
// not saved. Knows axes and a painter, no mouse.
#pragma once

#include <QPointF>
#include <cstddef>
#include <optional>
#include <vector>

#include "graph/axes/axis.h"

class QPainter;

namespace tarnwick {

struct PlotLayout;

class TraceLayer {
 public:
  /// Begins a line drawn against this Y axis of an inserted graph, or of the whole one.
  void Begin(std::optional<std::size_t> child, AxisId y_axis) {
    traces_.push_back({child, y_axis, {}});
  }
  /// Adds a point in data units to the line begun last.
  void Add(QPointF value) { traces_.back().values.push_back(value); }
  void Clear() { traces_.clear(); }
  bool IsEmpty() const { return traces_.empty(); }
  std::size_t Count() const { return traces_.size(); }
  /// Draws the lines of one graph, whose layout it is.
  void Paint(QPainter& painter, const PlotLayout& layout, std::optional<std::size_t> child) const;

 private:
  struct Trace {
    std::optional<std::size_t> child;
    AxisId y_axis = AxisId::Y;
    std::vector<QPointF> values;
  };
  std::vector<Trace> traces_;
};

}  // namespace tarnwick
