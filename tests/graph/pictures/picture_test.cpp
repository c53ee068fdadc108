#include "graph/pictures/picture_export.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QImage>
#include <QImageReader>

#include <csignal>
#include <fstream>
#include <limits>

#include "base/error.h"
#include "graph/background_image.h"
#include "graph/files/file_kinds.h"
#include "graph/files/graph_file.h"
#include "graph/paint/paint_plot.h"
#include "graph/xy_graph.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

constexpr Color kRed = Color::FromRgb(255, 0, 0);
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
    SetLook(graph.Axis(id), &AxisLook::Gridlines, false);
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

TEST(Picture, EveryResolutionScalesAllOfIt) {
  TxyGraph graph;
  FillGraph(graph);
  for (const int dpi : {96, 144, 192}) {
    const auto at = [&](double pixel) { return static_cast<int>(pixel * dpi / 96); };
    const QImage image = RenderImage(graph, {at(400), at(300), dpi});
    EXPECT_EQ(image.size(), QSize(at(400), at(300)));
    EXPECT_EQ(image.pixel(at(395), at(5)), Rgb(kMargin)) << dpi;
    EXPECT_EQ(image.pixel(at(50), at(100)), Rgb(graph.GetAppearance().axes_color)) << dpi;
    EXPECT_EQ(image.pixel(at(53), at(100)), Rgb(kPlot)) << dpi;
  }
}

bool Holds(const std::string& bytes, std::string_view part) {
  return bytes.find(part) != std::string::npos;
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
                         Row{"a.gif", "GIF89a"}, Row{"a.wmf", "\xD7\xCD\xC6\x9A"},
                         Row{"a.svg", "<?xml"}, Row{"a.pdf", "%PDF"}}) {
    const std::filesystem::path path = folder.File(row.name);
    WritePicture(graph, path, {300, 200, 96});
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_TRUE(bytes.starts_with(row.magic)) << row.name;
    EXPECT_LT(bytes.size(), 250'000U) << row.name;
    if (path.extension() == ".wmf") continue;
    if (path.extension() == ".svg") {
      EXPECT_TRUE(Holds(bytes, "<svg width=\"300\" height=\"200\" viewBox=\"0 0 300 200\""));
      continue;
    }
    if (path.extension() == ".pdf") {
      const std::size_t box = bytes.find("/MediaBox [0 0 225.0000 150.0000");
      ASSERT_NE(box, std::string::npos);
      EXPECT_EQ(bytes.find_first_not_of(' ', box + 32), bytes.find(']', box));
      continue;
    }
    EXPECT_EQ(QImageReader(QString::fromStdString(path.string())).size(), QSize(300, 200))
        << row.name;
  }
}

TEST(Picture, ResolutionsHaveBounds) {
  for (const int dpi : {9, 10, 2400, 2401}) {
    const PictureOptions options{300, 200, dpi};
    if (dpi % 10 == 0) {
      EXPECT_NO_THROW(options.Validate());
    } else {
      EXPECT_THROW(options.Validate(), Error);
    }
  }
}

TEST(Picture, FilesHoldTheirResolution) {
  TxyGraph graph;
  FillGraph(graph);
  PictureOptions metric{WholePixels(60, 300), WholePixels(40, 300), 300, QSizeF(60, 40)};
  EXPECT_TRUE(Holds(SvgBytes(graph, metric),
                    "<svg width=\"60mm\" height=\"40mm\" viewBox=\"0 0 708.661 472.441\""));
  EXPECT_TRUE(Holds(PdfBytes(graph, metric), "/MediaBox [0 0 170.0787 113.3858"));
  const testing::TemporaryFolder folder;
  for (const char* name : {"a.png", "a.jpg", "a.bmp"}) {
    WritePicture(graph, folder.File(name), {WholePixels(60, 300), WholePixels(40, 300), 300});
    const QImage image(QString::fromStdString(folder.File(name).string()));
    EXPECT_EQ(image.size(), QSize(709, 472)) << name;
    EXPECT_NEAR(image.dotsPerMeterX() * 0.0254, 300, 0.02) << name;
  }
}

