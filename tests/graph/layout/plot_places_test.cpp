// Where LayoutPlot puts what it shows: beside what, at which distance, on which side.
#include "graph/layout/plot_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "graph/axes/plot_metrics.h"
#include "graph/edit/legend_edit.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr QSizeF kSize(640, 480);
const QRectF kPlot(90, 70, 440, 320);

void Near(double value, double expected) {
  EXPECT_NEAR(value, expected, 1e-9);
}

/// A graph whose axes show the given ranges as they are, in the picture kSize with the plot kPlot.
class Places : public ::testing::Test {
 protected:
  Places() {
    Dimensions margins;
    margins.left_margin = 90, margins.top_margin = 70;
    margins.right_margin = 110, margins.bottom_margin = 90;
    margins.tick_length = 5, margins.graph_title_offset = 40;
    margins.x_axis_label_offset = 3, margins.y_axis_label_offset = 6;
    margins.x_axis_title_offset = 7, margins.y_axis_title_offset = 9;
    graph.SetDimensions(margins);
    graph.Resize(640, 480);
    for (const bool first : {true, false}) {
      auto series = std::make_unique<TSeries>();
      for (const double x : {0.0, 10.0}) series->AddPoint(x, first ? 10 * x : x / 100);
      series->SetSeriesName(first ? "first" : "second");
      SeriesStyle style;
      style.line_color = first ? Color() : kSecond;
      style.first_axis = first;
      series->SetStyle(style);
      graph.AddSeries(std::move(series));
    }
    Show(AxisId::X, 0, 10, 1);
    Show(AxisId::Y, 0, 100, 20);
    Show(AxisId::Y2, 0, 0.1, 0.02);
  }

  void Show(AxisId id, double min, double max, double step) {
    AxisState axis = graph.Axis(id).State();
    axis.AutoSizing = axis.AutoStepping = axis.EnableAutoTitle = false;
    axis.ShowAxis = axis.Gridlines = true;
    axis.LabelDecimals = id == AxisId::Y2 ? 2 : 0;
    axis.Min = min, axis.Max = max, axis.StepSize = step;
    axis.Title = id == AxisId::X ? "Time" : id == AxisId::Y ? "Rate" : "Pressure";
    graph.Axis(id).SetState(axis);
    graph.UpdateScales();
  }
  template <class Change>
  void Alter(AxisId id, Change change) {
    AxisState axis = graph.Axis(id).State();
    change(axis);
    graph.Axis(id).SetState(axis);
    graph.UpdateScales();
  }
  PlotLayout Layout() const { return LayoutPlot(graph, kSize, metrics); }

  /// How far a box begins and ends from the plot on the side of an axis: below it, left of it, right of it.
  struct Reach {
    double from, to;
  };
  static Reach Beyond(const PlotLayout& layout, AxisId id, const QRectF& box) {
    const QRectF& plot = layout.plot;
    if (id == AxisId::X) return {box.top() - plot.bottom(), box.bottom() - plot.bottom()};
    if (id == AxisId::Y) return {plot.left() - box.right(), plot.left() - box.left()};
    return {box.left() - plot.right(), box.right() - plot.right()};
  }
  static QRectF LabelsBox(const AxisLayout& axis) {
    QRectF box;
    for (const PlacedText& label : axis.labels) box = box.united(label.Box());
    return box;
  }

  static constexpr Color kSecond = Color::FromRgb(1, 2, 3);
  TextMetrics metrics;
  TxyGraph graph;
};

std::vector<std::string> TextsOf(const AxisLayout& axis) {
  std::vector<std::string> texts;
  for (const PlacedText& label : axis.labels) {
    texts.push_back(
        label.text.text.toStdString() +
        (label.text.superscript.isEmpty() ? "" : "^" + label.text.superscript.toStdString()));
  }
  return texts;
}

