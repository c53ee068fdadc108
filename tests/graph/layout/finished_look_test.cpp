#include "graph/layout/finished_look.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "graph/axes/plot_metrics.h"
#include "graph/edit/mark_edit.h"
#include "graph/files/graph_file.h"
#include "graph/graph_state_compare.h"
#include "graph/layout/automatic_legend.h"
#include "graph/layout/plot_layout.h"
#include "graph/palette.h"
#include "graph/xy_graph.h"
#include "support/project_paths.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using Points = std::vector<QPointF>;

constexpr QSizeF kSize(800, 600);

TSeries& Add(TxyGraph& graph, const Points& points, bool first_axis = true) {
  auto series = std::make_unique<TSeries>();
  for (const QPointF& point : points) series->AddPoint(point.x(), point.y());
  series->SetSeriesName("Set " + std::to_string(graph.SeriesCount()));
  SeriesStyle style;
  style.first_axis = first_axis;
  series->SetStyle(style);
  return graph.AddSeries(std::move(series));
}

PlotLayout Finished(TxyGraph& graph, QSizeF size = kSize) {
  const TextMetrics metrics;
  graph.Resize(static_cast<int>(size.width()), static_cast<int>(size.height()));
  ApplyFinishedLook(graph, size, metrics, {.title = "Cooling"});
  return LayoutPlot(graph, size, metrics);
}

QRectF Content(const PlotLayout& layout) {
  QRectF content = layout.plot;
  for (const AxisLayout& axis : layout.axes) {
    for (const PlacedText& label : axis.labels) content = content.united(label.Box());
    for (const auto& text : {axis.title, axis.factor})
      if (text) content = content.united(text->Box());
  }
  return content;
}

// Eight pixels are left free around texts, sixteen right of them, and less than one more by rounding.
TEST(FinishedLook, MarginsAreAsWideAsTheirContents) {
  for (const double height : {1.0, 1e7}) {
    for (const double second : {0.0, 1.0, 1e-6}) {
      SCOPED_TRACE(::testing::Message() << height << ' ' << second);
      TxyGraph graph;
      Add(graph, {{0, 0}, {9.7, height}});
      if (second > 0) Add(graph, {{0, 0}, {9.7, second}}, /*first_axis=*/false);
      const PlotLayout layout = Finished(graph);
      const QRectF content = Content(layout);
      const bool factor = height > 1 || (second > 0 && second < 1);
      const auto expect_margin = [](double free, double expected) {
        EXPECT_GE(free, expected - 1e-9);
        EXPECT_LT(free, expected + 1);
      };
      expect_margin(content.left(), 8);
      expect_margin(600 - content.bottom(), 8);
      if (!layout.legend) expect_margin(800 - content.right(), 16);
      const TextMetrics metrics;
      const Appearance& look = graph.GetAppearance();
      const double line = factor ? metrics.LineHeight(look.font_for_labels) + 4 : 0;
      const double title = metrics.LineHeight(look.font_for_title);
      EXPECT_EQ(layout.plot.top(), 16 + std::ceil(line) + std::ceil(title));
      ASSERT_TRUE(layout.title);
      EXPECT_EQ(layout.plot.top() - layout.title->center.y(), 8 + std::ceil(title / 2 + line));
      EXPECT_EQ(layout.Axis(AxisId::Y).factor.has_value(), height > 1);
    }
  }
}

TEST(FinishedLook, SmallPicturesKeepTwoFifthsForThePlot) {
  TxyGraph graph;
  Add(graph, {{0, 0}, {9.7, 12345}});
  const PlotLayout layout = Finished(graph, QSizeF(60, 50));
  EXPECT_NEAR(layout.plot.width(), 0.4 * 60, 2);
  EXPECT_NEAR(layout.plot.height(), 0.4 * 50, 2);
}

TEST(FinishedLook, ASmallPictureSaysNothingTwice) {
  for (const bool two_axes : {true, false}) {
    for (const int width : {200, 300, 399, 400}) {
      TxyGraph graph;
      Add(graph, {{0, 0}, {9.7, 3}});
      Add(graph, {{0, 0}, {9.7, 300}}, !two_axes);
      const PlotLayout layout = Finished(graph, QSizeF(width, 3 * width / 4.0));
      EXPECT_EQ(layout.legend.has_value(), !two_axes || width == 400) << width;
      ASSERT_TRUE(layout.Axis(AxisId::Y).title) << width;
      EXPECT_NE(layout.Axis(AxisId::Y).title->text.text, "\u2026");
    }
  }
}

