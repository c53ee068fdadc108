// Every part of a graph in a colour of its own: which pixels have it is known from the ranges and margins.
#include "graph/paint/paint_plot.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <functional>
#include <string>

#include "graph/axes/plot_metrics.h"
#include "graph/layout/plot_layout.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

Color Numbered(int number) {
  return Color::FromRgb(static_cast<std::uint8_t>(40 * (number % 6)),
                        static_cast<std::uint8_t>(10 * number),
                        static_cast<std::uint8_t>(255 - 7 * number));
}

QRgb Rgb(Color color) {
  return qRgb(color.Red(), color.Green(), color.Blue());
}

enum Part { kAxes = 1, kPlotArea, kMargins, kGrid, kCross, kMark, kLegend, kLine, kChild };

/// X and Y from 0 to 10 over 200 by 100 pixels, from (50, 40) on: one tick and grid line every 20 by 10 pixels, no texts.
class PaintPlotParts : public ::testing::Test {
 protected:
  PaintPlotParts() {
    Dimensions margins;
    margins.left_margin = 50, margins.right_margin = 50;
    margins.top_margin = 40, margins.bottom_margin = 60;
    margins.tick_length = 4;
    graph.SetDimensions(margins);
    graph.Resize(300, 200);
    Alter([](Appearance& look) {
      look.axes_color = Numbered(kAxes), look.color = Numbered(kPlotArea);
      look.margin_color = Numbered(kMargins), look.grid_color = Numbered(kGrid);
      look.color_of_cross = Numbered(kCross);
      look.grid_labels_shown = false, look.ticks_are_shown = false;
    });
    for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2}) {
      AxisState axis = graph.Axis(id).State();
      axis.AutoSizing = axis.AutoStepping = axis.EnableAutoTitle = axis.ShowAxis = false;
      axis.Gridlines = false;
      axis.Min = 0, axis.Max = 10, axis.StepSize = 1, axis.Title = "";
      graph.Axis(id).SetState(axis);
    }
    auto series = std::make_unique<TSeries>();
    for (const double x : {2.0, 8.0}) series->AddPoint(x, 5.05);
    SeriesStyle style;
    style.line_color = Numbered(kLine);
    style.show_symbols = false;
    series->SetStyle(style);
    graph.AddSeries(std::move(series));
    SetLegend(false);
    graph.UpdateScales();
  }

  void Alter(const std::function<void(Appearance&)>& change) {
    Appearance look = graph.GetAppearance();
    change(look);
    graph.SetAppearance(look);
  }
  void AlterAxis(AxisId id, const std::function<void(AxisState&)>& change) {
    AxisState axis = graph.Axis(id).State();
    change(axis);
    graph.Axis(id).SetState(axis);
    graph.UpdateScales();
  }
  void SetLegend(bool visible) {
    Legend legend;
    legend.visible = visible, legend.color = Numbered(kLegend), legend.border_style = 0;
    legend.layout_mode = LegendLayout::Free;
    legend.left = 60, legend.top = 50, legend.width = 70, legend.height = 30;
    graph.SetLegend(legend);
  }

  QImage Painted(PaintTarget target = PaintTarget::Screen, double ratio = 1) const {
    QImage image(QSize(300, 200) * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintPlot(painter, graph, LayoutPlot(graph, QSizeF(300, 200), TextMetrics()), target);
    return image;
  }

  /// The pixels of exactly this colour: their number and the box around them.
  struct Pixels {
    int count = 0;
    QRect box;
    bool operator==(const Pixels&) const = default;
  };
  static Pixels Of(Color color, const QImage& image) {
    Pixels found;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixel(x, y) != Rgb(color)) continue;
        ++found.count;
        found.box = found.box.united(QRect(x, y, 1, 1));
      }
    }
    return found;
  }
  void Expect(Part part, const Pixels& expected, PaintTarget target = PaintTarget::Screen,
              double ratio = 1) const {
    const Pixels found = Of(Numbered(part), Painted(target, ratio));
    EXPECT_EQ(found.count, expected.count) << part;
    EXPECT_EQ(found.box, expected.box) << part;
  }

  TxyGraph graph;
};

TEST_F(PaintPlotParts, BackgroundFillsThePlotAndTheMarginsExactly) {
  Expect(kPlotArea, {200 * 100 - 122, QRect(50, 40, 200, 100)});  // the line has round ends
  Expect(kMargins, {300 * 200 - 200 * 100, QRect(0, 0, 300, 200)});
  Expect(kLine, {120, QRect(90, 89, 120, 1)});
  Expect(kMargins, {4 * (300 * 200 - 200 * 100), QRect(0, 0, 600, 400)}, PaintTarget::Screen, 2);
  Expect(kMargins, {0, {}}, PaintTarget::Paper);
  Alter([](Appearance& look) { look.print_with_background = true; });
  Expect(kMargins, {300 * 200 - 200 * 100, QRect(0, 0, 300, 200)}, PaintTarget::Paper);
}

