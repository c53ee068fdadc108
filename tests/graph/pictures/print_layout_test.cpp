#include "graph/pictures/print_layout.h"

#include <QImage>
#include <QProcess>

#include <gtest/gtest.h>

#include "base/whole_file.h"
#include "graph/xy_graph.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

TEST(PrintLayout, APictureKeepsItsShapeAndStaysOnTheSheet) {
  struct Row {
    int left, top, scale;
    QRectF place;
  };
  const QRectF sheet(10, 20, 200, 400);
  const QSizeF picture(800, 400);
  const Row rows[] = {
      {5, 5, 90, {20, 40, 180, 90}},        // as a new graph says
      {0, 0, 100, {10, 20, 200, 100}},      // across the whole sheet
      {60, 0, 100, {130, 20, 80, 40}},      // what is left of the width
      {0, 90, 100, {10, 380, 80, 40}},      // what is left of the height
      {0, 0, 1, {10, 20, 20, 10}},          // not smaller than can be seen
      {-30, -1, 5000, {10, 20, 200, 100}},  // a damaged file's
      {2000, 100, 90, {190, 380, 20, 10}},
  };
  for (const Row& row : rows) {
    Dimensions dimensions;
    dimensions.print_x_offset_pct = row.left;
    dimensions.print_y_offset_pct = row.top;
    dimensions.print_scale_pct = row.scale;
    EXPECT_EQ(PrintPlace(sheet, picture, dimensions), row.place) << row.left << " " << row.top;
  }
  EXPECT_TRUE(PrintPlace(QRectF(), picture, {}).isEmpty());
  EXPECT_TRUE(PrintPlace(sheet, QSizeF(0, 5), {}).isEmpty());
}

constexpr QRgb kRed = qRgb(255, 0, 0);
constexpr QRgb kMargin = qRgb(200, 220, 240);

/// A level red line across the plot, in a picture of 400 by 300.
void FillGraph(TxyGraph& graph) {
  auto series = std::make_unique<TSeries>();
  series->AddPoint(0, 5);
  series->AddPoint(10, 5);
  SeriesStyle style;
  style.line_color = Color::FromRgb(255, 0, 0);
  style.line_width = 3;
  style.show_symbols = false;
  series->SetStyle(style);
  graph.AddSeries(std::move(series));
  Appearance appearance = graph.GetAppearance();
  appearance.margin_color = Color::FromRgb(200, 220, 240);
  graph.SetAppearance(appearance);
  graph.Resize(400, 300);
}

/// The page as a picture with two pixels a millimetre.
QImage Printed(const TxyGraph& graph, const QPageLayout& page) {
  const testing::TemporaryFolder folder;
  WriteWholeFile(folder.File("page.pdf"), PrintedPdf(graph, page));
  const QString base = QString::fromStdString(folder.File("page").string());
  EXPECT_EQ(
      QProcess::execute("pdftoppm", {"-r", "50.8", "-singlefile", "-png", base + ".pdf", base}), 0);
  return QImage(base + ".png");
}

QRect BoundsOf(const QImage& image, QRgb color) {
  QRect bounds;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixel(x, y) == color) bounds |= QRect(x, y, 1, 1);
    }
  }
  return bounds;
}

TEST(PrintLayout, APageHoldsThePictureAtItsPlaceWithTheBackgroundWanted) {
  const QPageLayout page(QPageSize(QPageSize::A4), QPageLayout::Landscape,
                         QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter);
  TxyGraph graph;
  FillGraph(graph);
  const QImage plain = Printed(graph, page);
  EXPECT_NEAR(plain.width(), 594, 1);
  EXPECT_NEAR(plain.height(), 420, 1);
  EXPECT_TRUE(BoundsOf(plain, kMargin).isEmpty());

  Appearance appearance = graph.GetAppearance();
  appearance.print_with_background = true;
  graph.SetAppearance(appearance);
  const QImage with_background = Printed(graph, page);
  // 277 x 190 mm within the margins: the picture is 90 % of the height high, 5 % of both from the corner.
  const QRect picture = BoundsOf(with_background, kMargin);
  EXPECT_NEAR(picture.left(), 2 * (10 + 13.85), 2);
  EXPECT_NEAR(picture.top(), 2 * (10 + 9.5), 2);
  EXPECT_NEAR(picture.height(), 2 * 171, 2);
  EXPECT_NEAR(picture.width(), 2 * 228, 2);
  const QRect line = BoundsOf(with_background, kRed);
  EXPECT_EQ(line.left(), BoundsOf(plain, kRed).left());
  EXPECT_TRUE(picture.contains(line));
  EXPECT_GT(line.width(), picture.width() * 2 / 3);

  // With or without the background, nothing is seen through an inserted graph.
  TxyChildGr& child = graph.AddChild();
  Dimensions place = child.GetDimensions();
  place.hor_position = 0.4, place.hor_size = 0.3;
  place.ver_position = 0.2, place.ver_size = 0.6;
  child.SetDimensions(place);
  for (const bool with : {false, true}) {
    appearance.print_with_background = with;
    graph.SetAppearance(appearance);
    const QImage printed = Printed(graph, page);
    const auto has_red = [&](double share) {
      const int x = picture.left() + qRound(share * picture.width());
      return !BoundsOf(printed.copy(x, 0, 1, printed.height()), kRed).isEmpty();
    };
    EXPECT_TRUE(has_red(0.3));
    EXPECT_FALSE(has_red(0.52));
  }
}

}  // namespace
}  // namespace tarnwick