TEST(Picture, BackgroundImageFillsThePlotOrStandsInItsMiddle) {
  TxyGraph graph;
  FillGraph(graph);
  const testing::TemporaryFolder folder;
  QImage image(20, 10, QImage::Format_RGB32);
  image.fill(QColor(1, 2, 3));
  ASSERT_TRUE(image.save(QString::fromStdString(folder.File("b.png").string())));
  Appearance appearance = graph.GetAppearance();
  appearance.data_directory = folder.Path().string();
  appearance.background_image_file = "b.png";
  graph.SetAppearance(appearance);
  const QRgb ink = qRgb(1, 2, 3);
  QImage picture = RenderImage(graph, {400, 300});
  EXPECT_EQ(picture.pixel(205, 147), ink);
  EXPECT_EQ(picture.pixel(215, 147), Rgb(kPlot));
  appearance.stretch_background = true;
  graph.SetAppearance(appearance);
  picture = RenderImage(graph, {400, 300});
  EXPECT_EQ(picture.pixel(60, 60), ink);
  EXPECT_EQ(picture.pixel(40, 60), Rgb(kMargin));

  std::ofstream(folder.File("none.png")) << "no picture at all";
  for (const char* none : {"none.png", "missing.png", ".", "/dev/zero"}) {
    appearance.background_image_file = none;
    graph.SetAppearance(appearance);
    EXPECT_EQ(RenderImage(graph, {400, 300}).pixel(60, 60), Rgb(kPlot)) << none;
    EXPECT_NE(graph.Background().Error().find("Cannot read the picture: "), std::string::npos);
  }
}

TEST(Picture, LineStylesTellDataSetsApartOnPaperOnly) {
  Appearance appearance;
  EXPECT_EQ(SolidLineStyle(appearance, 1, PaintTarget::Paper), LineStyle::Solid);
  appearance.print_style_for_lines = true;
  EXPECT_EQ(SolidLineStyle(appearance, 1, PaintTarget::Screen), LineStyle::Solid);
  EXPECT_EQ(SolidLineStyle(appearance, 1, PaintTarget::Metafile), LineStyle::Dash);
  TxyGraph graph;
  FillGraph(graph);
  graph.AddSeries(std::make_unique<TSeries>()).AddPoint(0, 2);
  graph.Series(1).AddPoint(10, 2);
  const std::size_t solid = WmfBytes(graph, {400, 300}).size();
  appearance = graph.GetAppearance();
  appearance.print_style_for_lines = true;
  graph.SetAppearance(appearance);
  EXPECT_GT(WmfBytes(graph, {400, 300}).size(), solid + 500) << "one record a dash";
}

TEST(Picture, EveryKindTakesHostileSettings) {
  TxyGraph graph;
  FillGraph(graph);
  Appearance appearance = graph.GetAppearance();
  appearance.color = Color{std::numeric_limits<std::int32_t>::min()};
  appearance.axes_color = Color{-1};
  appearance.font_for_labels.size = 10000, appearance.font_for_title.size = 0;
  appearance.title_of_graph = "title";
  appearance.length_of_cross = std::numeric_limits<std::int32_t>::max();
  appearance.show_cross_at_zero = true;
  graph.SetAppearance(appearance);
  const double bad[] = {std::numeric_limits<double>::infinity(),
                        -std::numeric_limits<double>::infinity(),
                        std::numeric_limits<double>::quiet_NaN(), 1e308};
  for (const MarkType type :
       {MarkType::Vertical, MarkType::Horizontal, MarkType::Point, MarkType::Line}) {
    for (const double value : bad) {
      Mark mark;
      mark.type = type;
      mark.x1 = mark.y2 = value;
      mark.y1 = mark.x2 = -value;
      graph.Marks().AddMark(mark);
    }
  }
  for (const int margin : {50, 200, 100'000, -50'000}) {
    Dimensions dimensions = graph.GetDimensions();
    dimensions.left_margin = dimensions.top_margin = margin;
    graph.SetDimensions(dimensions);
    for (const auto bytes :
         {&PngBytes, &JpegBytes, &BmpBytes, &GifBytes, &WmfBytes, &SvgBytes, &PdfBytes})
      EXPECT_FALSE(bytes(graph, {400, 300}).empty()) << margin;
  }
  graph.SetDimensions({});
  for (const int size : {1, 2, 60, 101}) EXPECT_EQ(RenderImage(graph, {size, size}).width(), size);
  EXPECT_THROW(RenderImage(graph, {0, 10}), Error);
}

TEST(Picture, WhatCannotBeWrittenIsToldAndTheOldFileStays) {
  TxyGraph graph;
  FillGraph(graph);
  const testing::TemporaryFolder folder;
  for (const FileKind& kind : FileKinds()) {
    if (kind.holds != FileHolds::Picture) continue;
    const std::string extension(kind.ending);
    EXPECT_THROW(WritePicture(graph, folder.Path() / "gone" / ("a" + extension)), FileError);
    const std::filesystem::path full = folder.Path() / ("full" + extension);
    std::filesystem::create_symlink("/dev/full", full);
    EXPECT_THROW(WritePicture(graph, full), FileError) << extension;
    // A disk that takes no more than 100 bytes of a file.
    const std::filesystem::path path = folder.File("old" + extension);
    std::ofstream(path) << "old";
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    const rlimit small{100, usual.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THROW(WritePicture(graph, path), FileError) << extension;
    setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, before);
    EXPECT_EQ(std::filesystem::file_size(path), 3U) << extension;
  }
}

}  // namespace
}  // namespace tarnwick
