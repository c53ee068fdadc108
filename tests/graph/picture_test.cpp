#include "graph/picture_export.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QImageReader>

#include <algorithm>
#include <fstream>
#include <limits>

#include "base/error.h"
#include "graph/xy_graph.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

constexpr Color kRed = Color::FromRgb(255, 0, 0);
constexpr Color kGreen = Color::FromRgb(0, 128, 0);
constexpr Color kMargin = Color::FromRgb(200, 220, 240);
constexpr Color kPlot = Color::FromRgb(250, 250, 230);

QRgb Rgb(Color color) {
  return qRgb(color.Red(), color.Green(), color.Blue());
}

/// A level red line at Y 5 over the X axis from 0 to 10; margins of 50.
void FillGraph(TxyGraph& graph) {
  auto series = std::make_unique<TSeries>();
  series->AddPoint(0, 5);
  series->AddPoint(10, 5);
  SeriesStyle style;
  style.line_color = style.symbol_color = kRed;
  style.line_width = 3;
  style.show_symbols = false;
  series->SetStyle(style);
  graph.AddSeries(std::move(series));
  for (const AxisId id : {AxisId::X, AxisId::Y}) {
    graph.Axis(id).SetMin(0);
    graph.Axis(id).SetMax(10);
    graph.Axis(id).SetGridlines(false);
  }
  Dimensions dimensions;
  dimensions.left_margin = dimensions.right_margin = 50;
  dimensions.top_margin = dimensions.bottom_margin = 50;
  graph.SetDimensions(dimensions);
  Appearance appearance = graph.GetAppearance();
  appearance.margin_color = kMargin;
  appearance.color = kPlot;
  graph.SetAppearance(appearance);
  Legend legend;
  legend.visible = false;
  graph.SetLegend(legend);
  graph.Resize(400, 300);
}

TEST(Picture, PartsStandAtTheirPixelsAtEveryResolution) {
  TxyGraph graph;
  FillGraph(graph);
  const QRgb axis = Rgb(graph.GetAppearance().axes_color);
  for (const int dpi : {96, 144, 192}) {
    const double scale = dpi / 96.0;
    const auto at = [&](double pixel) { return static_cast<int>(pixel * scale); };
    const QImage image =
        RenderImage(graph, {static_cast<int>(400 * scale), static_cast<int>(300 * scale), dpi});
    EXPECT_EQ(image.width(), at(400));
    EXPECT_EQ(image.pixel(at(395), at(5)), Rgb(kMargin)) << dpi;
    EXPECT_EQ(image.pixel(at(200), at(100)), Rgb(kPlot)) << dpi;
    EXPECT_EQ(image.pixel(at(50), at(100)), axis) << dpi;
    EXPECT_EQ(image.pixel(at(200), at(250)), axis) << dpi;
    EXPECT_EQ(image.pixel(at(200), at(150)), Rgb(kRed)) << dpi;
    // Sharp: nothing of the axis line in the next pixel column but one.
    EXPECT_EQ(image.pixel(at(53), at(100)), Rgb(kPlot)) << dpi;
  }
}

TEST(Picture, LaterPartsCoverEarlierOnes) {
  TxyGraph graph;
  FillGraph(graph);
  Mark mark;
  mark.x1 = 5;
  mark.color = kGreen;
  mark.caption = " ";
  graph.Marks().AddMark(mark);
  EXPECT_EQ(RenderImage(graph, {400, 300}).pixel(200, 150), Rgb(kGreen)) << "marks over DataSets";
  Legend legend;
  legend.layout_mode = LegendLayout::Free;
  legend.left = 150;
  legend.top = 120;
  legend.width = 100;
  legend.height = 60;
  legend.color = kMargin;
  graph.SetLegend(legend);
  EXPECT_EQ(RenderImage(graph, {400, 300}).pixel(200, 150), Rgb(kMargin)) << "legend over marks";
  Appearance appearance = graph.GetAppearance();
  appearance.marks_are_shown = false;
  graph.SetAppearance(appearance);
  legend.visible = false;
  graph.SetLegend(legend);
  EXPECT_EQ(RenderImage(graph, {400, 300}).pixel(200, 150), Rgb(kRed));
}

TEST(Picture, ChildGraphsStayWithinTheirFrames) {
  TxyGraph graph;
  FillGraph(graph);
  TxyChildGr& child = graph.AddChild();
  Dimensions place = child.GetDimensions();
  place.hor_position = place.ver_position = 0.25;
  place.hor_size = place.ver_size = 0.5;
  child.SetDimensions(place);
  Appearance appearance = child.GetAppearance();
  appearance.margin_color = kGreen;
  child.SetAppearance(appearance);
  graph.Resize(400, 300);
  const QImage image = RenderImage(graph, {400, 300});
  EXPECT_EQ(image.pixel(103, 78), Rgb(kGreen));
  EXPECT_EQ(image.pixel(97, 78), Rgb(kPlot));
  EXPECT_EQ(child.PixelOrigin(AxisId::X), child.GetDimensions().left_margin + 3);
}

TEST(Picture, HostileSettingsGiveAFrameAndNoCrash) {
  TxyGraph graph;
  FillGraph(graph);
  Appearance appearance = graph.GetAppearance();
  appearance.color = Color{std::numeric_limits<std::int32_t>::min()};
  appearance.axes_color = Color{-1};
  appearance.font_for_labels.size = 10000;
  appearance.font_for_title.size = 0;
  appearance.title_of_graph = "title";
  appearance.length_of_cross = std::numeric_limits<std::int32_t>::max();
  appearance.show_cross_at_zero = true;
  graph.SetAppearance(appearance);
  for (const int size : {1, 2, 60, 101, 400}) {
    graph.Resize(size, size);
    EXPECT_EQ(RenderImage(graph, {size, size}).width(), size);
  }
  graph.Resize(80, 80);
  EXPECT_EQ(RenderImage(graph, {80, 80}).pixel(40, 40), Rgb(kMargin)) << "margins leave no plot";
  EXPECT_THROW(RenderImage(graph, {0, 10}), Error);
}

TEST(Picture, FilesAreOfTheirKindAndSize) {
  struct Row {
    const char* name;
    const char* magic;
  };
  TxyGraph graph;
  FillGraph(graph);
  const testing::TemporaryFolder folder;
  for (const Row& row : {Row{"a.png", "\x89PNG"}, Row{"a.JPG", "\xFF\xD8\xFF"}, Row{"a.bmp", "BM"},
                         Row{"a.svg", "<?xml"}, Row{"a.pdf", "%PDF"}}) {
    const std::filesystem::path path = folder.File(row.name);
    WritePicture(graph, path, {300, 200, 96});
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_TRUE(bytes.starts_with(row.magic)) << row.name;
    EXPECT_LT(bytes.size(), 250'000U) << row.name;
    if (path.extension() == ".pdf") continue;
    if (path.extension() == ".svg") {
      EXPECT_NE(bytes.find("viewBox=\"0 0 300 200\""), std::string::npos);
      continue;
    }
    EXPECT_EQ(QImageReader(QString::fromStdString(path.string())).size(), QSize(300, 200))
        << row.name;
  }
  try {
    WritePicture(graph, folder.Path() / "a.tiff");
    FAIL() << "an unknown kind was written";
  } catch (const Error& error) {
    EXPECT_NE(std::string(error.what()).find(".tiff"), std::string::npos);
  }
  EXPECT_FALSE(std::filesystem::exists(folder.Path() / "a.tiff"));
}

}  // namespace
}  // namespace tarnwick
