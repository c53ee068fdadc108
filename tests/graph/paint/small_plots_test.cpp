// Whole plots without texts in pictures of 100 x 44 pixels, told as rows of ink.
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <functional>
#include <memory>

#include "graph/layout/plot_layout.h"
#include "graph/mark.h"
#include "graph/paint/ink.h"
#include "graph/paint/paint_plot.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr int kWide = 100, kHigh = 44;

/// X and Y from -2 to 8 over 80 x 30 pixels, Y2 from 1 to 1000, a line and a line with bounds against Y2.
class Plot {
 public:
  Plot() {
    Dimensions margins;
    margins.left_margin = margins.right_margin = 10, margins.top_margin = margins.bottom_margin = 7;
    margins.tick_length = 3;
    graph.SetDimensions(margins);
    graph.Resize(kWide, kHigh);
    Look([](Appearance& look) { look.grid_labels_shown = false; });
    for (const bool first : {true, false}) {
      auto series = std::make_unique<TSeries>();
      series->SetSeriesName(" ");
      for (int i = 0; i < 6; ++i) series->AddPoint(2 * i - 2, first ? (3 * i) % 7 : 1 << (2 * i));
      SeriesStyle style;
      style.first_axis = first, style.show_symbols = false, style.line_width = first ? 2 : 1;
      style.bound_line_mode = first ? BoundLineMode::None : BoundLineMode::Both;
      style.upper_bound = 2000, style.lower_bound = 2;
      series->SetStyle(style);
      graph.AddSeries(std::move(series));
    }
    for (const AxisId id : {AxisId::X, AxisId::Y, AxisId::Y2}) {
      Axis(id, [&](AxisState& axis) {
        axis.AutoSizing = axis.AutoStepping = axis.EnableAutoTitle = false;
        axis.Gridlines = false, axis.Title = "";
        axis.LogScale = id == AxisId::Y2, axis.LogCycleDivisions = 2;
        axis.Min = axis.LogScale ? 1 : -2, axis.Max = axis.LogScale ? 1000 : 8, axis.StepSize = 2;
      });
    }
    Box([](Legend& legend) { legend.visible = false; });
  }

  void Axis(AxisId id, const std::function<void(AxisState&)>& change) {
    AxisState axis = graph.Axis(id).State();
    change(axis);
    graph.Axis(id).SetState(axis);
    graph.UpdateScales();
  }
  void Look(const std::function<void(Appearance&)>& change) {
    Appearance look = graph.GetAppearance();
    change(look);
    graph.SetAppearance(look);
  }
  void Box(const std::function<void(Legend&)>& change) {
    Legend legend = graph.GetLegend();
    change(legend);
    graph.SetLegend(legend);
  }
  void Add(MarkType type, double x1, double y1, double x2 = 0, double y2 = 0) {
    graph.Marks().AddMark({0, x1, y1, x2, y2, {}, " ", type, MarkStatus::XAndY});
  }

  TxyGraph graph;
  PaintTarget target = PaintTarget::Screen;
};

struct Row {
  const char* name;
  std::function<void(Plot&)> change;
};

void Grids(Plot& plot) {
  plot.Axis(AxisId::X, [](AxisState& axis) { axis.Gridlines = true; });
  plot.Axis(AxisId::Y, [](AxisState& axis) { axis.Gridlines = true; });
  plot.Look([](Appearance& look) { look.grid_color = Color::FromRgb(0x90, 0x90, 0x90); });
}
void Marks(Plot& plot) {
  plot.Add(MarkType::Vertical, -2, 0), plot.Add(MarkType::Vertical, 8, 0);
  plot.Add(MarkType::Vertical, 9, 0), plot.Add(MarkType::Horizontal, 0, 7);
  plot.Add(MarkType::Point, 6, 4, 9), plot.Add(MarkType::Arrow, 0, 0, 4, 3);
  plot.Add(MarkType::Rectangle, 1, 1, 3, 12), plot.Add(MarkType::Line, 4, -1, 9, 2);
}
void ShowOutside(Plot& plot) {
  plot.Look([](Appearance& look) { look.show_points_outside_plot_area = true; });
}