TEST(FinishedLook, ALegendOfManyFillsTheHeightBesideThePlot) {
  TxyGraph graph;
  for (int i = 0; i < 30; ++i)
    Add(graph, {{0, 1.0 * i}, {9.7, 30.0 - i}})
        .SetSeriesName("A quantity of quite a name, run " + std::to_string(i));
  const PlotLayout layout = Finished(graph);
  ASSERT_TRUE(layout.legend);
  EXPECT_GT(layout.legend->frame.left(), layout.plot.right());
  EXPECT_EQ(layout.legend->rows.size(), 30U);
  EXPECT_TRUE(layout.legend->rows[7].name.text.text.endsWith(" 7"));
}

// Curves in every corner: whole names side by side above the plot, or what tells many of them apart beside it.
TEST(FinishedLook, TheLegendOfASmallPictureStandsOutsideThePlot) {
  for (const int many : {2, 12}) {
    TxyGraph graph;
    for (int i = 0; i < many; ++i) {
      Points wave;
      for (int k = 0; k < 200; ++k) wave.emplace_back(k, std::sin(k + 0.1 * i));
      Add(graph, wave).SetSeriesName("voltage of channel " + std::to_string(i) + " (V)");
    }
    const PlotLayout layout = Finished(graph, QSizeF(320, 240));
    ASSERT_TRUE(layout.legend && layout.title);
    const LegendBox& legend = *layout.legend;
    EXPECT_FALSE(legend.frame.intersects(layout.plot));
    EXPECT_EQ(legend.frame.bottom() < layout.plot.top(), many == 2);
    EXPECT_EQ(legend.rows.size(), static_cast<std::size_t>(many));
    EXPECT_GE(legend.frame.top(), layout.title->Box().bottom());
    EXPECT_GT(layout.plot.height(), 80);
    for (int i = 0; i < many; ++i) {
      const QString name = legend.rows[static_cast<std::size_t>(i)].name.text.text;
      EXPECT_TRUE(name.contains(QString::number(i))) << name.toStdString();
    }
    EXPECT_FALSE(Finished(graph, QSizeF(150, 120)).legend) << "it would hide the curves";
  }
}

TEST(FinishedLook, TheLegendTakesTheEmptyCornerOrStandsBeside) {
  const Points corners = {{9.45, 9.6}, {0.45, 9.6}, {0.55, 0.4}, {9.55, 0.4}};
  for (std::size_t free = 0; free <= corners.size(); ++free) {
    SCOPED_TRACE(free);
    TxyGraph graph;
    for (int i = 0; i < 2; ++i) {
      Points points;
      for (std::size_t k = 0; k < corners.size(); ++k)
        if (k != free) points.push_back(corners[k]);
      for (int k = 0; k < 40; ++k) points.emplace_back(4.5 + 0.01 * k, 5);
      std::sort(points.begin(), points.end(),
                [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); });
      Add(graph, points);
    }
    for (const AxisId id : {AxisId::X, AxisId::Y}) {
      graph.Axis(id).SetMin(0);
      graph.Axis(id).SetMax(10);
    }
    const PlotLayout layout = Finished(graph);
    ASSERT_TRUE(layout.legend);
    const QRectF& frame = layout.legend->frame;
    const QRectF& plot = layout.plot;
    if (free == corners.size()) {
      EXPECT_EQ(frame.right(), 800 - 8);
      EXPECT_GT(frame.left(), plot.right());
      EXPECT_NEAR(frame.top(), plot.top(), 1);
      continue;
    }
    const bool right = corners[free].x() > 5, bottom = corners[free].y() < 5;
    EXPECT_NEAR(right ? plot.right() - frame.right() : frame.left() - plot.left(), 10, 1);
    EXPECT_NEAR(bottom ? plot.bottom() - frame.bottom() : frame.top() - plot.top(), 10, 1);
  }
}

/// Where the legend stands, whatever the margins: by its mode, nearest edges and room.
std::string Standing(const TxyGraph& graph) {
  const Legend& legend = graph.GetLegend();
  return std::string(legend.visible ? "shown" : "hidden") +
         (legend.layout_mode == LegendLayout::Horizontal ? " across" : "") +
         (legend.left < 0 ? " right" : " left") + (legend.top < 0 ? " bottom" : " top") +
         (legend.room_beside > 0 ? " beside" : "") + (legend.room_above > 0 ? " above" : "");
}

