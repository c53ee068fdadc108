// Commands that change the scales of a graph, and where its grid is.
#include <initializer_list>

#include "app/window/command_table.h"
#include "desk/commands/command.h"
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
      {"GraphZoomAll1", "&All Axes", "", "Zoom All|Set AutoScale on All Axes", "zoom-all",
       Menu::Zoom, 0, ToolGroup::Zoom, HasDocument,
       AutoScaleAxes<AxisId::X, AxisId::Y, AxisId::Y2>},
      {"GraphZoomX1", "&X Axis", "", "Zoom X|Set AutoScale on X  Axis", "zoom-x", Menu::Zoom, 0,
       ToolGroup::Zoom, HasDocument, AutoScaleAxes<AxisId::X>},
      {"GraphZoomY1", "&Y Axis", "", "Zoom Y|Set AutoScale on Y Axis", "zoom-y", Menu::Zoom, 0,
       ToolGroup::Zoom, HasDocument, AutoScaleAxes<AxisId::Y>},
      {"GraphZoomY2_1", "Y&2 Axis", "", "Zoom Y2|Set AutoScale on Second Y Axis", "zoom-y2",
       Menu::Zoom, 0, ToolGroup::None, HasDocument, AutoScaleAxes<AxisId::Y2>},
      {"GraphResetZoom1", "&Undo Zoom", "", "Undo Zoom|Return to Previous Scales", "zoom-back",
       Menu::Zoom, 1, ToolGroup::Zoom, CanZoomBack, ZoomBack},
      {"GraphGridLast1", "&Grid over DataSets", "",
       "Grid over DataSets|Draw the Grid over the DataSets or behind Them", "grid-front",
       Menu::View, 0, ToolGroup::None, HasDocument, ToggleGridLast, nullptr, IsGridLast},
  };
  return kRows;
}

}  // namespace tarnwick
