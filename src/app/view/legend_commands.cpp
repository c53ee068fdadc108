// The Legend submenu's commands.
#include "app/view/view_commands.h"
#include "desk/document/document.h"
#include "graph/axes/plot_metrics.h"
#include "graph/edit/legend_edit.h"
#include "graph/layout/automatic_legend.h"

namespace tarnwick {
namespace {

void ToggleLegend(CommandContext& context) {
  const bool shown = context.document->Graph().GetLegend().visible;
  context.document->Edit(shown ? "Hide Legend" : "Show Legend", [&](TxyGraph& graph) {
    Legend legend = graph.GetLegend();
    if (legend.no_room) legend = ChosenByHand(legend);  // the user wants it all the same
    legend.visible = !shown;
    graph.SetLegend(legend);
  });
}

CommandFace LegendFace(const CommandContext& context) {
  if (!context.document) return {};
  return {.caption =
              context.document->Graph().GetLegend().visible ? "Hide &Legend" : "Show &Legend"};
}

void DrawStandardLegend(CommandContext& context) {
  context.document->Edit("Reset Legend", &ResetLegend);
}

template <LegendLayout kMode>
void LayLegendOut(CommandContext& context) {
  context.document->Edit("Arrange Legend",
                         [](TxyGraph& graph) { SetLegendLayout(graph, kMode, TextMetrics()); });
}

template <LegendLayout kMode>
bool IsLaidOut(const CommandContext& context) {
  return context.document && context.document->Graph().GetLegend().layout_mode == kMode;
}

}  // namespace

std::span<const Command> LegendCommands() {
  static constexpr Command kRows[] = {
      {.name = "GraphLegend1",
       .caption = "Show/Hide &Legend",
       .hint = "Show/Hide Legend |Show/Hide Legend for Current Graph",
       .icon = "legend",
       .menu = Menu::Legend,
       .tool = ToolGroup::Show,
       .popup = 3,
       .enabled = HasDocument,
       .run = ToggleLegend,
       .face_now = LegendFace},
      {.name = "GraphResetLegend1",
       .caption = "&Reset Legend",
       .hint = "Reset Legend|Draw Standard Legend",
       .icon = "legend-reset",
       .menu = Menu::Legend,
       .enabled = HasDocument,
       .run = DrawStandardLegend},
      {.name = "LegendVertical1",
       .caption = "&Verical",
       .hint = "Vertical Legend|Draw Legend Entries below Each Other",
       .icon = "legend-vertical",
       .menu = Menu::Legend,
       .group = 1,
       .enabled = HasDocument,
       .run = LayLegendOut<LegendLayout::Vertical>,
       .checked = IsLaidOut<LegendLayout::Vertical>},
      {.name = "LegendHorizontal1",
       .caption = "&Horizontal",
       .hint = "Horizontal Legend|Draw Legend Entries beside Each Other",
       .icon = "legend-horizontal",
       .menu = Menu::Legend,
       .group = 1,
       .enabled = HasDocument,
       .run = LayLegendOut<LegendLayout::Horizontal>,
       .checked = IsLaidOut<LegendLayout::Horizontal>},
      {.name = "LegendFree1",
       .caption = "&Free",
       .hint = "Free Legend|Keep Place and Size of the Legend as They Are",
       .icon = "legend-free",
       .menu = Menu::Legend,
       .group = 1,
       .enabled = HasDocument,
       .run = LayLegendOut<LegendLayout::Free>,
       .checked = IsLaidOut<LegendLayout::Free>},
  };
  return kRows;
}

}  // namespace tarnwick