TEST(FinishedLook, ALegendThatNobodyPlacedIsLookedForInEverySize) {
  const Points rising = {{0, 0}, {1, 1}, {2, 2}, {3, 3}};
  Points everywhere;
  for (int i = 0; i < 900; ++i) everywhere.emplace_back(i % 30, i / 30);
  struct Row {
    const char* what;
    const Points& points;
    bool second_axis;
  };
  for (const Row& row : {Row{"a free corner", rising, false}, Row{"none", everywhere, false},
                         Row{"titles that name all", everywhere, true}}) {
    for (const QSizeF size : {QSizeF(380, 300), QSizeF(480, 340), QSizeF(1400, 500)}) {
      SCOPED_TRACE(::testing::Message() << row.what << ' ' << size.width());
      const TextMetrics metrics;
      TxyGraph graph, fresh;
      for (TxyGraph* const one : {&graph, &fresh}) {
        Add(*one, row.points);
        Add(*one, row.points, !row.second_axis);
      }
      Finished(graph);
      const Legend first = graph.GetLegend();
      const Dimensions margins = graph.GetDimensions();
      Finished(fresh, size);
      SettleLegend(graph, size, metrics);
      EXPECT_EQ(Standing(graph), Standing(fresh));
      SettleLegend(graph, kSize, metrics);
      EXPECT_TRUE(graph.GetLegend() == first && graph.GetDimensions() == margins)
          << "there and back";
      Legend chosen = ChosenByHand(first);
      chosen.left = 3;
      graph.SetLegend(chosen);
      SettleLegend(graph, size, metrics);
      EXPECT_TRUE(graph.GetLegend() == chosen) << "what was chosen stays";
    }
  }
}

