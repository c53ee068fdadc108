// Pictures of a graph: images in memory and the bytes of picture files. Knows the picture formats; the drawing is
// PaintPlot's.
#pragma once

#include <string>

#include <QImage>
#include <QSizeF>

namespace tarnwick {

class TxyGraph;

/// Size in device pixels; everything measured in points or screen pixels scales by dpi / 96.
struct PictureOptions {
  static constexpr int kLowestDpi = 10;
  static constexpr int kHighestDpi = 2400;
  int width = 800;
  int height = 600;
  int dpi = 96;
  /// The size that was asked for in millimetres, which .svg and .pdf keep exactly; empty when pixels were asked for.
  QSizeF millimetres = QSizeF();
  /// Exact size in dots, whole ones unless it comes from millimetres.
  QSizeF Dots() const;
  /// Throws Error on a size outside 1 to 30000 pixels or a resolution outside 10 to 2400.
  void Validate() const;
};

/// Millimetres in dots, to the nearest whole one; never beyond the range of an int.
int WholePixels(double millimetres, int dpi);

/// The picture as an image. Needs a QGuiApplication. Throws Error when the options are not valid.
QImage RenderImage(const TxyGraph& graph, const PictureOptions& options = {});

// The bytes of a picture file of each kind. All need a QGuiApplication, and throw Error when the options are not valid.
std::string PngBytes(const TxyGraph& graph, const PictureOptions& options = {});
std::string GifBytes(const TxyGraph& graph, const PictureOptions& options = {});
std::string JpegBytes(const TxyGraph& graph, const PictureOptions& options = {});  ///< quality 95
std::string BmpBytes(const TxyGraph& graph, const PictureOptions& options = {});
std::string WmfBytes(const TxyGraph& graph, const PictureOptions& options = {});
std::string SvgBytes(const TxyGraph& graph, const PictureOptions& options = {});
std::string PdfBytes(const TxyGraph& graph, const PictureOptions& options = {});

}  // namespace tarnwick
