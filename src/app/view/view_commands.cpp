// Commands that change the scales of a graph, and where its grid is.
#include "app/view/view_commands.h"
#include <initializer_list>

#include "desk/document/document.h"

namespace tarnwick {
namespace {

void AutoScale(Document& document, std::initializer_list<AxisId> axes) {
  document.Zoom().Remember(document.Graph());
  document.Graph().BeginUpdate();
  for (const AxisId axis : axes) document.Graph().Axis(axis).SetAutoSizing(true);
  document.Graph().EndUpdate();
}

template <AxisId... kAxes>
void AutoScaleAxes(CommandContext& context) {
  AutoScale(*context.document, {kAxes...});
}

bool CanZoomBack(const CommandContext& context) {
  return context.document && !context.document->Zoom().IsEmpty();
}

void ZoomBack(CommandContext& context) {
  context.document->Zoom().GoBack(context.document->Graph());
}

bool IsGridLast(const CommandContext& context) {
  return context.document && context.document->Graph().GetAppearance().grid_drawn_last;
}

void ToggleGridLast(CommandContext& context) {
  const bool last = !IsGridLast(context);
  context.document->Edit(last ? "Bring Grid to Front" : "Send Grid to Back", [&](TxyGraph& graph) {
    Appearance appearance = graph.GetAppearance();
    appearance.grid_drawn_last = last;
    graph.SetAppearance(appearance);
  });
}

}  // namespace

std::span<const Command> ViewCommands() {
  static constexpr Command kRows[] = {
      {.name = "GraphZoomAll1",
       .caption = "&All Axes",
       .hint = "Zoom All|Set AutoScale on All Axes",
       .icon = "zoom-all",
       .menu = Menu::Zoom,
       .tool = ToolGroup::Zoom,
       .popup = 1,
       .enabled = HasDocument,
       .run = AutoScaleAxes<AxisId::X, AxisId::Y, AxisId::Y2>},
      {.name = "GraphZoomX1",
       .caption = "&X Axis",
       .hint = "Zoom X|Set AutoScale on X  Axis",
       .icon = "zoom-x",
       .menu = Menu::Zoom,
       .tool = ToolGroup::Zoom,
       .enabled = HasDocument,
       .run = AutoScaleAxes<AxisId::X>},
      {.name = "GraphZoomY1",
       .caption = "&Y Axis",
       .hint = "Zoom Y|Set AutoScale on Y Axis",
       .icon = "zoom-y",
       .menu = Menu::Zoom,
       .tool = ToolGroup::Zoom,
       .enabled = HasDocument,
       .run = AutoScaleAxes<AxisId::Y>},
      {.name = "GraphZoomY2_1",
       .caption = "Y&2 Axis",
       .hint = "Zoom Y2|Set AutoScale on Second Y Axis",
       .icon = "zoom-y2",
       .menu = Menu::Zoom,
       .enabled = HasDocument,
       .run = AutoScaleAxes<AxisId::Y2>},
      {.name = "GraphResetZoom1",
       .caption = "&Undo Zoom",
       .hint = "Undo Zoom|Return to Previous Scales",
       .icon = "zoom-back",
       .menu = Menu::Zoom,
       .group = 1,
       .tool = ToolGroup::Zoom,
       .popup = 1,
       .enabled = CanZoomBack,
       .run = ZoomBack},
      {.name = "GraphGridLast1",
       .caption = "&Grid over DataSets",
       .hint = "Grid over DataSets|Draw the Grid over the DataSets or behind Them",
       .icon = "grid-front",
       .menu = Menu::View,
       .enabled = HasDocument,
       .run = ToggleGridLast,
       .checked = IsGridLast},
  };
  return kRows;
}

}  // namespace tarnwick