TEST(FinishedLook, ALegendIsSaidToHideWhatItLiesOver) {
  struct Row {
    const char* what;
    void (*put)(TxyGraph&, QPointF);  // something at the middle of the legend
    bool hides;
  };
  const Row rows[] = {
      {"nothing", [](TxyGraph&, QPointF) {}, false},
      {"a point", [](TxyGraph& graph, QPointF at) { graph.Series(0).AddPoint(at.x(), at.y()); },
       true},
      {"the bar of a point below",
       [](TxyGraph& graph, QPointF at) {
         const std::int32_t id = graph.Series(0).AddPoint(at.x(), 0.1);
         PointErrors errors;
         errors.y.kind = ErrorKind::Column;
         errors.y_values.Set(id, at.y() - 0.1);
         graph.Series(0).SetErrors(errors);
       },
       true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    TxyGraph graph;
    for (int i = 0; i < 2; ++i) {
      TSeries& series = Add(graph, {{0, 0}, {1, 0.1}, {10, 0.2}});
      SeriesStyle style = series.Style();
      style.connect_points = false;
      series.SetStyle(style);
    }
    for (const AxisId id : {AxisId::X, AxisId::Y}) {
      graph.Axis(id).SetMin(0);
      graph.Axis(id).SetMax(10);
    }
    const PlotLayout layout = Finished(graph);
    ASSERT_TRUE(layout.legend);
    const QPointF middle = layout.legend->frame.center();
    row.put(graph, {layout.Axis(AxisId::X).scale.ValueAt(middle.x()),
                    layout.Axis(AxisId::Y).scale.ValueAt(middle.y())});
    EXPECT_EQ(AutomaticLegendHides(graph, kSize, TextMetrics()), row.hides);
    SettleLegend(graph, kSize, TextMetrics());
    EXPECT_FALSE(AutomaticLegendHides(graph, kSize, TextMetrics())) << "three corners are free";
  }
}

TEST(FinishedLook, NamesOfSeveralThatRunPastThePlotLeaveTheTitleToTheLegend) {
  struct Row {
    std::vector<std::string> names;
    bool own;  // the title was typed
    QString title;
  };
  const std::string lengthy = "Temperature of the outer vessel behind the second valve";
  const Row rows[] = {
      {{"U", "I"}, false, "U, I"},
      {{lengthy + " A", lengthy + " B"}, false, "value"},
      {{lengthy + " A", lengthy + " B"}, true, QString::fromStdString(lengthy + " A and B")},
      {{lengthy}, false, QString::fromStdString(lengthy)},
      {{"Temperature of the outer", "of the inner and of the third vessel"},
       false,
       "Temperature of the outer, of the inner and of the third vessel"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.title.toStdString());
    TxyGraph graph;
    for (const std::string& name : row.names) Add(graph, {{0, 1}, {9, 2}}).SetSeriesName(name);
    if (row.own) {
      SetLook(graph.Axis(AxisId::Y), &AxisLook::EnableAutoTitle, false);
      SetLook(graph.Axis(AxisId::Y), &AxisLook::Title, row.title.toStdString());
    }
    const PlotLayout layout = Finished(graph, QSizeF(560, 480));
    ASSERT_TRUE(layout.Axis(AxisId::Y).title);
    EXPECT_EQ(layout.Axis(AxisId::Y).title->text.text, row.title);
    const bool within = layout.Axis(AxisId::Y).title->size.width() <= layout.plot.height();
    EXPECT_TRUE(within || row.own || row.names.size() == 1);
  }
}

TEST(FinishedLook, AFirstAxisThatIsLeftEmptyIsNotShownBesideTheSecond) {
  TxyGraph graph;
  Add(graph, {{0, 1}, {9, 2}});
  Add(graph, {{0, 100}, {9, 300}}, false);
  const auto show_first = [&](bool shown) {
    SeriesStyle style = graph.Series(0).Style();
    style.visible = shown;
    graph.Series(0).SetStyle(style);
    return LayoutPlot(graph, kSize, TextMetrics());
  };
  Finished(graph);
  const std::size_t lines = show_first(true).Axis(AxisId::Y).grid.size();
  ASSERT_GT(lines, 0U);
  const PlotLayout hidden = show_first(false);
  EXPECT_FALSE(hidden.Axis(AxisId::Y).shown);
  EXPECT_TRUE(hidden.Axis(AxisId::Y).grid.empty());
  EXPECT_FALSE(hidden.Axis(AxisId::Y2).grid.empty()) << "the grid is that of the axis with data";
  Mark mark;
  mark.type = MarkType::Horizontal;
  mark.y1 = 1.5;
  AddMark(graph, mark);
  EXPECT_TRUE(show_first(false).Axis(AxisId::Y).shown) << "a mark stands on its scale";
}

// Kept with readable keys, so that a change of it is seen.
TEST(FinishedLook, TheTemplateThatIsShippedIsTheLookThatGraphsBeginWith) {
  TxyGraph graph;
  DefaultAppearance(graph, "Graph");
  const std::string expected = EncodeGraph(graph, {WithPoints::No, WriterMode::Text});
  const std::filesystem::path file = testing::SourceFolder() / "packaging/default.ttp";
  EXPECT_EQ(testing::ReadFile(file), expected);
  EXPECT_TRUE(SameState(LoadGraph(file)->State(), graph.State()));
}

TEST(FinishedLook, PartsOfAModelLookAsTheyWereMadeInEverySize) {
  TxyGraph graph;
  Add(graph, {{0, 0}, {1, 1}, {2, 4}});
  TSeries& part = Add(graph, {{0, 0}, {1, 2}, {2, 3}});
  SeriesStyle made = part.Style();
  made.line_style = LineStyle::Dash;
  made.show_symbols = false;
  made.show_in_legend = 0;
  made.selectable = false;
  part.SetStyle(made);
  Finished(graph);
  EXPECT_EQ(part.Style(), made);
  EXPECT_FALSE(graph.GetLegend().visible) << "one name";
}

TEST(FinishedLook, FewPointsAreSymbolsManyAThinLine) {
  struct Row {
    int series;
    int points;
    bool symbols;
    int width;
  };
  for (const Row& row : {Row{1, 300, true, 1}, Row{1, 301, false, 2}, Row{1, 2000, false, 2},
                         Row{1, 2001, false, 1}, Row{8, 300, true, 1}, Row{9, 300, false, 2}}) {
    TxyGraph graph;
    Points points;
    for (int i = 0; i < row.points; ++i) points.emplace_back(i, i);
    for (int i = 1; i < row.series; ++i) Add(graph, points);
    const TSeries& series = Add(graph, points);
    Finished(graph);
    EXPECT_EQ(series.Style().show_symbols, row.symbols) << row.points;
    EXPECT_EQ(series.Style().line_width, row.width) << row.points;
  }
  // Beside many points few keep their symbols, but a short run of one column looks as the long ones.
  for (const bool runs : {false, true}) {
    TxyGraph graph;
    for (const int count : {5000, 20}) {
      Points points;
      for (int i = 0; i < count; ++i) points.emplace_back(i, i);
      Add(graph, points).Source().DatasourceInfo = runs ? "map.dat" : std::to_string(count);
    }
    Finished(graph);
    EXPECT_EQ(graph.Series(1).Style().show_symbols, !runs);
  }
  // Colours come round; line styles tell the rounds apart.
  TxyGraph graph;
  Points points;
  for (int i = 0; i < 301; ++i) points.emplace_back(i, i);
  for (std::size_t i = 0; i < 2 * kPaletteSize; ++i) Add(graph, points);
  Finished(graph);
  EXPECT_EQ(graph.Series(kPaletteSize - 1).Style().line_style, LineStyle::Solid);
  EXPECT_EQ(graph.Series(kPaletteSize).Style().line_style, LineStyle::Dash);
}

}  // namespace
}  // namespace tarnwick
