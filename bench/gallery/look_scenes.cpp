#include <array>
#include <cmath>

#include "graph/axes/plot_metrics.h"
#include "graph/edit/child_edit.h"
#include "graph/files/import_into_graph.h"
#include "graph/layout/finished_look.h"
#include "scene.h"

namespace tarnwick::gallery {
namespace {

using Path = std::filesystem::path;

void BuildMarks(TxyGraph& graph, const Path& examples) {
  ImportIntoGraph(graph, examples / "mercury_lines.csv");
  Finish(graph, "mercury_lines");
  const Color red = Color::FromRgb(0xC0, 0x20, 0x20);
  const Color green = Color::FromRgb(0x10, 0x70, 0x40);
  Mark mark;
  mark.color = red;
  mark.type = MarkType::Vertical;
  mark.x1 = 546.07;
  mark.caption = "546.07 nm";
  graph.Marks().AddMark(mark);
  mark.x1 = 576.96;
  mark.caption = "576.96 nm";
  graph.Marks().AddMark(mark);
  mark.x1 = 579.07;
  mark.caption = "579.07 nm";
  graph.Marks().AddMark(mark);
  mark.type = MarkType::Horizontal;
  mark.color = green;
  mark.y1 = 1000;
  mark.caption = "threshold";
  graph.Marks().AddMark(mark);
  mark.type = MarkType::Point;
  mark.x1 = 560;
  mark.y1 = 4500;
  mark.x2 = 14;
  mark.caption = "point";
  graph.Marks().AddMark(mark);
  mark.type = MarkType::Line;
  mark.x1 = 550;
  mark.y1 = 6000;
  mark.x2 = 572;
  mark.y2 = 7800;
  mark.caption = "line";
  graph.Marks().AddMark(mark);
  graph.MarksChanged();
}

void BuildChild(TxyGraph& graph, const Path& examples) {
  ImportIntoGraph(graph, examples / "mercury_lines.csv");
  Finish(graph, "An inserted graph");
  TxyChildGr& child = *graph.Children()[InsertChild(graph, "The yellow lines")];
  SetChildPlace(graph, 0, {230, 50, 300, 200});
  ImportIntoGraph(child, examples / "mercury_lines.csv");
  child.Axis(AxisId::X).SetMin(575);
  child.Axis(AxisId::X).SetMax(581);
  child.Axis(AxisId::Y).SetMin(0);
  child.Axis(AxisId::Y).SetMax(4000);
  ApplyFinishedLook(child, QSizeF(300, 200), TextMetrics(), {});
}

/// Three curves with the legend in a layout.
void BuildLegend(TxyGraph& graph, LegendLayout layout) {
  for (const double width : {1.0, 2.0, 3.0}) {
    AddFunction(graph, "width " + std::to_string(static_cast<int>(width)), -10, 10, 201,
                [=](double x) { return width / (x * x + width * width) / M_PI; });
  }
  SetTitles(graph, "x", "density");
  Finish(graph, "Lorentz distributions");
  Legend legend = graph.GetLegend();
  legend.visible = true;
  legend.layout_mode = layout;
  if (layout == LegendLayout::Horizontal) {
    legend.left = 100;
    legend.top = 40;
  }
  if (layout == LegendLayout::Free) {
    legend.left = 70;
    legend.top = 50;
    legend.width = 150;
    legend.height = 80;
    legend.color = Color::FromRgb(0xF2, 0xF6, 0xFA);
  }
  graph.SetLegend(legend);
}

void BuildVertical(TxyGraph& graph, const Path&) {
  BuildLegend(graph, LegendLayout::Vertical);
}
void BuildHorizontal(TxyGraph& graph, const Path&) {
  BuildLegend(graph, LegendLayout::Horizontal);
}
void BuildFree(TxyGraph& graph, const Path&) {
  BuildLegend(graph, LegendLayout::Free);
}

void BuildSymbols(TxyGraph& graph, const Path&) {
  constexpr std::array kNames = {"circle", "square", "diamond", "triangle up", "triangle down",
                                 "plus",   "cross",  "star",    "dot"};
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    TSeries& series = AddFunction(graph, kNames[i], 1, 12, 12, [=](double x) {
      return static_cast<double>(kNames.size() - i) + 0.3 * std::sin(x);
    });
    SeriesStyle style = series.Style();
    style.symbol = static_cast<SymbolShape>(i);
    series.SetStyle(style);
  }
  SetTitles(graph, "symbol size", "symbol");
  Finish(graph, "Symbols and lines");
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    SeriesStyle style = graph.Series(i).Style();
    style.symbol_size = 5 + static_cast<std::int32_t>(i);
    style.line_style = static_cast<LineStyle>(i % 6);
    style.line_width = i < 5 ? 1 : 2;
    style.fill_symbols = i % 2 == 0;
    graph.Series(i).SetStyle(style);
  }
}

