#include "sources/readers/file_on_disk.h"

#include <QDir>
#include <filesystem>
#include <system_error>

#include "base/error.h"

namespace tarnwick {
namespace {

bool IsWhole(const std::string& name, std::size_t bytes) {
  std::error_code ignored;  // what cannot be asked cannot be opened either
  return std::filesystem::is_regular_file(name, ignored) &&
         std::filesystem::file_size(name, ignored) == bytes;
}

}  // namespace

FileOnDisk::FileOnDisk(const MappedFile& file, const std::string& name) : path_(name) {
  const std::string_view bytes = file.Bytes();
  if (IsWhole(name, bytes.size())) return;
  copy_ = std::make_unique<QTemporaryFile>(QDir::tempPath() + "/tarnwick-XXXXXX");
  const auto size = static_cast<qint64>(bytes.size());
  if (!copy_->open() || copy_->write(bytes.data(), size) != size || !copy_->flush()) {
    throw FileError("What the file unpacks to cannot be written for its reader", name,
                    copy_->errorString().toStdString());
  }
  path_ = copy_->fileName().toStdString();
}

}  // namespace tarnwick