TEST_F(Places, EveryTickHasItsLabelBesideIt) {
  const PlotLayout layout = Layout();
  ASSERT_EQ(layout.plot, kPlot);
  const AxisLayout& x = layout.Axis(AxisId::X);
  ASSERT_EQ(x.labels.size(), 11U);
  for (std::size_t i = 0; i < 11; ++i) {
    EXPECT_EQ(x.labels[i].text.text, QString::number(i));
    EXPECT_DOUBLE_EQ(x.labels[i].center.x(), 90 + 44.0 * static_cast<double>(i));
    EXPECT_DOUBLE_EQ(x.labels[i].Box().top(), 390 + 5 + 3);
  }
  EXPECT_EQ(x.line, QLineF(90, 390, 530, 390));
  const AxisLayout& y = layout.Axis(AxisId::Y);
  const AxisLayout& y2 = layout.Axis(AxisId::Y2);
  ASSERT_EQ(y.labels.size(), 6U);
  ASSERT_EQ(y2.labels.size(), 6U);
  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_EQ(y.labels[i].text.text, QString::number(20 * i));
    EXPECT_EQ(y2.labels[i].text.text, QString::number(0.02 * static_cast<double>(i), 'f', 2));
    EXPECT_DOUBLE_EQ(y.labels[i].center.y(), 390 - 64.0 * static_cast<double>(i));
    EXPECT_DOUBLE_EQ(y2.labels[i].center.y(), 390 - 64.0 * static_cast<double>(i));
    EXPECT_DOUBLE_EQ(y.labels[i].Box().right(), 90 - 5 - 6);
    EXPECT_DOUBLE_EQ(y2.labels[i].Box().left(), 530 + 5 + 6);
  }
  EXPECT_EQ(y.line, QLineF(90, 390, 90, 70));
  EXPECT_EQ(y2.line, QLineF(530, 390, 530, 70));
}

TEST_F(Places, TicksGoOutwardsAndMinorOnesDivideTheSteps) {
  struct Row {
    AxisId axis;
    QPointF first, along, outward;  // where the ticks begin, one part, which way they go
    int parts;                      // of a step: of 1 by fives, of 2 by fours
    int steps;
  };
  const Row rows[] = {Row{AxisId::X, {90, 390}, {8.8, 0}, {0, 5}, 5, 10},
                      Row{AxisId::Y, {90, 390}, {0, -16}, {-5, 0}, 4, 5},
                      Row{AxisId::Y2, {530, 390}, {0, -16}, {5, 0}, 4, 5}};
  // Wherever the axes begin.
  for (const double steps_from_zero : {0, 3, -4}) {
    Show(AxisId::X, steps_from_zero, steps_from_zero + 10, 1);
    Show(AxisId::Y, 20 * steps_from_zero, 20 * steps_from_zero + 100, 20);
    const PlotLayout layout = Layout();
    for (const Row& row : rows) {
      const AxisLayout& axis = layout.Axis(row.axis);
      std::vector<AxisTick> ticks = axis.ticks;
      ASSERT_EQ(ticks.size(), static_cast<std::size_t>(row.parts * row.steps + 1));
      std::sort(ticks.begin(), ticks.end(), [&](const AxisTick& a, const AxisTick& b) {
        return QPointF::dotProduct(a.line.p1() - b.line.p1(), row.along) < 0;
      });
      for (int i = 0; i < std::ssize(ticks); ++i) {
        const AxisTick& tick = ticks[static_cast<std::size_t>(i)];
        EXPECT_EQ(tick.major, i % row.parts == 0);
        EXPECT_LT(QLineF(tick.line.p1(), row.first + i * row.along).length(), 1e-9);
        const QPointF tip = tick.line.p1() + (tick.major ? 1 : 0.6) * row.outward;
        EXPECT_LT(QLineF(tick.line.p2(), tip).length(), 1e-9);
      }
      EXPECT_EQ(axis.grid.size(), static_cast<std::size_t>(row.steps + 1));
    }
    EXPECT_EQ(layout.Axis(AxisId::X).grid[3], QLineF(222, 70, 222, 390));
    EXPECT_EQ(layout.Axis(AxisId::Y2).grid[1], QLineF(90, 326, 530, 326));
  }
}

