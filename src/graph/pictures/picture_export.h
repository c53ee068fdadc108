// Pictures of a graph: images in memory and picture files. Knows the picture formats; the drawing is PaintPlot's.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

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

/// The bytes that a picture file with this extension (".svg", in lower case) holds. Throws Error naming an unknown
/// extension.
std::string EncodePicture(const TxyGraph& graph, std::string_view extension,
                          const PictureOptions& options = {});

/// Writes the picture by the file's extension: .png, .jpg (quality 95), .bmp, .gif, .wmf, .svg, .pdf. The file is written whole or not
/// at all. Throws Error naming an unknown extension, FileError when writing fails.
void WritePicture(const TxyGraph& graph, const std::filesystem::path& path,
                  const PictureOptions& options = {});

}  // namespace tarnwick