void BuildCrossing(TxyGraph& graph, const Path&) {
  AddFunction(graph, "x³ - 3x", -2.5, 2.5, 101, [](double x) { return x * x * x - 3 * x; });
  AddFunction(graph, "3x² - 3", -2.5, 2.5, 101, [](double x) { return 3 * x * x - 3; });
  SetTitles(graph, "x", "y");
  Finish(graph, "Axes through zero");
  for (const AxisId id : {AxisId::X, AxisId::Y}) {
    SetLook(graph.Axis(id), &AxisLook::Offset_type, OffsetType::Value);
    SetLook(graph.Axis(id), &AxisLook::Offset, 0);
  }
}

/// Colours for a dark room.
void BuildNight(TxyGraph& graph, const Path& examples) {
  ImportIntoGraph(graph, examples / "reactor_log.tsv");
  Finish(graph, "Colours for a dark room");
  const Color ink = Color::FromRgb(0xD8, 0xDC, 0xE0);
  Appearance appearance = graph.GetAppearance();
  appearance.margin_color = Color::FromRgb(0x18, 0x1C, 0x22);
  appearance.color = Color::FromRgb(0x22, 0x28, 0x30);
  appearance.axes_color = ink;
  appearance.grid_color = Color::FromRgb(0x40, 0x48, 0x52);
  appearance.grid_line_style = LineStyle::Dot;
  appearance.font_for_labels.color = ink;
  appearance.font_for_axes_titles.color = ink;
  appearance.font_for_title.color = ink;
  graph.SetAppearance(appearance);
  Legend legend = graph.GetLegend();
  legend.color = appearance.color;
  legend.font.color = ink;
  graph.SetLegend(legend);
  const std::array kColors = {Color::FromRgb(0x66, 0xC2, 0xFF), Color::FromRgb(0xFF, 0xB0, 0x50),
                              Color::FromRgb(0x70, 0xE0, 0xA0)};
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    SeriesStyle style = graph.Series(i).Style();
    style.line_color = style.symbol_color = kColors[i % kColors.size()];
    graph.Series(i).SetStyle(style);
  }
  for (const AxisId id : {AxisId::X, AxisId::Y})
    SetLook(graph.Axis(id), &AxisLook::Gridlines, true);
}

/// As the desktop makes a graph before anybody arranged it.
void BuildDefault(TxyGraph& graph, const Path& examples) {
  DefaultAppearance(graph, "Graph 1");
  ImportIntoGraph(graph, examples / "reactor_log.tsv");
}

void BuildWaiting(TxyGraph& graph, const Path&) {
  DefaultAppearance(graph, "Graph 1");
}

void BuildError(TxyGraph& graph, const Path& examples) {
  ImportIntoGraph(graph, examples / "pendulum.csv");
  Finish(graph, "pendulum");
  graph.Axis(AxisId::Y).SetMin(10);
  graph.Axis(AxisId::Y).SetMax(-10);
}

}  // namespace

std::vector<Scene> LookScenes() {
  return {
      {"marks", "Marks", BuildMarks},
      {"inserted-graph", "Inserted graph", BuildChild},
      {"legend-vertical", "Legend: vertical", BuildVertical},
      {"legend-horizontal", "Legend: horizontal", BuildHorizontal},
      {"legend-free", "Legend: free", BuildFree},
      {"symbols", "Symbols, line styles", BuildSymbols},
      {"crossing-axes", "Axes through zero", BuildCrossing},
      {"dark-colours", "Dark colours", BuildNight},
      {"default", "Not arranged yet", BuildDefault},
      {"waiting", "Before any data", BuildWaiting},
      {"inconsistent", "Inconsistent axis", BuildError},
  };
}

}  // namespace tarnwick::gallery