TEST_F(PaintPlotParts, AxesAndTicksAreOnePixelWideOnEveryScreen) {
  AlterAxis(AxisId::X, [](AxisState& axis) { axis.ShowAxis = true; });
  Expect(kAxes, {200, QRect(50, 140, 200, 1)});
  Expect(kAxes, {2 * 400, QRect(100, 279, 400, 2)}, PaintTarget::Screen, 2);
  AlterAxis(AxisId::Y, [](AxisState& axis) { axis.ShowAxis = true; });
  Expect(kAxes, {200 + 100, QRect(50, 40, 200, 101)});
  Alter([](Appearance& look) { look.ticks_are_shown = true; });
  // 11 ticks of 4 pixels, of which the first lies on the line, and the shorter ones between, which are not whole pixels.
  const QImage image = Painted();
  EXPECT_EQ(Of(Numbered(kAxes), image).box, QRect(46, 40, 205, 104));
  for (const int y : {144, 143}) {
    for (int x = 50; x <= 250; x += 10) {
      const bool inked = image.pixel(x, y) == Rgb(Numbered(kAxes));
      EXPECT_EQ(inked, y == 143 && x % 20 == 10) << x << ',' << y;
    }
  }
}

// A picture drawn between two pixels: lines stay on pixels, those where their places fall.
TEST_F(PaintPlotParts, LinesAreCrispWhereverThePictureBegins) {
  AlterAxis(AxisId::X, [](AxisState& axis) { axis.ShowAxis = true; });
  QImage image(300, 200, QImage::Format_RGB32);
  QPainter painter(&image);
  painter.translate(-0.75, 0.75);
  PaintPlot(painter, graph, LayoutPlot(graph, QSizeF(300, 200), TextMetrics()),
            PaintTarget::Screen);
  painter.end();
  EXPECT_EQ(Of(Numbered(kAxes), image), (Pixels{200, QRect(49, 140, 200, 1)}));
  EXPECT_EQ(Of(Numbered(kPlotArea), image).box, QRect(49, 41, 200, 99));
  AlterAxis(AxisId::Y, [](AxisState& axis) { axis.ShowAxis = true; });
  image.fill(Qt::white);
  QPainter again(&image);
  again.translate(-0.75, 0.75);
  PaintPlot(again, graph, LayoutPlot(graph, QSizeF(300, 200), TextMetrics()), PaintTarget::Screen);
  again.end();
  EXPECT_EQ(Of(Numbered(kAxes), image), (Pixels{299, QRect(49, 41, 200, 100)}));
}

TEST_F(PaintPlotParts, GridLinesSpareTheAxesAndLieBehindTheDataUnlessDrawnLast) {
  AlterAxis(AxisId::Y, [](AxisState& axis) { axis.Gridlines = true; });
  Expect(kGrid, {11 * 200, QRect(50, 40, 200, 101)});
  AlterAxis(AxisId::X, [](AxisState& axis) { axis.ShowAxis = true; });
  Expect(kGrid, {10 * 200, QRect(50, 40, 200, 91)});
  Alter([](Appearance& look) { look.grid_line_style = LineStyle::Dot; });
  EXPECT_LT(Of(Numbered(kGrid), Painted()).count, 10 * 200 * 3 / 4);
  AlterAxis(AxisId::Y, [](AxisState& axis) { axis.Gridlines = false; });
  AlterAxis(AxisId::X, [](AxisState& axis) { axis.Gridlines = true; });
  Alter([](Appearance& look) { look.grid_line_style = LineStyle::Solid; });
  Expect(kLine, {120, QRect(90, 89, 120, 1)});
  Alter([](Appearance& look) { look.grid_drawn_last = true; });
  Expect(kLine, {120 - 6, QRect(91, 89, 119, 1)});
}

TEST_F(PaintPlotParts, TheCrossReachesItsLengthOrAcrossThePlot) {
  AlterAxis(AxisId::X, [](AxisState& axis) { axis.Min = -5, axis.Max = 5; });
  AlterAxis(AxisId::Y, [](AxisState& axis) { axis.Min = -2, axis.Max = 8; });
  Alter([](Appearance& look) { look.show_cross_at_zero = true, look.length_of_cross = 30; });
  Expect(kCross, {60 + 50 - 1, QRect(120, 90, 60, 50)});
  Alter([](Appearance& look) { look.length_of_cross = 0; });
  Expect(kCross, {200 + 100 - 1, QRect(50, 40, 200, 100)});
}

