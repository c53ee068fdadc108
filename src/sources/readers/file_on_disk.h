// A file under a name that another program can open. Knows no formats.
#pragma once

#include <QTemporaryFile>
#include <memory>
#include <string>

#include "base/mapped_file.h"

namespace tarnwick {

class FileOnDisk {
 public:
  /// `file` was read from `name`. What came through a pipe, or was packed there, is written into a file for as long as this
  /// lives. Throws FileError.
  FileOnDisk(const MappedFile& file, const std::string& name);

  const std::string& Path() const { return path_; }

 private:
  std::unique_ptr<QTemporaryFile> copy_;
  std::string path_;
};

}  // namespace tarnwick
