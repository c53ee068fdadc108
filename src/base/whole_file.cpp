#include "base/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <system_error>

#include "base/descriptor.h"
#include "base/error.h"

namespace tarnwick {
namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 18;
constexpr const char* kText = "Cannot write the file";
constexpr mode_t kUsualMode = 0666;  // narrowed by the umask
constexpr int kMostLinks = 40;
constexpr const char* kOpenFiles = "/proc/self/fd/";  // where a nameless file can be reached

// A link to a file that does not exist yet is followed too, so that writing does not replace the link.
std::filesystem::path FollowLinks(std::filesystem::path path) {
  std::error_code error;
  for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(path, error); ++i) {
    const std::filesystem::path link = std::filesystem::read_symlink(path, error);
    if (error) break;
    path = path.parent_path() / link;  // an absolute link replaces the whole
  }
  return path;
}

}  // namespace

WholeFile::WholeFile(const std::filesystem::path& path) : shown_(path), target_(FollowLinks(path)) {
  struct stat old {};
  const bool exists = ::stat(target_.c_str(), &old) == 0;
  if (!exists && errno != ENOENT) Fail(errno);
  if (exists && S_ISDIR(old.st_mode)) Fail(EISDIR);
  if (exists && !S_ISREG(old.st_mode)) {
    temporary_ = target_;
    descriptor_ = ::open(target_.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor_ < 0) Fail(errno);
    return;
  }
  // Renaming would replace even a file that may not be written.
  if (exists && ::access(target_.c_str(), W_OK) != 0) Fail(errno);
  const std::filesystem::path folder = target_.has_parent_path() ? target_.parent_path() : ".";
  if (::access(kOpenFiles, X_OK) == 0)
    descriptor_ = ::open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, kUsualMode);
  if (descriptor_ < 0) OpenNamed();
  if (exists) {
    // Where the owner cannot be kept (another user's file), the file is ours from now on.
    [[maybe_unused]] const int owner = ::fchown(descriptor_, old.st_uid, old.st_gid);
    [[maybe_unused]] const int mode = ::fchmod(descriptor_, old.st_mode & 0777);
  }
}

WholeFile::~WholeFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
  if (!committed_ && !temporary_.empty() && temporary_ != target_) ::unlink(temporary_.c_str());
}

std::filesystem::path WholeFile::TemporaryName(int attempt) const {
  return target_.parent_path() /
         ('.' + std::to_string(::getpid()) + '-' + std::to_string(attempt) + ".part");
}

void WholeFile::OpenNamed() {
  for (int attempt = 0; descriptor_ < 0; ++attempt) {
    const std::filesystem::path name = TemporaryName(attempt);
    descriptor_ = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kUsualMode);
    if (descriptor_ < 0 && errno != EEXIST) Fail(errno);
    if (descriptor_ >= 0) temporary_ = name;
  }
}

/// False when the name is taken.
bool WholeFile::LinkAs(const std::filesystem::path& name) const {
  const std::string open_file = kOpenFiles + std::to_string(descriptor_);
  if (::linkat(AT_FDCWD, open_file.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0)
    return true;
  if (errno != EEXIST) Fail(errno);
  return false;
}

/// Gives the complete file the target's name. A link never replaces a file, a rename does.
void WholeFile::Name() {
  if (temporary_.empty()) {
    if (LinkAs(target_)) return;
    int attempt = 0;
    while (!LinkAs(TemporaryName(attempt))) ++attempt;
    temporary_ = TemporaryName(attempt);
  }
  if (::rename(temporary_.c_str(), target_.c_str()) != 0) Fail(errno);
}

void WholeFile::Fail(int reason) const {
  throw FileError(kText, shown_.string(), std::generic_category().message(reason));
}

void WholeFile::FlushBuffer() {
  if (const int reason = WriteAll(descriptor_, buffer_); reason != 0) Fail(reason);
  buffer_.clear();
}

void WholeFile::Write(std::string_view bytes) {
  buffer_.append(bytes);
  if (buffer_.size() >= kBufferSize) FlushBuffer();
}

void WholeFile::Commit() {
  FlushBuffer();
  const bool straight = temporary_ == target_;
  if (!straight && ::fsync(descriptor_) != 0) Fail(errno);
  if (!straight) Name();
  committed_ = true;
  const int closed = ::close(descriptor_);
  descriptor_ = -1;
  if (straight && closed != 0) Fail(errno);  // of a file, fsync has told all there is to tell
}

void WriteWholeFile(const std::filesystem::path& path, std::string_view contents) {
  WholeFile file(path);
  file.Write(contents);
  file.Commit();
}

void RefuseTooLargeFiles() {
  ::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace tarnwick
