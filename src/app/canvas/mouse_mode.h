// The ways of working with the mouse on a graph, as commands name them. Knows no widget.
#pragma once

namespace tarnwick {

enum class MouseMode {
  Rest,
  ZoomWindow,
  Pan,
  DeletePoint,
  MovePoint,
  InsertPoint,
  VerticalMark,
  HorizontalMark,
  PointMark,
  LineMark,
  Trace,
  MoveObject  ///< lasts for one drag; no command begins it
};

}  // namespace tarnwick
