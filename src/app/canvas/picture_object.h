// What of a graph's picture can be taken hold of at a place: its legend, its marks, the ends of those that have two. Knows the
// layout only.
#pragma once

#include <QPainterPath>
#include <QPointF>
#include <cstdint>
#include <optional>

#include "graph/layout/plot_layout.h"

namespace tarnwick {

struct PictureObject {
  enum class Kind { Legend, Mark, MarkOrigin, MarkEnd };
  Kind kind = Kind::Legend;
  std::int32_t id = 0;  ///< of a mark
  bool IsOfMark() const { return kind != Kind::Legend; }
  bool operator==(const PictureObject&) const = default;
};

/// The topmost object under a place; marks are met within a few pixels. Of a line mark long enough to tell them apart, its
/// origin, its end or the whole.
std::optional<PictureObject> ObjectAt(const PlotLayout& layout, QPointF place);
/// Its outline in the picture; empty when it is not there.
QPainterPath OutlineOf(const PlotLayout& layout, const PictureObject& object);

}  // namespace tarnwick
