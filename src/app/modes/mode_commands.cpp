// Commands that give the mouse another meaning on the graph, until it is done or the command is chosen again.
#include "app/window/command_table.h"
#include "app/window/workspace.h"
#include "desk/commands/command.h"
#include "desk/document/document.h"
#include "graph/edit/point_edit.h"

namespace tarnwick {
namespace {

template <MouseMode kMode>
void Switch(CommandContext& context) {
  context.workspace.SwitchMode(*context.document, kMode);
}

template <MouseMode kMode>
bool IsOn(const CommandContext& context) {
  return context.document && context.workspace.ModeOf(*context.document) == kMode;
}

void SwitchInsertPoint(CommandContext& context) {
  CheckInsert(*context.document->Graph().CurrentSeries());
  Switch<MouseMode::InsertPoint>(context);
}

}  // namespace

std::span<const Command> ModeCommands() {
  static constexpr Command kRows[] = {
      {"EditDelPoint1", "Delete &Bad Point", "Ctrl+B",
       "Delete Point in Current DataSet|Delete Bad Point in Current DataSet", "delete-point",
       Menu::Edit, 3, ToolGroup::Edit, HasDataSet, Switch<MouseMode::DeletePoint>, nullptr,
       IsOn<MouseMode::DeletePoint>},
      {"EditMovePoint1", "&Move Data Point", "Ctrl+M", "Move Point|Move Point in Current DataSet",
       "move-point", Menu::Edit, 3, ToolGroup::Edit, HasDataSet, Switch<MouseMode::MovePoint>,
       nullptr, IsOn<MouseMode::MovePoint>},
      {"editInsertPoint1", "&Insert Data Point", "Ins", "Insert Point|Add Point to Current DataSet",
       "insert-point", Menu::Edit, 3, ToolGroup::None, HasDataSet, SwitchInsertPoint, nullptr,
       IsOn<MouseMode::InsertPoint>},
      {"GraphZoom1", "Zoom &Window", "", "Zoom Window|Drag and Zoom Desired Area", "zoom-window",
       Menu::Zoom, 0, ToolGroup::Zoom, HasDocument, Switch<MouseMode::ZoomWindow>, nullptr,
       IsOn<MouseMode::ZoomWindow>},
      {"GraphPan1", "&Pan", "", "Pan|Drag the Picture along all Axes", "pan", Menu::Zoom, 0,
       ToolGroup::Zoom, HasDocument, Switch<MouseMode::Pan>, nullptr, IsOn<MouseMode::Pan>},
      {"MarkVert1", "&Vertical", "", "Vertical Mark|Draw Vertical Mark", "mark-vertical",
       Menu::Mark, 0, ToolGroup::None, HasDocument, Switch<MouseMode::VerticalMark>, nullptr,
       IsOn<MouseMode::VerticalMark>},
      {"MarkHor1", "&Horizontal", "", "Horizontal Mark|Draw Horizontal Mark", "mark-horizontal",
       Menu::Mark, 0, ToolGroup::None, HasDocument, Switch<MouseMode::HorizontalMark>, nullptr,
       IsOn<MouseMode::HorizontalMark>},
      {"MarkLine1", "&Line", "", "Linear Mark|Draw Linear Mark", "mark-line", Menu::Mark, 0,
       ToolGroup::None, HasDocument, Switch<MouseMode::LineMark>, nullptr,
       IsOn<MouseMode::LineMark>},
      {"MarkPoint1", "&Point", "", "Point Mark|Draw Point Mark", "mark-point", Menu::Mark, 0,
       ToolGroup::None, HasDocument, Switch<MouseMode::PointMark>, nullptr,
       IsOn<MouseMode::PointMark>},
      {"GraphTrace1", "Free &Trace", "", "Free Trace|Draw over the Graph without Changing It",
       "trace", Menu::Mark, 1, ToolGroup::None, HasDocument, Switch<MouseMode::Trace>, nullptr,
       IsOn<MouseMode::Trace>},
  };
  return kRows;
}

}  // namespace tarnwick