TEST_F(PaintPlotParts, MarksAreClippedToThePlotAndStandOverTheData) {
  const auto mark = [](MarkType type, double x1, double y1, double x2, double y2) {
    return Mark{0, x1, y1, x2, y2, Numbered(kMark), " ", type, MarkStatus::XAndY};
  };
  graph.Marks().AddMark(mark(MarkType::Vertical, 3, 0, 0, 0));
  Expect(kMark, {100, QRect(110, 40, 1, 100)});
  Expect(kLine, {119, QRect(90, 89, 120, 1)});
  graph.Marks().AddMark(mark(MarkType::Horizontal, 0, 7, 0, 0));
  Expect(kMark, {100 + 199, QRect(50, 40, 200, 100)});
  Alter([](Appearance& look) { look.marks_are_shown = false; });
  Expect(kMark, {0, {}});
  Alter([](Appearance& look) { look.marks_are_shown = true; });
  // What of a rectangle and of an arrow lies outside is cut off.
  const std::pair<Mark, Pixels> rows[] = {
      {mark(MarkType::Rectangle, 3, 5, 1e9, -1e9), {189, QRect(110, 90, 140, 50)}},
      {mark(MarkType::Rectangle, -1e9, 1e9, 3, 5), {111, QRect(50, 40, 61, 51)}},
      {mark(MarkType::Rectangle, 3, 5, 3, 7), {20, QRect(110, 70, 1, 20)}},  // of no width
      {mark(MarkType::Arrow, 3, 7, 1e9, 7), {140, QRect(110, 70, 140, 1)}},
      {mark(MarkType::Text, 3, 5, 0, 0), {0, {}}}};  // of a blank
  for (const auto& [one, pixels] : rows) {
    graph.Marks().ClearMarks();
    graph.Marks().AddMark(one);
    Expect(kMark, pixels);
  }
  graph.Marks().ClearMarks();
  // A circle of that width with a cross to its border.
  graph.Marks().AddMark(mark(MarkType::Point, 5.025, 3.05, 20, 0));
  const QImage image = Painted();
  QRect box;
  for (int y = 41; y < 139; ++y) {
    for (int x = 51; x < 249; ++x) {
      const QRgb pixel = image.pixel(x, y);
      if (y != 89 && pixel != Rgb(Numbered(kPlotArea))) box = box.united(QRect(x, y, 1, 1));
    }
  }
  EXPECT_EQ(box, QRect(140, 99, 21, 21));
}

TEST_F(PaintPlotParts, TheLegendCoversWhatLiesUnderItsFrame) {
  graph.Series(0).SetSeriesName("");
  SetLegend(true);
  const QImage image = Painted();
  EXPECT_EQ(Of(Numbered(kLegend), image).box, QRect(60, 50, 70, 30));
  // The sample in it: the DataSet's line, as long as the room for it.
  const Pixels line = Of(Numbered(kLine), image);
  EXPECT_EQ(line.count, 120 + 28);
  EXPECT_EQ(line.box.left(), 66);
  // With a model there is a second row, its sample in the colour of the model's curve alone.
  FitSettings model;
  model.Expression = "5.05";
  model.Status = FitStatus::cf_Function;
  model.CurveColor = Numbered(kMark);
  graph.Series(0).Fit().SetSettings(model, true);
  Legend legend = graph.GetLegend();
  legend.height = 60, legend.width = 110;
  graph.SetLegend(legend);
  const QImage two = Painted();
  EXPECT_EQ(Of(Numbered(kLine), two.copy(61, 51, 108, 58)).count, 28);
  EXPECT_EQ(Of(Numbered(kMark), two.copy(61, 51, 108, 58)).count, 28);
  graph.Series(0).Fit().SetStatus(FitStatus::cf_None);
  legend.height = 30, legend.width = 70;
  legend.border_style = 1;
  graph.SetLegend(legend);
  const QImage framed = Painted();
  EXPECT_EQ(Of(Numbered(kLegend), framed).box, QRect(61, 51, 68, 28));
  EXPECT_EQ(framed.pixel(60, 65), framed.pixel(90, 50));
  EXPECT_EQ(framed.pixel(129, 65), framed.pixel(90, 79));
}

TEST_F(PaintPlotParts, AnInsertedGraphCoversItsFrame) {
  TxyChildGr& child = graph.AddChild();
  Dimensions place = child.GetDimensions();
  place.hor_position = 0.5, place.ver_position = 0.5, place.hor_size = 0.25, place.ver_size = 0.25;
  child.SetDimensions(place);
  Appearance look = child.GetAppearance();
  look.color = look.margin_color = Numbered(kChild);
  look.axes_color = Numbered(kAxes);
  child.SetAppearance(look);
  Expect(kAxes, {2 * 75 + 2 * 48, QRect(150, 100, 75, 50)});
  EXPECT_EQ(child.PixelOrigin(AxisId::X), child.GetDimensions().left_margin + 3);
  const QImage printed = Painted(PaintTarget::Paper);
  EXPECT_EQ(printed.pixel(200, 120), qRgb(255, 255, 255));
}

TEST_F(PaintPlotParts, PointsOutsideThePlotAreShownOnRequestOnly) {
  graph.Series(0).AddPoint(12, 5.05);
  AlterAxis(AxisId::X, [](AxisState& axis) { axis.Max = 10; });
  Expect(kLine, {160, QRect(90, 89, 160, 1)});
  Alter([](Appearance& look) { look.show_points_outside_plot_area = true; });
  Expect(kLine, {200, QRect(90, 89, 200, 1)});
}

}  // namespace
}  // namespace tarnwick
