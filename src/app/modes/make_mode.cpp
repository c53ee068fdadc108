#include "app/canvas/make_mode.h"

#include "app/modes/delete_point_mode.h"
#include "app/modes/draw_mark_mode.h"
#include "app/modes/insert_point_mode.h"
#include "app/modes/move_point_mode.h"
#include "app/modes/pan_mode.h"
#include "app/modes/rest_mode.h"
#include "app/modes/trace_mode.h"
#include "app/modes/zoom_window_mode.h"

namespace tarnwick {

std::unique_ptr<CanvasMode> MakeMode(MouseMode mode) {
  switch (mode) {
    case MouseMode::ZoomWindow:
      return std::make_unique<ZoomWindowMode>();
    case MouseMode::Pan:
      return std::make_unique<PanMode>();
    case MouseMode::DeletePoint:
      return std::make_unique<DeletePointMode>();
    case MouseMode::MovePoint:
      return std::make_unique<MovePointMode>();
    case MouseMode::InsertPoint:
      return std::make_unique<InsertPointMode>();
    case MouseMode::VerticalMark:
      return std::make_unique<DrawMarkMode>(MarkType::Vertical);
    case MouseMode::HorizontalMark:
      return std::make_unique<DrawMarkMode>(MarkType::Horizontal);
    case MouseMode::PointMark:
      return std::make_unique<DrawMarkMode>(MarkType::Point);
    case MouseMode::LineMark:
      return std::make_unique<DrawMarkMode>(MarkType::Line);
    case MouseMode::Trace:
      return std::make_unique<TraceMode>(TraceMode::Lasts::UntilEsc);
    case MouseMode::MoveObject:
    case MouseMode::Rest:
      break;
  }
  return std::make_unique<RestMode>();
}

}  // namespace tarnwick
