// The texts of the status line under a graph: mouse position and nearest point. Knows axes and picking; knows no widget.
#pragma once

#include <optional>
#include <string>

#include "graph/axes/axis.h"
#include "graph/picking.h"

namespace tarnwick {

class TxyGraph;

/// A data value as the read-out shows it: general number format with 8 digits, a date and time on a time axis.
std::string ValueText(const TAxis& axis, double value);

/// "Mouse X,Y: 1.5, 2" ("Mouse X,Y2: " when the current DataSet is drawn against Y2; "Mouse X,Y:   " without a current
/// DataSet). Values in data units.
std::string MouseText(const TxyGraph& graph, double x, double y);

/// "pnt#3  X,Y: 1, 2" ("  X,Y2: " on the second Y axis; errors stand behind their values, "1, 2 ± 0.5"), or "Point Not Found".
std::string PointText(const TxyGraph& graph, const std::optional<PickedPoint>& point);

struct ReadOut {
  std::string text;                  ///< both pieces, joined by "; "
  std::optional<PickedPoint> point;  ///< of the current DataSet
};

/// What the status line says for the client pixel (px, py).
ReadOut ReadOutAt(const TxyGraph& graph, int px, int py);

/// What the status line says of a point picked without the mouse: "Mouse X,Y:   ; pnt#3  X,Y: 1, 2".
std::string PickedReadOut(const TxyGraph& graph, const std::optional<PickedPoint>& point);

/// While the mouse is elsewhere: "Mouse X,Y:   ; Point#   X,Y :        ".
std::string IdleReadOut();

}  // namespace tarnwick
