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
constexpr std::size_t kBytesCompared = 4096;

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
  Forget();
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

void GrowingFile::Forget() {
  position_ = 0;
  first_read_.clear();
  last_read_.clear();
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

GrowingFile::Came GrowingFile::Read(std::string& bytes) {
  if (!file_) OpenWhereThere();
  if (!file_) return Came::Nothing;
  // Asked before reading: what the old file got until then is read first.
  const bool replaced = ReplacedByAnother();
  // What was read last is read again with what follows it, in one call: a file that was cut, even if it has grown beyond its old
  // size since, gives itself away, and nobody can write it anew between a look and the reading. Its beginning is looked at behind
  // that: rows that are all alike look the same wherever they stand.
  std::string got =
      At(position_ - static_cast<off_t>(last_read_.size()), last_read_.size() + kMostAtOnce);
  const bool grew = got.size() > last_read_.size();
  if (!got.starts_with(last_read_) || (grew && At(0, first_read_.size()) != first_read_)) {
    Forget();
    return Came::Rewritten;
  }
  got.erase(0, last_read_.size());
  if (!got.empty()) {
    first_read_.append(got, 0, kBytesCompared - first_read_.size());
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