TEST_F(Places, TitlesStandTheirOffsetsFromTheLabels) {
  Appearance appearance = graph.GetAppearance();
  appearance.title_of_graph = "Run 7";
  graph.SetAppearance(appearance);
  const PlotLayout layout = Layout();
  for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2}) {
    const AxisLayout& axis = layout.Axis(id);
    ASSERT_TRUE(axis.title);
    const bool across = id == AxisId::X;
    EXPECT_EQ(axis.title->angle, across ? 0 : 90);
    EXPECT_NEAR(Beyond(layout, id, axis.title->Box()).from,
                Beyond(layout, id, LabelsBox(axis)).to + (across ? 7 : 9), 1e-9);
    across ? Near(axis.title->center.x(), kPlot.center().x())
           : Near(axis.title->center.y(), kPlot.center().y());
  }
  // Two Y axes with one DataSet each: each title in its DataSet's colour.
  EXPECT_EQ(layout.Axis(AxisId::Y2).title->font.color, kSecond);
  EXPECT_EQ(layout.Axis(AxisId::X).title->font.color, appearance.font_for_axes_titles.color);
  ASSERT_TRUE(layout.title);
  EXPECT_EQ(layout.title->center, QPointF(kPlot.center().x(), 70 - 40));
  // Never over the labels, and never beyond the picture.
  Dimensions margins = graph.GetDimensions();
  for (const int offset : {0, 200}) {
    margins.graph_title_offset = offset;
    graph.SetDimensions(margins);
    const QRectF box = Layout().title->Box();
    offset == 0 ? Near(box.bottom(), LabelsBox(layout.Axis(AxisId::Y)).top() - 1)
                : Near(box.top(), 0);
  }
}

// The power of ten of the X labels ends where the plot does, in the line of the title; those of the Y axes stand over their
// labels, before the titles that have no room beside the plot.
TEST_F(Places, FactorsAndTitlesInTheLineAboveThePlot) {
  Dimensions margins = graph.GetDimensions();
  margins.left_margin = margins.right_margin = 34;
  graph.SetDimensions(margins);
  Show(AxisId::X, 0, 1e9, 1e8);
  Show(AxisId::Y, 0, 1e-6, 2e-7);
  Show(AxisId::Y2, 0, 1e7, 2e6);
  const PlotLayout layout = Layout();
  const AxisLayout& x = layout.Axis(AxisId::X);
  ASSERT_TRUE(x.factor && x.title);
  EXPECT_EQ(x.factor->text.superscript, "9");
  EXPECT_DOUBLE_EQ(x.factor->Box().right(), layout.plot.right());
  Near(Beyond(layout, AxisId::X, x.factor->Box()).from,
       Beyond(layout, AxisId::X, LabelsBox(x)).to + 7);
  for (const AxisId id : {AxisId::Y, AxisId::Y2}) {
    const AxisLayout& axis = layout.Axis(id);
    ASSERT_TRUE(axis.factor && axis.title);
    EXPECT_EQ(axis.title->angle, 0);
    const QRectF labels = LabelsBox(axis);
    Near(axis.title->Box().bottom(), std::min(labels.top(), 70.0) - 1);
    Near(axis.factor->Box().bottom(), std::min(labels.top(), 70.0) - 1);
    const Reach title = Beyond(layout, id, axis.title->Box());
    Near(title.to, Beyond(layout, id, labels).to);
    Near(Beyond(layout, id, axis.factor->Box()).to, title.from - 4);
  }
}

// Axes through the middle: labels that a line would strike through give way to its left or above it.
TEST_F(Places, CrossingAxesShiftTheLabelsTheyMeet) {
  Show(AxisId::X, -5, 5, 1);
  Show(AxisId::Y, -100, 100, 50);
  for (const AxisId id : {AxisId::X, AxisId::Y})
    Alter(id, [](AxisState& axis) { axis.Offset_type = OffsetType::Value, axis.Offset = 0; });
  Alter(AxisId::Y2, [](AxisState& axis) { axis.ShowAxis = false; });
  const PlotLayout layout = Layout();
  const AxisLayout& x = layout.Axis(AxisId::X);
  const AxisLayout& y = layout.Axis(AxisId::Y);
  EXPECT_EQ(x.line, QLineF(90, 230, 530, 230));
  EXPECT_EQ(y.line, QLineF(310, 390, 310, 70));
  for (const PlacedText& label : x.labels) {
    const double at = 310 + 44 * QString(label.text.text).replace(u'\u2212', u'-').toDouble();
    at == 310 ? Near(label.Box().right(), 307) : Near(label.center.x(), at);
  }
  for (const PlacedText& label : y.labels) {
    if (label.text.text == "0") Near(label.Box().bottom(), 230);
  }
  Alter(AxisId::X, [](AxisState& axis) { axis.Reversed = true; });
  EXPECT_DOUBLE_EQ(Layout().Axis(AxisId::X).labels.front().Box().bottom(), 230 - 5 - 3);
}

