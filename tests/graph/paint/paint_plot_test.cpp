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

enum Part { kAxes = 1, kPlotArea, kMargins, kGrid, kLine };

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
    Legend legend;
    legend.visible = false;
    graph.SetLegend(legend);
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

}  // namespace
}  // namespace tarnwick
