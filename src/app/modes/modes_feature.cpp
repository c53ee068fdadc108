#include "app/modes/modes_feature.h"

#include "app/modes/delete_point_mode.h"
#include "app/modes/draw_mark_mode.h"
#include "app/modes/insert_point_mode.h"
#include "app/modes/move_point_mode.h"
#include "app/modes/pan_mode.h"
#include "app/modes/trace_mode.h"
#include "app/modes/zoom_window_mode.h"
#include "desk/document/document.h"
#include "graph/edit/point_edit.h"

namespace tarnwick {
namespace {

void RequireManualSource(CommandContext& context) {
  CheckInsert(*context.document->Graph().CurrentSeries());
}

}  // namespace

Feature ModesFeature() {
  static constexpr Command kCommands[] = {
      {.name = "EditDelPoint1",
       .caption = "Delete &Bad Point",
       .shortcut = "Ctrl+B",
       .hint = "Delete Point in Current DataSet|Delete Bad Point in Current DataSet",
       .icon = "delete-point",
       .menu = Menu::Edit,
       .group = 3,
       .tool = ToolGroup::Edit,
       .popup = 2,
       .enabled = HasDataSet,
       .mode = MakeMode<DeletePointMode>},
      {.name = "EditMovePoint1",
       .caption = "&Move Data Point",
       .shortcut = "Ctrl+M",
       .hint = "Move Point|Move Point in Current DataSet",
       .icon = "move-point",
       .menu = Menu::Edit,
       .group = 3,
       .tool = ToolGroup::Edit,
       .popup = 2,
       .enabled = HasDataSet,
       .mode = MakeMode<MovePointMode>},
      {.name = "editInsertPoint1",
       .caption = "&Insert Data Point",
       .shortcut = "Ins",
       .hint = "Insert Point|Add Point to Current DataSet",
       .icon = "insert-point",
       .menu = Menu::Edit,
       .group = 3,
       .popup = 2,
       .enabled = HasDataSet,
       .run = RequireManualSource,
       .mode = MakeMode<InsertPointMode>},
      {.name = "GraphZoom1",
       .caption = "Zoom &Window",
       .hint = "Zoom Window|Drag and Zoom Desired Area",
       .icon = "zoom-window",
       .menu = Menu::Zoom,
       .tool = ToolGroup::Zoom,
       .popup = 1,
       .enabled = HasDocument,
       .mode = MakeMode<ZoomWindowMode>},
      {.name = "GraphPan1",
       .caption = "&Pan",
       .hint = "Pan|Drag the Picture along all Axes",
       .icon = "pan",
       .menu = Menu::Zoom,
       .tool = ToolGroup::Zoom,
       .enabled = HasDocument,
       .mode = MakeMode<PanMode>},
      {.name = "MarkVert1",
       .caption = "&Vertical",
       .hint = "Vertical Mark|Draw Vertical Mark",
       .icon = "mark-vertical",
       .menu = Menu::Mark,
       .enabled = HasDocument,
       .mode = MakeDrawMarkMode<MarkType::Vertical>},
      {.name = "MarkHor1",
       .caption = "&Horizontal",
       .hint = "Horizontal Mark|Draw Horizontal Mark",
       .icon = "mark-horizontal",
       .menu = Menu::Mark,
       .enabled = HasDocument,
       .mode = MakeDrawMarkMode<MarkType::Horizontal>},
      {.name = "MarkLine1",
       .caption = "&Line",
       .hint = "Linear Mark|Draw Linear Mark",
       .icon = "mark-line",
       .menu = Menu::Mark,
       .enabled = HasDocument,
       .mode = MakeDrawMarkMode<MarkType::Line>},
      {.name = "MarkPoint1",
       .caption = "&Point",
       .hint = "Point Mark|Draw Point Mark",
       .icon = "mark-point",
       .menu = Menu::Mark,
       .enabled = HasDocument,
       .mode = MakeDrawMarkMode<MarkType::Point>},
      {.name = "MarkText1",
       .caption = "Te&xt",
       .hint = "Text Mark|Write Text on the Graph",
       .icon = "mark-text",
       .menu = Menu::Mark,
       .enabled = HasDocument,
       .mode = MakeDrawMarkMode<MarkType::Text>},
      {.name = "MarkArrow1",
       .caption = "&Arrow",
       .hint = "Arrow Mark|Draw Arrow",
       .icon = "mark-arrow",
       .menu = Menu::Mark,
       .enabled = HasDocument,
       .mode = MakeDrawMarkMode<MarkType::Arrow>},
      {.name = "MarkRectangle1",
       .caption = "&Rectangle",
       .hint = "Rectangle Mark|Draw Rectangle",
       .icon = "mark-rectangle",
       .menu = Menu::Mark,
       .enabled = HasDocument,
       .mode = MakeDrawMarkMode<MarkType::Rectangle>},
      {.name = "GraphTrace1",
       .caption = "Free &Trace",
       .hint = "Free Trace|Draw over the Graph without Changing It",
       .icon = "trace",
       .menu = Menu::Mark,
       .group = 1,
       .enabled = HasDocument,
       .mode = MakeMode<TraceMode>},
  };
  return {.name = "modes", .commands = {kCommands}};
}

}  // namespace tarnwick