TEST_F(Places, ThePanelHasTheLowerQuarterAndThePlotsX) {
  const PlotLayout before = Layout();
  SeriesStyle style = graph.Series(1).Style();
  style.in_panel = true;
  graph.Series(1).SetStyle(style);
  graph.Series(1).AddPoint(5, -0.06);
  for (const double x : {0.0, 2.5}) {
    Show(AxisId::X, x, 10, 1);
    const PlotLayout layout = Layout();
    EXPECT_EQ(layout.plot, QRectF(90, 70, 440, 232));
    ASSERT_TRUE(layout.panel);
    const AxisLayout& y = layout.panel->y;
    EXPECT_EQ(layout.panel->plot, QRectF(90, 310, 440, 80));
    EXPECT_EQ(layout.Axis(AxisId::X).line, QLineF(90, 390, 530, 390));
    EXPECT_EQ(layout.panel->plot_edge, QLineF(90, 302, 530, 302));
    EXPECT_EQ(layout.Axis(AxisId::X).labels.back().Box(),
              before.Axis(AxisId::X).labels.back().Box());
    // As far above zero as below, on a scale that nothing else is drawn on; points are picked where they are drawn.
    Near(y.scale.Position(0), 350);
    EXPECT_EQ(TextsOf(y), (std::vector<std::string>{"\u22120.2", "\u22120.1", "0.0", "0.1"}));
    EXPECT_EQ(y.title->text.text, "second");
    EXPECT_FALSE(AxisInUse(graph, AxisId::Y2));
    Near(YScaleOf(graph, graph.Series(1)).Position(0.1),
         layout.YScaleOf(graph.Series(1)).Position(0.1));
    Near(graph.Axis(AxisId::Y).Scale().Position(30), layout.Axis(AxisId::Y).scale.Position(30));
  }
  style.visible = false;
  graph.Series(1).SetStyle(style);
  EXPECT_EQ(Layout().plot, kPlot);
}

// Labels within the plot: neither grid lines nor the other axis' line at its corner go through them.
TEST_F(Places, NothingStrikesTheLabelsOfAFlippedAxis) {
  for (const AxisId id : {AxisId::X, AxisId::Y})
    Alter(id, [](AxisState& axis) { axis.Reversed = true; });
  const PlotLayout layout = Layout();
  int cut = 0;
  for (const AxisId of : {AxisId::X, AxisId::Y}) {
    EXPECT_FALSE(layout.Axis(of).labels.empty());
    for (const PlacedText& label : layout.Axis(of).labels) {
      const QRectF ink = label.Ink().boundingRect().adjusted(0.5, 0.5, -0.5, -0.5);
      for (const AxisLayout& axis : layout.axes) {
        for (const QLineF& line : axis.grid) {
          EXPECT_FALSE(
              ink.intersects(QRectF(line.p1(), line.p2()).normalized().adjusted(0, 0, 0.01, 0.01)))
              << label.text.text.toStdString();
          cut += line.length() < std::min(kPlot.width(), kPlot.height()) - 1;
        }
        EXPECT_FALSE(ink.intersects(
            QRectF(axis.line.p1(), axis.line.p2()).normalized().adjusted(0, 0, 0.01, 0.01)))
            << label.text.text.toStdString();
      }
    }
  }
  EXPECT_GT(cut, 0);
}

// The graph's title comes before that of an axis above the plot, which finds room under it or else below the plot.
TEST_F(Places, AnAxisAboveThePlotLeavesTheTitleItsPlace) {
  Appearance appearance = graph.GetAppearance();
  appearance.title_of_graph = "Run 7";
  graph.SetAppearance(appearance);
  Alter(AxisId::X,
        [](AxisState& axis) { axis.Reversed = true, axis.Offset_type = OffsetType::OtherMax; });
  for (const int margin : {70, 33, 28}) {
    Dimensions margins = graph.GetDimensions();
    margins.top_margin = margin;
    margins.graph_title_offset = 17;
    graph.SetDimensions(margins);
    const PlotLayout layout = Layout();
    const auto& axis = layout.Axis(AxisId::X);
    ASSERT_TRUE(layout.title && axis.title) << margin;
    EXPECT_EQ(axis.labels.size(), 11U);
    EXPECT_EQ(layout.title->font.size < appearance.font_for_title.size, margin == 28);
    EXPECT_FALSE(axis.title->Ink().intersects(layout.title->Ink()));
    EXPECT_EQ(axis.title->center.y() < layout.plot.top(), margin == 70);
  }
}

