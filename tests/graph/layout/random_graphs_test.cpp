// Layouts of graphs drawn by lot: what holds of every layout, and where everything came to stand in each.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "graph/layout/finished_look.h"
#include "graph/layout/ruled_metrics.h"
#include "graph/mark.h"
#include "graph/xy_graph.h"
#include "support/lot.h"
#include "support/told.h"

namespace tarnwick {
namespace {

using testing::Lot;
using testing::Told;

std::string Word(Lot& lot, int longest) {
  return std::string(static_cast<std::size_t>(lot.Of(longest + 1)), 'W');
}

void DrawAxis(Lot& lot, AxisState& axis) {
  axis.AutoSizing = axis.AutoStepping = axis.EnableAutoTitle = false;
  axis.Title = Word(lot, 30);
  const double size = std::pow(10, lot.Of(16) - 6);
  axis.Min = lot.OneIn(3) ? 0 : lot.OneIn(2) ? 1000 * size : -lot.Of(5) * size;
  axis.Max = axis.Min + (1 + lot.Of(9)) * size;
  axis.StepSize = (axis.Max - axis.Min) / (1 + lot.Of(30));
  axis.LabelDecimals = lot.Of(4);
  axis.Label_format = static_cast<LabelFormat>(lot.Of(7));
  axis.ShowAxis = !lot.OneIn(6), axis.Gridlines = lot.OneIn(2), axis.Reversed = lot.OneIn(4);
  if (lot.OneIn(4)) {
    axis.Offset_type = static_cast<OffsetType>(lot.Of(4));
    axis.Offset = axis.Offset_type == OffsetType::Percent ? lot.Of(140) - 20 : lot.Of(8);
  }
  if (lot.OneIn(4)) {
    axis.LogScale = true, axis.Min = std::pow(10, lot.Of(8) - 4) * (1 + lot.Of(3));
    axis.Max = axis.Min * std::pow(10, 0.3 + lot.Of(12)), axis.NarrowLogRange = lot.OneIn(8);
    const int divisions[] = {0, 1, 2, 5, 7, 9};
    axis.LogCycleDivisions = divisions[lot.Of(6)];
  } else if (lot.OneIn(4)) {
    axis.ShowAsTime = true, axis.TickType = static_cast<DateTickType>(lot.Of(13));
    const double days[] = {0.01, 0.2, 1, 6, 40, 400, 4000, 40'000};
    axis.Min = 43'000 + lot.Of(4000) / 7.0, axis.Max = axis.Min + days[lot.Of(8)];
    const char* formats[] = {"dd-mmm",       "hh:nn",    "yyyy",
                             "dd mmmm yyyy", "mmm yyyy", "d.m. hh:nn:ss"};
    axis.DateTimeFormat = formats[lot.Of(6)];
  }
}

void DrawMark(Lot& lot, const TxyGraph& graph, Mark& mark) {
  const auto along = [&](AxisId id) {
    const AxisState& axis = graph.Axis(id).State();
    if (lot.OneIn(5)) return lot.OneIn(2) ? axis.Min : axis.Max;
    return axis.Min + (1.2 * lot.Part() - 0.1) * (axis.Max - axis.Min);
  };
  mark.type = static_cast<MarkType>(lot.Of(7));
  mark.status = static_cast<MarkStatus>(lot.OneIn(8) ? 2 : lot.Of(2));
  const AxisId y = mark.status == MarkStatus::XAndY ? AxisId::Y : AxisId::Y2;
  mark.x1 = along(AxisId::X), mark.y1 = along(y);
  mark.x2 = mark.type == MarkType::Point ? lot.Of(40) : along(AxisId::X), mark.y2 = along(y);
  mark.caption = lot.OneIn(4) ? " " : "M" + Word(lot, 12);
}

void DrawGraph(Lot& lot, TxyGraph& graph) {
  Dimensions margins;
  margins.left_margin = lot.Of(120), margins.right_margin = lot.Of(120);
  margins.top_margin = lot.Of(80), margins.bottom_margin = lot.Of(100);
  margins.tick_length = lot.Of(12), margins.graph_title_offset = lot.Of(40);
  margins.x_axis_title_offset = lot.Of(20), margins.y_axis_title_offset = lot.Of(20);
  margins.x_axis_label_offset = lot.Of(10), margins.y_axis_label_offset = lot.Of(10);
  graph.SetDimensions(margins);
  Appearance look;
  look.title_of_graph = Word(lot, 60);
  look.grid_labels_shown = !lot.OneIn(8), look.ticks_are_shown = !lot.OneIn(8);
  look.show_cross_at_zero = lot.OneIn(2);
  look.font_for_labels.size = 6 + lot.Of(6), look.font_for_axes_titles.size = 6 + lot.Of(8);
  look.font_for_title.size = 6 + lot.Of(12);
  graph.SetAppearance(look);
  for (int k = lot.Of(5); k >= 0; --k) {
    auto series = std::make_unique<TSeries>();
    series->SetSeriesName("S" + Word(lot, 20));
    for (int i = 0; i < 5; ++i) series->AddPoint(i, i * k);
    SeriesStyle style;
    style.first_axis = !lot.OneIn(3), style.in_panel = lot.OneIn(6), style.visible = !lot.OneIn(6);
    style.show_in_legend = lot.OneIn(6) ? 0 : 1;
    series->SetStyle(style);
    graph.AddSeries(std::move(series));
  }
  for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2}) {
    AxisState axis = graph.Axis(id).State();
    DrawAxis(lot, axis);
    graph.Axis(id).SetState(axis);
  }
  Legend legend;
  legend.visible = !lot.OneIn(3), legend.layout_mode = static_cast<LegendLayout>(lot.Of(3));
  legend.left = lot.Of(400) - 100, legend.top = lot.Of(300) - 100;
  legend.width = lot.OneIn(3) ? 0 : lot.Of(300), legend.height = lot.Of(120);
  legend.font.size = 6 + lot.Of(6), legend.space_for_symbols = lot.Of(40);
  legend.x_margin = lot.Of(12), legend.y_margin = lot.Of(12);
  graph.SetLegend(legend);
  graph.UpdateScales();
  for (int k = lot.Of(5); k > 0; --k) {
    Mark mark;
    DrawMark(lot, graph, mark);
    graph.Marks().AddMark(mark);
  }
}

/// All but the legend's and those that stand where the user put them.
std::vector<PlacedText> TextsOf(const PlotLayout& layout) {
  std::vector<PlacedText> texts;
  const auto add = [&](const std::optional<PlacedText>& text) {
    if (text) texts.push_back(*text);
  };
  add(layout.title), add(layout.message);
  for (const AxisLayout* const axis : layout.ShownAxes()) {
    texts.insert(texts.end(), axis->labels.begin(), axis->labels.end());
    add(axis->factor), add(axis->title);
  }
  for (const MarkItem& mark : layout.marks)
    if (mark.mark.type != MarkType::Text) add(mark.caption);
  return texts;
}

/// Lines by their number and the sums of their ends.
std::string Told(const std::vector<QLineF>& lines) {
  QLineF sum;
  for (const QLineF& line : lines) sum.setPoints(sum.p1() + line.p1(), sum.p2() + line.p2());
  return std::to_string(lines.size()) + (lines.empty() ? "" : " of " + testing::Told(sum));
}

std::string Painted(const PlacedText& text) {
  return text.font.color == Color() ? "" : " painted";
}

std::string Told(const AxisLayout& axis) {
  if (!axis.shown) return "hidden";
  std::vector<QLineF> major, minor;
  for (const AxisTick& tick : axis.ticks) (tick.major ? major : minor).push_back(tick.line);
  std::string told = Told(axis.line) + " ticks " + Told(major) + ", minor " + Told(minor) +
                     ", grid " + Told(axis.grid) + ", labels";
  for (const PlacedText& label : axis.labels) told += " " + testing::Told(label);
  if (axis.factor) told += ", factor " + testing::Told(*axis.factor);
  if (axis.title) told += ", title " + testing::Told(*axis.title) + Painted(*axis.title);
  return told;
}

std::vector<std::string> Told(const PlotLayout& layout) {
  std::vector<std::string> told{"plot " + Told(layout.plot)};
  if (layout.message) told.push_back("message " + testing::Told(*layout.message));
  if (layout.title) told.back() += ", title " + testing::Told(*layout.title);
  if (layout.cross)
    told.back() += ", cross " + Told(layout.cross->x()) + "," + Told(layout.cross->y());
  for (const char* const name : {"X", "Y", "Y2"})
    told.push_back(std::string(name) + " " + Told(layout.axes[told.size() % 4 - 1]));
  if (layout.panel)
    told.push_back("panel " + Told(layout.panel->plot) + " " + Told(layout.panel->y));
  if (layout.legend) {
    told.push_back("legend " + Told(layout.legend->frame));
    for (const LegendRow& row : layout.legend->rows)
      told.back() += "; " + Told(row.sample) + " " + testing::Told(row.name);
    if (layout.legend->more) told.back() += "; " + testing::Told(*layout.legend->more);
  }
  for (const MarkItem& mark : layout.marks) {
    told.push_back("mark " + std::to_string(static_cast<int>(mark.mark.type)) + " " +
                   Told(mark.line) + ", " + Told(mark.box) + ", lines " + Told(mark.lines) +
                   ", radius " + Told(mark.radius));
    if (mark.caption) told.back() += ", " + testing::Told(*mark.caption);
  }
  return told;
}

constexpr unsigned kGraphs = 60;

PlotLayout LayoutOf(unsigned seed, TxyGraph& graph, QSizeF& size) {
  Lot lot(seed);
  DrawGraph(lot, graph);
  size = QSizeF(60 + lot.Of(700), 60 + lot.Of(500));
  graph.Resize(static_cast<int>(size.width()), static_cast<int>(size.height()));
  return LayoutPlot(graph, size, testing::RuledMetrics());
}

void ExpectApart(const PlotLayout& layout, unsigned seed) {
  const std::vector<PlacedText> texts = TextsOf(layout);
  const QRectF picture = QRectF({}, layout.size).adjusted(-0.6, -0.6, 0.6, 0.6);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_TRUE(picture.contains(texts[i].Box())) << seed << ' ' << testing::Told(texts[i]);
    for (std::size_t k = 0; k < i; ++k) {
      EXPECT_TRUE(texts[i].Ink().intersected(texts[k].Ink()).isEmpty())
          << seed << ' ' << testing::Told(texts[i]) << ' ' << testing::Told(texts[k]);
    }
  }
}

