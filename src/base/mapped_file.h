// A read-only view of a whole file. Knows no formats.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tarnwick {

class Descriptor;
class MappingGuard;

/// Throws for a first block with which no file begins that is wanted.
using FirstLook = std::function<void(std::string_view block)>;

/// Regular files are mapped into memory, pipes and devices read to their end. The bytes live as long as the object.
class MappedFile {
 public:
  /// Throws FileError (missing, a folder, not readable) with the system's reason.
  explicit MappedFile(const std::filesystem::path& path);
  /// Of pipes and devices, which may have no end, `look` is given the first 64 kB before more of them is read; not of shorter
  /// ones. Throws what that throws, too.
  MappedFile(const std::filesystem::path& path, const FirstLook& look);
  /// Everything from the standard input, looked at likewise.
  static MappedFile StandardInput(const FirstLook& look);
  /// Bytes that were made, not read.
  static MappedFile Holding(std::string contents);
  /// An open file, which may be closed afterwards; `name` is for messages. Throws FileError.
  MappedFile(const Descriptor& file, const std::filesystem::path& name);
  ~MappedFile();
  MappedFile(MappedFile&& other) noexcept;
  MappedFile& operator=(MappedFile&& other) noexcept;

  std::string_view Bytes() const;
  /// True when the file lost bytes that were read since: zeros stand in their place.
  bool WasCutShort() const;

 private:
  MappedFile();
  void Read(int descriptor, const std::filesystem::path& path, const FirstLook& look);
  void Release() noexcept;

  const char* mapping_ = nullptr;  // null when the bytes were read into contents_
  std::size_t mapped_size_ = 0;
  std::unique_ptr<MappingGuard> guard_;
  std::string contents_;
};

}  // namespace tarnwick
