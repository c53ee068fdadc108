#include "base/mapped_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "base/descriptor.h"
#include "base/error.h"
#include "base/mapping_guard.h"

namespace tarnwick {
namespace {

constexpr std::size_t kBlockSize = std::size_t{1} << 16;

/// Half of the machine's memory: growing the buffer needs half as much again.
std::size_t MostBytesRead() {
  const long pages = ::sysconf(_SC_PHYS_PAGES);
  const long page_size = ::sysconf(_SC_PAGESIZE);
  return static_cast<std::size_t>(pages) / 2 * static_cast<std::size_t>(page_size);
}

[[noreturn]] void Fail(const std::filesystem::path& path, int reason) {
  throw FileError("Cannot read the file", path.string(), std::generic_category().message(reason));
}

std::string ReadToEnd(int descriptor, const std::filesystem::path& path, const FirstLook& look) {
  bool seen = !look;
  const std::size_t most = MostBytesRead();
  std::string contents;
  std::size_t used = 0;
  while (true) {
    if (used > most) Fail(path, EFBIG);
    if (contents.size() - used < kBlockSize) contents.resize(contents.size() * 2 + kBlockSize);
    const ssize_t count = ::read(descriptor, contents.data() + used, contents.size() - used);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) Fail(path, errno);
    if (count == 0) break;
    used += static_cast<std::size_t>(count);
    if (seen || used < kBlockSize) continue;
    look(std::string_view(contents).substr(0, used));
    seen = true;
  }
  contents.resize(used);
  contents.shrink_to_fit();
  return contents;
}

}  // namespace

MappedFile::MappedFile() = default;

MappedFile::MappedFile(const std::filesystem::path& path) : MappedFile(path, FirstLook()) {}

MappedFile::MappedFile(const std::filesystem::path& path, const FirstLook& look) {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.Value() < 0) Fail(path, errno);
  Read(file.Value(), path, look);
}

MappedFile::MappedFile(const Descriptor& file, const std::filesystem::path& name) {
  Read(file.Value(), name, {});
}

void MappedFile::Read(int descriptor, const std::filesystem::path& path, const FirstLook& look) {
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) Fail(path, errno);
  if (S_ISDIR(status.st_mode)) Fail(path, EISDIR);
  // Files the system makes up say size 0 and still hold text: those are read.
  if (S_ISREG(status.st_mode) && status.st_size > 0) {
    const auto size = static_cast<std::size_t>(status.st_size);
    void* mapping = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
    if (mapping != MAP_FAILED) {
      mapping_ = static_cast<const char*>(mapping);
      mapped_size_ = size;
      guard_ = std::make_unique<MappingGuard>(mapping_, size);
      return;
    }
  }
  contents_ = ReadToEnd(descriptor, path, look);
}

MappedFile MappedFile::StandardInput(const FirstLook& look) {
  MappedFile file;
  file.contents_ = ReadToEnd(STDIN_FILENO, "standard input", look);
  return file;
}

MappedFile MappedFile::Holding(std::string contents) {
  MappedFile file;
  file.contents_ = std::move(contents);
  return file;
}

MappedFile::~MappedFile() {
  Release();
}

MappedFile::MappedFile(MappedFile&& other) noexcept
    : mapping_(std::exchange(other.mapping_, nullptr)),
      mapped_size_(std::exchange(other.mapped_size_, 0)),
      guard_(std::move(other.guard_)),
      contents_(std::move(other.contents_)) {}

MappedFile& MappedFile::operator=(MappedFile&& other) noexcept {
  if (this != &other) {
    Release();
    mapping_ = std::exchange(other.mapping_, nullptr);
    mapped_size_ = std::exchange(other.mapped_size_, 0);
    guard_ = std::move(other.guard_);
    contents_ = std::move(other.contents_);
  }
  return *this;
}

std::string_view MappedFile::Bytes() const {
  return mapping_ != nullptr ? std::string_view(mapping_, mapped_size_)
                             : std::string_view(contents_);
}

bool MappedFile::WasCutShort() const {
  return guard_ && guard_->WasCutShort();
}

void MappedFile::Release() noexcept {
  guard_.reset();
  if (mapping_ != nullptr) ::munmap(const_cast<char*>(mapping_), mapped_size_);
  mapping_ = nullptr;
}

}  // namespace tarnwick