TEST(RandomGraphs, TextsStayInThePictureAndApart) {
  for (unsigned seed = 0; seed < 10 * kGraphs; ++seed) {
    TxyGraph graph;
    QSizeF size;
    ExpectApart(LayoutOf(seed, graph, size), seed);
    if (seed % 10 != 0) continue;
    const TextMetrics metrics;  // of a font that is there
    ExpectApart(LayoutPlot(graph, size, metrics), seed);
    ApplyFinishedLook(graph, size, metrics, {.title = "Run"});
    ExpectApart(LayoutPlot(graph, size, metrics), seed);
  }
}

TEST(RandomGraphs, EverythingHasItsPlace) {
  std::vector<unsigned> seeds{61, 70, 77, 94, 121, 130, 144, 145, 150, 171};
  for (unsigned seed = 0; seed < kGraphs; ++seed) seeds.push_back(seed);
  for (const unsigned seed : seeds) {
    TxyGraph graph;
    QSizeF size;
    const PlotLayout layout = LayoutOf(seed, graph, size);
    testing::ExpectTold("graph/layout/random_graphs.txt",
                        std::to_string(seed) + " " + Told(size.width()) + "x" + Told(size.height()),
                        Told(layout));
  }
}

}  // namespace
}  // namespace tarnwick
