// The image behind a plot, kept between drawings. Knows picture files; neither graphs nor painters.
#pragma once

#include <QImage>
#include <filesystem>
#include <string>

namespace tarnwick {

/// An image from a file, or one sentence saying why there is none.
struct PictureFile {
  QImage image;
  std::string error;
};

/// Reads a picture of any known format, by its content. A pipe, a device, a damaged or oversized file gives an error.
PictureFile ReadPictureFile(const std::filesystem::path& path);

class BackgroundImage {
 public:
  /// Reads the file when it is another one, or a newer one, than the last time; an empty path stands for no image.
  void Update(const std::filesystem::path& path);
  /// Null when there is none.
  const QImage& Image() const { return picture_.image; }
  /// Empty when the image could be read or none is wanted.
  const std::string& Error() const { return picture_.error; }

 private:
  std::filesystem::path path_;
  std::filesystem::file_time_type written_;
  PictureFile picture_;
};

}  // namespace tarnwick