// In the corner of the plot a label goes to the side on which the other axis has none.
TEST_F(Places, LabelsInTheCornerKeepApart) {
  Alter(AxisId::X, [](AxisState& axis) { axis.Reversed = true; });
  const auto first = [&](AxisId id) { return Layout().Axis(id).labels.front().Box(); };
  Near(first(AxisId::X).left(), 90 + 3);
  Near(first(AxisId::Y).center().y(), 390);
  Alter(AxisId::Y, [](AxisState& axis) { axis.Reversed = true; });
  Near(first(AxisId::X).right(), 90 - 3);
  Near(first(AxisId::Y).top(), 390);
}

// "−2" that has to leave the corner is not written where "0" stands, which would read "−20".
TEST_F(Places, ALabelOutOfTheCornerKeepsOffItsNeighbour) {
  Alter(AxisId::X, [](AxisState& axis) { axis.Reversed = true; });
  for (const double end : {18.0, 70.0}) {
    Show(AxisId::X, -2, end, 2);
    Alter(AxisId::X, [](AxisState& axis) { axis.Reversed = true; });
    const std::vector<std::string> texts = TextsOf(Layout().Axis(AxisId::X));
    EXPECT_EQ(std::ranges::count(texts, "\u22122"), end == 18 ? 1 : 0);
    EXPECT_EQ(std::ranges::count(texts, "0"), 1);
  }
}

TEST_F(Places, ATitleIsWrittenSmallerBeforeItIsCut) {
  for (const int letters : {60, 80, 120}) {
    const std::string name(static_cast<std::size_t>(letters), 'n');
    for (const AxisId id : {AxisId::X, AxisId::Y})
      Alter(id, [&](AxisState& axis) { axis.Title = name; });
    for (const AxisId id : {AxisId::X, AxisId::Y}) {
      const PlacedText title = Layout().Axis(id).title.value();
      EXPECT_EQ(title.text.text == QString::fromStdString(name), letters < 120);
      EXPECT_EQ(title.font.size < 8, letters == 80) << title.font.size;
    }
  }
}

TEST_F(Places, LabelsThatFindNoRoomAreThinnedToRoundOnesOrTurned) {
  Show(AxisId::X, -3, 97, 1);
  const auto labels = [&] { return TextsOf(Layout().Axis(AxisId::X)); };
  EXPECT_EQ(labels(),
            (std::vector<std::string>{"0",  "5",  "10", "15", "20", "25", "30", "35", "40", "45",
                                      "50", "55", "60", "65", "70", "75", "80", "85", "90", "95"}));
  Alter(AxisId::X, [](AxisState& axis) {
    axis.Min = 1, axis.Max = 1e8, axis.LogScale = true, axis.LogCycleDivisions = 0;
  });
  EXPECT_EQ(labels().front(), "10^0");
  EXPECT_EQ(labels().size(), 9U);
  // Powers of ten where zeros would be hard to count, only.
  const struct {
    double min, max;
    const char* first;
  } decades[] = {{1, 1e6, "10^0"},        {1, 1e5, "1"},       {1e-4, 1, "0.0001"},
                 {1e-5, 1, "10^\u22125"}, {1e4, 1e6, "10000"}, {1e4, 1e7, "10^4"}};
  for (const auto& row : decades) {
    Alter(AxisId::X, [&](AxisState& axis) { axis.Min = row.min, axis.Max = row.max; });
    EXPECT_EQ(labels().front(), row.first) << row.max;
  }
  // A few long dates have room upright or slanted only, and then end at their ticks.
  Alter(AxisId::X, [](AxisState& axis) {
    axis.LogScale = false, axis.ShowAsTime = true, axis.TickType = DateTickType::Day;
    axis.Min = 45000, axis.Max = 45006, axis.StepSize = 1;
    axis.DateTimeFormat = "dd mmmm yyyy";
  });
  Dimensions margins = graph.GetDimensions();
  margins.left_margin = 310;
  graph.SetDimensions(margins);
  const AxisLayout x = Layout().Axis(AxisId::X);
  ASSERT_GT(x.labels.size(), 3U);
  EXPECT_EQ(x.labels.front().angle, 45);
  const PlacedText& slanted = x.labels.front();
  EXPECT_NEAR(slanted.Box().top(), 398, 1e-9);
  const double turn = std::sqrt(0.5);
  EXPECT_NEAR(slanted.center.x() + slanted.size.width() * turn / 2, x.ticks.front().line.x1(),
              1e-9);

  // They need room below for the longest and the title.
  double widest = 0;
  for (const PlacedText& label : x.labels) widest = std::max(widest, label.size.width());
  const double away = (widest + slanted.size.height()) * turn;
  const double title = metrics.LineHeight(graph.GetAppearance().font_for_axes_titles);
  const int enough = static_cast<int>(std::ceil(8 + away + title - 0.5));
  for (const int bottom : {enough, enough - 1}) {
    margins.bottom_margin = bottom;
    graph.SetDimensions(margins);
    const PlacedText first = Layout().Axis(AxisId::X).labels.front();
    EXPECT_EQ(first.angle == 45 && first.text.text == slanted.text.text, bottom == enough);
  }
}

