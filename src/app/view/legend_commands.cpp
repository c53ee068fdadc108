// The Legend submenu's commands.
#include "app/window/command_table.h"
#include "desk/commands/command.h"
#include "desk/document/document.h"
#include "graph/axes/plot_metrics.h"
#include "graph/edit/legend_edit.h"

namespace tarnwick {
namespace {

void ToggleLegend(CommandContext& context) {
  const bool shown = context.document->Graph().GetLegend().visible;
  context.document->Edit(shown ? "Hide Legend" : "Show Legend", [&](TxyGraph& graph) {
    Legend legend = graph.GetLegend();
    legend.visible = !shown;
    graph.SetLegend(legend);
  });
}

std::string LegendCaption(const Document& document) {
  return document.Graph().GetLegend().visible ? "Hide &Legend" : "Show &Legend";
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
      {"GraphLegend1", "Show/Hide &Legend", "",
       "Show/Hide Legend |Show/Hide Legend for Current Graph", "legend", Menu::Legend, 0,
       ToolGroup::Show, HasDocument, ToggleLegend, LegendCaption},
      {"GraphResetLegend1", "&Reset Legend", "", "Reset Legend|Draw Standard Legend",
       "legend-reset", Menu::Legend, 0, ToolGroup::None, HasDocument, DrawStandardLegend},
      {"LegendVertical1", "&Verical", "", "Vertical Legend|Draw Legend Entries below Each Other",
       "legend-vertical", Menu::Legend, 1, ToolGroup::None, HasDocument,
       LayLegendOut<LegendLayout::Vertical>, nullptr, IsLaidOut<LegendLayout::Vertical>},
      {"LegendHorizontal1", "&Horizontal", "",
       "Horizontal Legend|Draw Legend Entries beside Each Other", "legend-horizontal", Menu::Legend,
       1, ToolGroup::None, HasDocument, LayLegendOut<LegendLayout::Horizontal>, nullptr,
       IsLaidOut<LegendLayout::Horizontal>},
      {"LegendFree1", "&Free", "", "Free Legend|Keep Place and Size of the Legend as They Are",
       "legend-free", Menu::Legend, 1, ToolGroup::None, HasDocument,
       LayLegendOut<LegendLayout::Free>, nullptr, IsLaidOut<LegendLayout::Free>},
  };
  return kRows;
}

}  // namespace tarnwick
