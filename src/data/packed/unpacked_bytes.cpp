#include "data/packed/unpacked_bytes.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <utility>

#include "base/error.h"

namespace tarnwick {

UnpackedBytes::UnpackedBytes(std::size_t in_memory, std::filesystem::path folder, std::string name)
    : in_memory_(in_memory), folder_(std::move(folder)), name_(std::move(name)) {}

void UnpackedBytes::Append(std::string_view bytes) {
  size_ += bytes.size();
  if (!file_ && size_ <= in_memory_) {
    contents_ += bytes;
    return;
  }
  if (!file_) OpenFile();
  if (const int reason = WriteAll(file_->Value(), bytes); reason != 0) Fail(reason);
}

void UnpackedBytes::OpenFile() {
  std::error_code error;
  if (folder_.empty()) folder_ = std::filesystem::temp_directory_path(error);
  if (error) folder_ = "/tmp";  // what TMPDIR names is no folder
  std::string name = (folder_ / "tarnwick-XXXXXX").string();
  file_ = std::make_unique<Descriptor>(::mkostemp(name.data(), O_CLOEXEC));
  if (file_->Value() < 0) Fail(errno);
  ::unlink(name.c_str());
  if (const int reason = WriteAll(file_->Value(), contents_); reason != 0) Fail(reason);
  contents_ = {};
}

MappedFile UnpackedBytes::Take() {
  if (!file_) return MappedFile::Holding(std::move(contents_));
  if (::lseek(file_->Value(), 0, SEEK_SET) != 0)
    Fail(errno);  // where it cannot be mapped, it is read
  return MappedFile(*file_, name_);
}

void UnpackedBytes::Fail(int reason) const {
  throw FileError("The file cannot be unpacked into the folder for temporary files, \"" +
                      folder_.string() +
                      "\" (TMPDIR names another): " + std::generic_category().message(reason),
                  name_, "");
}

}  // namespace tarnwick