TEST_F(Places, LegendRowsFollowEachOtherDownOrAcross) {
  Legend legend = graph.GetLegend();
  legend.left = 200, legend.top = 100, legend.x_margin = 8, legend.y_margin = 3;
  legend.space_for_symbols = 30;
  for (const LegendLayout mode :
       {LegendLayout::Vertical, LegendLayout::Horizontal, LegendLayout::Free}) {
    legend.layout_mode = mode, legend.width = 250, legend.height = 90;
    graph.SetLegend(legend);
    const PlotLayout layout = Layout();
    ASSERT_TRUE(layout.legend && layout.legend->rows.size() == 2 && !layout.legend->more);
    const LegendBox& box = *layout.legend;
    const double row = metrics.LineHeight(legend.font) + 2;
    const double first = metrics.SizeOf({"first", {}}, legend.font).width();
    const double second = metrics.SizeOf({"second", {}}, legend.font).width();
    EXPECT_EQ(metrics.Elided("first", legend.font, first), "first") << "room for all of it";
    const bool across = mode == LegendLayout::Horizontal;
    const QPointF next = across ? QPointF(30 + 5 + first + 10, 0) : QPointF(0, row);
    EXPECT_EQ(box.rows[0].sample, QRectF(208, 103, 30, row));
    EXPECT_EQ(box.rows[1].sample, QRectF(QPointF(208, 103) + next, QSizeF(30, row)));
    EXPECT_NEAR(box.rows[1].name.Box().left(), 208 + next.x() + 35, 1e-9);
    EXPECT_NEAR(box.rows[1].name.center.y(), 103 + next.y() + row / 2, 1e-9);
    const double width = 8 + 35 + std::max(first, second) + 8;
    EXPECT_EQ(box.frame.topLeft(), QPointF(200, 100));
    EXPECT_NEAR(box.frame.width(),
                across                       ? 8 + 35 + first + 10 + 35 + second + 8
                : mode == LegendLayout::Free ? 250
                                             : width,
                1e-9);
    EXPECT_NEAR(box.frame.height(), mode == LegendLayout::Free ? 90 : 6 + (across ? row : 2 * row),
                1e-9);
  }
  // From the far edges; and over the labels it gives way into the plot's corner, unless it stands free.
  legend.layout_mode = LegendLayout::Vertical;
  legend.left = -120, legend.top = -100;
  graph.SetLegend(legend);
  EXPECT_EQ(Layout().legend->frame.bottomRight(), QPointF(520, 380));
  legend.left = 60, legend.top = 375;
  graph.SetLegend(legend);
  EXPECT_EQ(Layout().legend->frame.topLeft(), QPointF(98, 78));
  legend.layout_mode = LegendLayout::Free;
  graph.SetLegend(legend);
  EXPECT_EQ(Layout().legend->frame.topLeft(), QPointF(60, 375));
  legend.left = legend.top = 0;
  graph.SetLegend(legend);
  EXPECT_EQ(Layout().legend->frame.topLeft(), QPointF(0, 0));
}