TEST(SmallPlots, HaveEveryPartInItsPlace) {
  const Row rows[] = {
      {"axes", [](Plot&) {}},
      {"grids", Grids},
      {"grids drawn last",
       [](Plot& plot) {
         Grids(plot);
         plot.Look([](Appearance& look) { look.grid_drawn_last = true; });
       }},
      {"grids of decades",
       [](Plot& plot) {
         plot.Axis(AxisId::Y, [](AxisState& axis) {
           axis.Gridlines = axis.LogScale = true, axis.Min = 0.5, axis.Max = 50;
         });
         plot.Axis(AxisId::Y2, [](AxisState& axis) { axis.ShowAxis = true; });
         plot.Look([](Appearance& look) {
           look.grid_line_style = LineStyle::Dash, look.grid_color = {};
         });
       }},
      {"axes that cross within",
       [](Plot& plot) {
         Grids(plot);
         plot.Axis(AxisId::X, [](AxisState& axis) {
           axis.Offset_type = OffsetType::Percent, axis.Offset = 40, axis.Reversed = true;
         });
         plot.Axis(AxisId::Y,
                   [](AxisState& axis) { axis.Offset_type = OffsetType::Value, axis.Offset = 0; });
       }},
      {"cross at zero",
       [](Plot& plot) {
         plot.Look([](Appearance& look) {
           look.show_cross_at_zero = true, look.length_of_cross = 9, look.color_of_cross = {};
         });
       }},
      {"cross across the plot",
       [](Plot& plot) {
         plot.Look([](Appearance& look) {
           look.show_cross_at_zero = true, look.length_of_cross = 0, look.color_of_cross = {};
         });
       }},
      {"marks", Marks},
      {"marks hidden",
       [](Plot& plot) {
         Marks(plot);
         plot.Look([](Appearance& look) { look.marks_are_shown = false; });
       }},
      {"marks that reach far",
       [](Plot& plot) {
         plot.Add(MarkType::Rectangle, 3, 5, 1e9, -1e9), plot.Add(MarkType::Rectangle, 2, 5, 2, 7);
         plot.Add(MarkType::Rectangle, -1e9, 1e9, 0, 3), plot.Add(MarkType::Arrow, 3, 7, 1e9, 7);
         plot.Add(MarkType::Arrow, 6, 2, 6, 1e9), plot.Add(MarkType::Arrow, -1e9, 6, 1, 6);
       }},
      {"all outside",
       [](Plot& plot) {
         Marks(plot);
         ShowOutside(plot);
       }},
      {"panel",
       [](Plot& plot) {
         SeriesStyle style = plot.graph.Series(0).Style();
         style.in_panel = true;
         plot.graph.Series(0).SetStyle(style);
         plot.graph.UpdateScales();
       }},
      {"legend",
       [](Plot& plot) {
         plot.Box([](Legend& legend) {
           legend.visible = true, legend.layout_mode = LegendLayout::Free;
           legend.left = 30, legend.top = 8, legend.width = 60, legend.height = 30;
           legend.x_margin = legend.y_margin = 1, legend.font.size = 3;
           legend.font.color = Color::FromRgb(0xFF, 0xFF, 0xFF);
         });
         FitSettings model;
         model.Expression = "5", model.Status = FitStatus::cf_Function;
         plot.graph.Series(0).Fit().SetSettings(model, MarkModified::Yes);
       }},
      {"inserted graph",
       [](Plot& plot) {
         TxyChildGr& child = plot.graph.AddChild();
         Dimensions place = child.GetDimensions();
         place.hor_position = 0.5, place.ver_position = 0.25;
         place.hor_size = 0.4, place.ver_size = 0.5;
         place.left_margin = place.right_margin = place.top_margin = place.bottom_margin = 4;
         child.SetDimensions(place);
         Appearance look = child.GetAppearance();
         look.grid_labels_shown = false;
         child.SetAppearance(look);
       }},
      {"styles on paper",
       [](Plot& plot) {
         plot.Look([](Appearance& look) {
           look.print_style_for_lines = true;
           look.color = look.margin_color = Color::FromRgb(0xD0, 0xD0, 0xD0);
         });
         plot.target = PaintTarget::Paper;
       }},
  };
  for (const Row& row : rows) {
    Plot plot;
    row.change(plot);
    QImage image(kWide, kHigh, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintPlot(painter, plot.graph, LayoutPlot(plot.graph, QSizeF(kWide, kHigh), TextMetrics()),
              plot.target);
    painter.end();
    testing::ExpectInk("graph/paint/plots.txt", row.name, image);
  }
}

}  // namespace
}  // namespace tarnwick
