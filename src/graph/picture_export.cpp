#include "graph/picture_export.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageWriter>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QSvgGenerator>
#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>

#include "base/error.h"
#include "base/text_encoding.h"
#include "base/whole_file.h"
#include "graph/fast_png.h"
#include "graph/gif/gif_file.h"
#include "graph/metafile/metafile_picture.h"
#include "graph/paint_plot.h"
#include "graph/pdf_page.h"
#include "graph/plot_layout.h"
#include "graph/plot_metrics.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr int kLargestSide = 30000;
constexpr double kScreenDpi = 96;
constexpr double kInchMillimetres = 25.4;
constexpr int kJpegQuality = 95;

double ScaleOf(const PictureOptions& options) {
  return options.dpi / kScreenDpi;
}

QSizeF LogicalSize(const PictureOptions& options) {
  return QSizeF(options.width, options.height) / ScaleOf(options);
}

/// Paints the graph in logical pixels onto a painter of device pixels.
void PaintScaled(QPainter& painter, const TxyGraph& graph, const PictureOptions& options,
                 PaintTarget target) {
  painter.scale(ScaleOf(options), ScaleOf(options));
  PaintPlot(painter, graph, LayoutPlot(graph, LogicalSize(options), TextMetrics()), target);
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
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setSize(QSize(options.width, options.height));
  generator.setViewBox(QRectF(0, 0, options.width, options.height));
  generator.setResolution(options.dpi);
  generator.setTitle(QString::fromStdString(graph.GetAppearance().title_of_graph));
  QPainter painter(&generator);
  PaintScaled(painter, graph, options, PaintTarget::Vector);
  painter.end();
  return BytesOf(bytes);
}

std::string PdfBytes(const TxyGraph& graph, const PictureOptions& options) {
  const QSizeF millimetres = QSizeF(options.width, options.height) * kInchMillimetres / options.dpi;
  const QPageLayout page(
      QPageSize(millimetres, QPageSize::Millimeter, QString(), QPageSize::ExactMatch),
      QPageLayout::Portrait, QMarginsF(0, 0, 0, 0));
  return PdfOfOnePage(graph, page, options.dpi, [&](QPainter& painter) {
    PaintScaled(painter, graph, options, PaintTarget::Vector);
  });
}

std::string WmfBytes(const TxyGraph& graph, const PictureOptions& options) {
  MetafilePicture picture(QSize(options.width, options.height), options.dpi);
  QPainter painter(&picture);
  PaintScaled(painter, graph, options, PaintTarget::Metafile);
  painter.end();
  return picture.Bytes();
}

struct PictureFormat {
  std::string_view extension;
  std::string (*encode)(const TxyGraph&, const PictureOptions&);
};

constexpr std::array<PictureFormat, 8> kFormats = {{{".png", &PngBytes},
                                                    {".gif", &GifBytes},
                                                    {".wmf", &WmfBytes},
                                                    {".jpg", &JpegBytes},
                                                    {".jpeg", &JpegBytes},
                                                    {".bmp", &BmpBytes},
                                                    {".svg", &SvgBytes},
                                                    {".pdf", &PdfBytes}}};

}  // namespace

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
  PaintScaled(painter, graph, options, PaintTarget::Screen);
  return image;
}

std::string EncodePicture(const TxyGraph& graph, std::string_view extension,
                          const PictureOptions& options) {
  options.Validate();
  for (const PictureFormat& format : kFormats) {
    if (format.extension == extension) return format.encode(graph, options);
  }
  throw Error("no kind of picture ends in \"" + std::string(extension) +
              "\"; .png, .jpg, .bmp, .gif, .wmf, .svg and .pdf do");
}

void WritePicture(const TxyGraph& graph, const std::filesystem::path& path,
                  const PictureOptions& options) {
  const std::string extension = LowerAscii(path.extension().string());
  WriteWholeFile(path, EncodePicture(graph, extension, options));
}

}  // namespace tarnwick