TEST_F(Places, AFreeLegendBeginsAsLargeAsItsEntriesBelowEachOther) {
  const auto look = [&] { return graph.GetLegend(); };
  SetLegendLayout(graph, LegendLayout::Vertical, metrics);
  const QRectF vertical = Layout().legend->frame;
  SetLegendLayout(graph, LegendLayout::Horizontal, metrics);
  EXPECT_EQ(look().width, 0);
  const QRectF horizontal = Layout().legend->frame;
  EXPECT_GT(horizontal.width(), vertical.width());
  SetLegendLayout(graph, LegendLayout::Free, metrics);
  EXPECT_EQ(look().width, std::ceil(vertical.width()));
  EXPECT_EQ(look().height, std::ceil(vertical.height()));
  EXPECT_EQ(Layout().legend->frame.topLeft(), QPointF(look().left, look().top));
  SetLegendLayout(graph, LegendLayout::Horizontal, metrics);
  EXPECT_EQ(look().width, 0) << "a width of its own would squeeze the others";
  EXPECT_EQ(Layout().legend->frame.width(), horizontal.width());
}

TEST_F(Places, CaptionsStandBesideTheirMarksWhereNothingStrikesThem) {
  const QSizeF caption = metrics.SizeOf({"here", {}}, graph.GetAppearance().font_for_labels);
  const double w = caption.width() / 2, h = caption.height() / 2;
  struct Row {
    Mark mark;
    QPointF center;
    QLineF line;
  };
  const auto mark = [](MarkType type, double x1, double y1, double x2, double y2,
                       const char* text = "here") {
    return Mark{0, x1, y1, x2, y2, {}, text, type, MarkStatus::XAndY};
  };
  const Row rows[] = {
      {mark(MarkType::Vertical, 5, 0, 0, 0), {310 + 4 + w, 70 + 4 + h}, {310, 390, 310, 70}},
      {mark(MarkType::Vertical, 9.9, 0, 0, 0),
       {525.6 - 4 - w, 70 + 4 + h},
       {525.6, 390, 525.6, 70}},
      {mark(MarkType::Horizontal, 0, 50, 0, 0), {530 - 4 - w, 230 - 1 - h}, {90, 230, 530, 230}},
      {mark(MarkType::Horizontal, 0, 99, 0, 0), {530 - 4 - w, 73.2 + 1 + h}, {90, 73.2, 530, 73.2}},
      {mark(MarkType::Point, 5, 50, 12, 0), {310 + 6 + 4 + w, 230 - 6 - h}, {}},
      {mark(MarkType::Point, 9.8, 98, -1, 0), {521.2 - 4 - 4 - w, 76.4 + 4 + h}, {}},
      {mark(MarkType::Line, 5, 50, 5.2, 50), {318.8 + 4 + w, 230}, {310, 230, 318.8, 230}},
      {mark(MarkType::Line, -5, 0, 5, 100), {200 + 4 + w, 150 + h}, {90, 230, 310, 70}},
      {mark(MarkType::Arrow, 5, 50, 2, 20), {310 + 4 + w, 230 - h}, {310, 230, 178, 326}},
      {mark(MarkType::Rectangle, 2, 20, 6, 60), {266, 198 - 1 - h}, {178, 326, 354, 198}},
      {mark(MarkType::Rectangle, 2, 60, 6, 99), {266, 73.2 + 1 + h}, {178, 198, 354, 73.2}},
      {mark(MarkType::Text, 5, 50, 0, 0), {310 + w, 230}, {}},
      {mark(MarkType::Text, 9.9, 99, 0, 0), {530 - w, 70 + h}, {}},
      {mark(MarkType::Text, 0, 1, 0, 0), {90 + w, 390 - h}, {}},
  };
  Legend legend;
  legend.visible = false;
  graph.SetLegend(legend);
  for (const Row& row : rows) {
    graph.Marks().ClearMarks();
    graph.Marks().AddMark(row.mark);
    const PlotLayout layout = Layout();
    ASSERT_EQ(layout.marks.size(), 1U);
    const MarkItem& item = layout.marks.front();
    ASSERT_TRUE(item.caption);
    EXPECT_LT(QLineF(item.caption->center, row.center).length(), 1e-6)
        << row.mark.x1 << ',' << row.mark.y1 << ": " << item.caption->center.x() << ','
        << item.caption->center.y();
    if (row.line.isNull()) continue;
    EXPECT_LT(QLineF(item.line.p1(), row.line.p1()).length(), 1e-6);
    EXPECT_LT(QLineF(item.line.p2(), row.line.p2()).length(), 1e-6);
  }
  // Of a rectangle its edges within the plot are drawn, cut where it ends.
  const struct {
    Mark mark;
    std::vector<QLineF> edges;
  } boxes[] = {
      {mark(MarkType::Rectangle, 2, 20, 6, 60, ""),
       {{178, 198, 354, 198}, {354, 198, 354, 326}, {354, 326, 178, 326}, {178, 326, 178, 198}}},
      {mark(MarkType::Rectangle, 12, 60, 6, 20, ""),
       {{354, 198, 530, 198}, {530, 326, 354, 326}, {354, 326, 354, 198}}},
      {mark(MarkType::Rectangle, -1, -1, 12, 60, ""), {{90, 198, 530, 198}}},
      {mark(MarkType::Rectangle, 2, 20, 6, 20, ""), {{178, 326, 354, 326}, {354, 326, 178, 326}}},
  };
  for (const auto& box : boxes) {
    graph.Marks().ClearMarks();
    graph.Marks().AddMark(box.mark);
    EXPECT_EQ(Layout().marks.at(0).lines, box.edges) << box.mark.x1 << ' ' << box.mark.x2;
  }
  // Where a caption stands another gives way along its line.
  for (const MarkType type : {MarkType::Horizontal, MarkType::Vertical}) {
    graph.Marks().ClearMarks();
    for (int i = 0; i < 3; ++i) graph.Marks().AddMark(mark(type, 5, 50, 0, 0));
    const QPointF third = Layout().marks[2].caption->center;
    type == MarkType::Vertical ? Near(third.y(), 70 + 4 + 3 * h) : Near(third.x(), 522 - 3 * w);
  }
  // Marks beyond the axes are none, and those for the second Y axis go by it.
  graph.Marks().ClearMarks();
  for (const double at : {-0.1, 10.1}) graph.Marks().AddMark(mark(MarkType::Vertical, at, 0, 0, 0));
  Mark second = mark(MarkType::Horizontal, 0, 0.05, 0, 0);
  second.status = MarkStatus::XAndY2;
  graph.Marks().AddMark(second);
  const PlotLayout layout = Layout();
  ASSERT_EQ(layout.marks.size(), 1U);
  EXPECT_DOUBLE_EQ(layout.marks[0].line.y1(), 230);
}

