// A Windows metafile to paint on. Knows painters and their state; neither graphs nor files.
#pragma once

#include <QPaintDevice>
#include <memory>
#include <string>

namespace tarnwick {

class MetafileEngine;

/// A placeable Windows metafile as a paint device of `pixels` device pixels. Lines become solid polylines (dashes one by one: a
/// metafile's own dashed pens are one pixel wide), areas polygons, texts real text in the named font; letters that
/// Windows-1252 lacks are drawn as polygons. There is no transparency in a metafile: colours are mixed with white by their alpha.
/// A clip of any shape counts by its bounding rectangle. Logical units are fractions of a device pixel, as fine as 16 bits allow.
class MetafilePicture final : public QPaintDevice {
 public:
  /// Each side 1 to 30000 pixels, dpi 1 to 2400.
  MetafilePicture(QSize pixels, int dpi);
  ~MetafilePicture() override;

  /// The file's bytes, once the painter has ended.
  std::string Bytes() const;
  QPaintEngine* paintEngine() const override;

 protected:
  int metric(PaintDeviceMetric metric) const override;

 private:
  QSize pixels_;
  int dpi_;
  std::unique_ptr<MetafileEngine> engine_;
};

}  // namespace tarnwick
