// Bytes that come one stretch after the other: few stay in memory, many go to a file without a name, which is gone with
// whoever maps it. Knows no format.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "base/descriptor.h"
#include "base/mapped_file.h"

namespace tarnwick {

class UnpackedBytes {
 public:
  /// Up to `in_memory` bytes stay in memory. `folder` is empty for the system's; `name` is for messages.
  UnpackedBytes(std::size_t in_memory, std::filesystem::path folder, std::string name);

  /// Throws FileError when the folder takes no more.
  void Append(std::string_view bytes);
  std::size_t Size() const { return size_; }
  /// All of them, once. Throws FileError.
  MappedFile Take();

 private:
  void OpenFile();
  [[noreturn]] void Fail(int reason) const;

  std::size_t in_memory_;
  std::filesystem::path folder_;
  std::string name_;
  std::string contents_;
  std::unique_ptr<Descriptor> file_;
  std::size_t size_ = 0;
};

}  // namespace tarnwick
