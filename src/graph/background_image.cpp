#include "graph/background_image.h"

#include <QFile>
#include <QImageReader>
#include <system_error>

#include "base/error.h"
#include "graph/gif/gif_file.h"

namespace tarnwick {
namespace {

PictureFile Refused(const std::filesystem::path& path, const QString& reason) {
  const FileError error("Cannot read the picture", path.string(), reason.toStdString());
  return {{}, error.what()};
}

}  // namespace

PictureFile ReadPictureFile(const std::filesystem::path& path) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (!std::filesystem::is_regular_file(status)) {
    return Refused(path, error ? QString::fromStdString(error.message())
                               : QStringLiteral("it is no regular file"));
  }
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return Refused(path, file.errorString());
  if (IsGif(file)) {
    GifPicture gif = ReadGif(file);
    return gif.error.isEmpty() ? PictureFile{std::move(gif.image), {}} : Refused(path, gif.error);
  }
  QImageReader reader(&file);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  PictureFile picture{reader.read(), {}};
  return picture.image.isNull() ? Refused(path, reader.errorString()) : picture;
}

void BackgroundImage::Update(const std::filesystem::path& path) {
  std::error_code
      ignored;  // a file that cannot be looked at cannot be read either, which is told then
  const auto written = path.empty() ? std::filesystem::file_time_type()
                                    : std::filesystem::last_write_time(path, ignored);
  if (path == path_ && written == written_) return;
  path_ = path;
  written_ = written;
  picture_ = path.empty() ? PictureFile() : ReadPictureFile(path);
}

}  // namespace tarnwick