TEST_F(Places, TheCrossAtZeroNeedsTwoLinearAxesThatHoldIt) {
  const struct {
    bool asked, log_x, log_y;
    double x_min, y_min;
    std::optional<QPointF> cross;
  } rows[] = {{true, false, false, 0, 0, QPointF(90, 390)},
              {true, false, false, -5, -20, QPointF(90 + 5 * 44, 390 - 64)},
              {false, false, false, -5, -20, {}},
              {true, false, false, 1, -20, {}},
              {true, false, false, -5, 20, {}},
              {true, true, false, 1, -20, {}},
              {true, false, true, -5, 20, {}},
              {false, true, true, 1, 20, {}}};
  Appearance appearance = graph.GetAppearance();
  for (const auto& row : rows) {
    appearance.show_cross_at_zero = row.asked;
    graph.SetAppearance(appearance);
    Show(AxisId::X, row.x_min, row.x_min + 10, 1);
    Show(AxisId::Y, row.y_min, row.y_min + 100, 20);
    Alter(AxisId::X, [&](AxisState& axis) { axis.LogScale = row.log_x; });
    Alter(AxisId::Y, [&](AxisState& axis) { axis.LogScale = row.log_y; });
    EXPECT_EQ(Layout().cross, row.cross) << row.asked << row.log_x << row.log_y << row.x_min;
  }
}

}  // namespace
}  // namespace tarnwick
