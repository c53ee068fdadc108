#include <algorithm>
#include <cmath>

#include "graph/layout/plot_layout_parts.h"

namespace tarnwick {
namespace {

constexpr double kBeside = 2;  // pixels kept free beside a label

/// What is left of a level or upright line beside the box.
void AddRest(const QLineF& line, const QRectF& box, std::vector<QLineF>& rest) {
  const bool level = line.dy() == 0;
  const double across = level ? line.y1() : line.x1();
  const double first = level ? box.left() : box.top();
  const double last = level ? box.right() : box.bottom();
  const double from = level ? line.x1() : line.y1();
  const double to = level ? line.x2() : line.y2();
  const bool met = level ? box.top() < across && across < box.bottom()
                         : box.left() < across && across < box.right();
  if (!met || last <= std::min(from, to) || first >= std::max(from, to)) {
    rest.push_back(line);
    return;
  }
  const auto add = [&](double begin, double end) {
    if (end <= begin) return;
    rest.push_back(level ? QLineF(begin, across, end, across) : QLineF(across, begin, across, end));
  };
  add(std::min(from, to), first);
  add(last, std::max(from, to));
}

}  // namespace

void KeepGridOffLabels(PlotLayout& layout) {
  std::vector<QRectF> within;
  for (const AxisLayout* axis : layout.ShownAxes()) {
    for (const PlacedText& label : axis->labels) {
      const QRectF box = label.Ink().boundingRect().adjusted(-kBeside, 0, kBeside, 0);
      if (box.intersects(layout.plot)) within.push_back(box);
    }
  }
  for (AxisLayout& axis : layout.axes) {
    for (const QRectF& box : within) {
      std::vector<QLineF> rest;
      rest.reserve(axis.grid.size() + 1);
      for (const QLineF& line : axis.grid) AddRest(line, box, rest);
      axis.grid = std::move(rest);
    }
  }
}

}  // namespace tarnwick
