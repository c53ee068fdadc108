#include "graph/pictures/picture_export.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageWriter>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QSvgGenerator>
#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "base/error.h"
#include "base/number_text.h"
#include "graph/axes/plot_metrics.h"
#include "graph/gif/gif_file.h"
#include "graph/layout/plot_layout.h"
#include "graph/metafile/metafile_picture.h"
#include "graph/paint/paint_plot.h"
#include "graph/pictures/fast_png.h"
#include "graph/pictures/pdf_page.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr int kLargestSide = 30000;
constexpr double kScreenDpi = 96;
constexpr double kInchMillimetres = 25.4;
constexpr int kJpegQuality = 95;

/// Paints the graph in logical pixels onto a painter of device pixels.
void PaintScaled(QPainter& painter, const TxyGraph& graph, QSizeF dots, int dpi,
                 PaintTarget target) {
  const double scale = dpi / kScreenDpi;
  painter.scale(scale, scale);
  PaintPlot(painter, graph, LayoutPlot(graph, dots / scale, TextMetrics()), target);
}

std::string BytesOf(const QByteArray& bytes) {
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

std::string EncodeByPlugin(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, format);
  writer.setQuality(kJpegQuality);
  if (!writer.write(image))
    throw Error("Can not write the picture: " + writer.errorString().toStdString());
  return BytesOf(bytes);
}

/// Qt writes an SVG's size with six digits, from which a viewer may make a pixel more.
QByteArray WithExactSize(QByteArray svg, const PictureOptions& options) {
  const auto side = [&](double dots, double millimetres) {
    const std::string text = options.millimetres.isEmpty()
                                 ? ShortestText(dots * kScreenDpi / options.dpi)
                                 : ShortestText(millimetres) + "mm";
    return QByteArray::fromStdString('"' + text + '"');
  };
  const qsizetype from = svg.indexOf("<svg width=");
  const qsizetype to = svg.indexOf("viewBox", from);
  if (from < 0 || to < 0) throw Error("Can not write the picture: no size");
  return svg.replace(from, to - from,
                     "<svg width=" + side(options.width, options.millimetres.width()) +
                         " height=" + side(options.height, options.millimetres.height()) + ' ');
}

/// Qt makes pages of whole points only, and writes them with digits to spare: the exact size takes their place.
void CutPage(QSizeF points, std::string& pdf) {
  constexpr std::string_view kBox = "/MediaBox [0 0 ";
  const std::size_t from = pdf.find(kBox);
  const std::size_t to = pdf.find(']', from);
  if (from == std::string::npos || to == std::string::npos) return;
  const std::size_t room = to - from - kBox.size();
  std::string size = FixedText(points.width(), 4) + ' ' + FixedText(points.height(), 4);
  if (size.size() > room) return;
  size.resize(room, ' ');
  pdf.replace(from + kBox.size(), room, size);
}

}  // namespace

QSizeF PictureOptions::Dots() const {
  return millimetres.isEmpty() ? QSizeF(width, height) : millimetres * dpi / kInchMillimetres;
}

void PictureOptions::Validate() const {
  if (width < 1 || height < 1 || width > kLargestSide || height > kLargestSide) {
    throw Error("a picture's sides are 1 to " + std::to_string(kLargestSide) + " pixels");
  }
  if (dpi < kLowestDpi || dpi > kHighestDpi) {
    throw Error("a picture's resolution is " + std::to_string(kLowestDpi) + " to " +
                std::to_string(kHighestDpi) + " dots per inch");
  }
}

int WholePixels(double millimetres, int dpi) {
  constexpr double kMost = 1e9;
  return static_cast<int>(
      std::lround(std::clamp(millimetres / kInchMillimetres * dpi, 0.0, kMost)));
}

QImage RenderImage(const TxyGraph& graph, const PictureOptions& options) {
  options.Validate();
  QImage image(options.width, options.height, QImage::Format_RGB32);
  if (image.isNull()) throw Error("not enough memory for the picture");
  const int dots_per_metre = static_cast<int>(std::lround(options.dpi * 1000 / kInchMillimetres));
  image.setDotsPerMeterX(dots_per_metre);
  image.setDotsPerMeterY(dots_per_metre);
  image.fill(Qt::white);
  QPainter painter(&image);
  PaintScaled(painter, graph, QSizeF(options.width, options.height), options.dpi,
              PaintTarget::Screen);
  return image;
}

std::string PngBytes(const TxyGraph& graph, const PictureOptions& options) {
  return EncodePng(RenderImage(graph, options));
}

std::string JpegBytes(const TxyGraph& graph, const PictureOptions& options) {
  return EncodeByPlugin(RenderImage(graph, options), "jpg");
}

std::string BmpBytes(const TxyGraph& graph, const PictureOptions& options) {
  return EncodeByPlugin(RenderImage(graph, options), "bmp");
}

std::string GifBytes(const TxyGraph& graph, const PictureOptions& options) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  const QString error = WriteGif(buffer, RenderImage(graph, options));
  if (!error.isEmpty()) throw Error("Can not write the picture: " + error.toStdString());
  return BytesOf(bytes);
}

std::string SvgBytes(const TxyGraph& graph, const PictureOptions& options) {
  options.Validate();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setSize(QSize(options.width, options.height));
  generator.setViewBox(QRectF(QPointF(0, 0), options.Dots()));
  generator.setResolution(options.dpi);
  generator.setTitle(QString::fromStdString(graph.GetAppearance().title_of_graph));
  QPainter painter(&generator);
  PaintScaled(painter, graph, options.Dots(), options.dpi, PaintTarget::Vector);
  painter.end();
  return BytesOf(WithExactSize(bytes, options));
}

std::string PdfBytes(const TxyGraph& graph, const PictureOptions& options) {
  options.Validate();
  constexpr double kInchPoints = 72;
  const QSizeF points = options.Dots() * kInchPoints / options.dpi;
  const QSizeF whole(std::ceil(points.width()), std::ceil(points.height()));
  const QPageLayout page(QPageSize(whole, QPageSize::Point, QString(), QPageSize::ExactMatch),
                         QPageLayout::Portrait, QMarginsF());
  std::string pdf = PdfOfOnePage(graph, page, options.dpi, [&](QPainter& painter) {
    // A page is measured from its lower left corner.
    painter.translate(0, (whole.height() - points.height()) * options.dpi / kInchPoints);
    PaintScaled(painter, graph, options.Dots(), options.dpi, PaintTarget::Vector);
  });
  CutPage(points, pdf);
  return pdf;
}

std::string WmfBytes(const TxyGraph& graph, const PictureOptions& options) {
  options.Validate();
  MetafilePicture picture(QSize(options.width, options.height), options.dpi);
  QPainter painter(&picture);
  PaintScaled(painter, graph, QSizeF(options.width, options.height), options.dpi,
              PaintTarget::Metafile);
  painter.end();
  return picture.Bytes();
}

}  // namespace tarnwick
