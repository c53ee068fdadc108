#include "sources/follow/growing_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "base/error.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostAtOnce = std::size_t{1} << 20;
constexpr std::size_t kBytesCompared = 64;

[[noreturn]] void Fail(const std::filesystem::path& path, int reason) {
  throw FileError("Cannot read the file", path.string(), std::generic_category().message(reason));
}

}  // namespace

void GrowingFile::Reopen() {
  file_.reset();
  there_ = true;
}

void GrowingFile::OpenWhereThere() {
  file_.emplace(::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  there_ = file_->Value() >= 0;
  position_ = 0;
  last_read_.clear();
  struct stat status {};
  if (there_ && ::fstat(file_->Value(), &status) == 0) {
    device_ = status.st_dev;
    node_ = status.st_ino;
    if (S_ISREG(status.st_mode)) return;
    file_.reset();
    throw FileError("Only a file can be followed", path_.string(), "");
  }
  const int reason = errno;
  file_.reset();
  if (reason != ENOENT) Fail(path_, reason);
}

bool GrowingFile::ReplacedByAnother() {
  struct stat status {};
  there_ = ::stat(path_.c_str(), &status) == 0;
  return there_ && (status.st_dev != device_ || status.st_ino != node_);
}

std::string GrowingFile::At(off_t from, std::size_t count) const {
  std::string bytes(count, '\0');
  ssize_t got = 0;
  do {
    got = ::pread(file_->Value(), bytes.data(), count, from);
  } while (got < 0 && errno == EINTR);
  if (got < 0) Fail(path_, errno);
  bytes.resize(static_cast<std::size_t>(got));
  return bytes;
}

/// A file that was cut and has grown beyond its old size since gives itself away by what stands where reading ended.
bool GrowingFile::WasRewritten(off_t size) {
  if (size < position_) return true;
  if (size == position_ || last_read_.empty()) return false;
  return At(position_ - static_cast<off_t>(last_read_.size()), last_read_.size()) != last_read_;
}

GrowingFile::Came GrowingFile::Read(std::string& bytes) {
  if (!file_) OpenWhereThere();
  if (!file_) return Came::Nothing;
  struct stat status {};
  if (::fstat(file_->Value(), &status) != 0) Fail(path_, errno);
  if (WasRewritten(status.st_size)) {
    position_ = 0;
    last_read_.clear();
    return Came::Rewritten;
  }
  // Asked before reading: what the old file got until then is read first.
  const bool replaced = ReplacedByAnother();
  const std::string got = At(position_, kMostAtOnce);
  if (!got.empty()) {
    bytes += got;
    position_ += static_cast<off_t>(got.size());
    last_read_.append(got, got.size() - std::min(got.size(), kBytesCompared));
    last_read_.erase(0, last_read_.size() - std::min(last_read_.size(), kBytesCompared));
    return Came::Bytes;
  }
  if (!replaced) return Came::Nothing;
  OpenWhereThere();
  return file_ ? Came::NewFile : Came::Nothing;
}

}  // namespace tarnwick
