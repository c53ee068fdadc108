// Commands that change what a graph shows: scales, legend, marks.
#include <initializer_list>

#include "app/command.h"
#include "app/document.h"

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

void ToggleLegend(CommandContext& context) {
  const bool shown = context.document->Graph().GetLegend().visible;
  context.document->Edit(shown ? "Hide Legend" : "Show Legend", [&](TxyGraph& graph) {
    Legend legend = graph.GetLegend();
    legend.visible = !shown;
    graph.SetLegend(legend);
  });
}

void ToggleMarks(CommandContext& context) {
  const bool shown = context.document->Graph().GetAppearance().marks_are_shown;
  context.document->Edit(shown ? "Hide Marks" : "Show Marks", [&](TxyGraph& graph) {
    Appearance appearance = graph.GetAppearance();
    appearance.marks_are_shown = !shown;
    graph.SetAppearance(appearance);
  });
}

std::string_view LegendCaption(const Document& document) {
  return document.Graph().GetLegend().visible ? "Hide &Legend" : "Show &Legend";
}

std::string_view MarksCaption(const Document& document) {
  return document.Graph().GetAppearance().marks_are_shown ? "Hide &Marks" : "Show &Marks";
}

}  // namespace

std::span<const Command> ViewCommands() {
  static constexpr Command kRows[] = {
      {"GraphLegend1", "Show/Hide &Legend", "",
       "Show/Hide Legend |Show/Hide Legend for Current Graph", "legend", Menu::Legend, 0,
       ToolGroup::Show, HasDocument, ToggleLegend, LegendCaption},
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
      {"MarkShowHide1", "Show/Hide &Marks", "", "Hide/Show Marks|Hide/Show Marks in Current Window",
       "marks", Menu::Mark, 0, ToolGroup::Show, HasDocument, ToggleMarks, MarksCaption},
  };
  return kRows;
}

}  // namespace tarnwick
