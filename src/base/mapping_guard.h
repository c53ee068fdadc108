// Mapped files that another program cuts short. Reading behind the new end would end the program; here it reads zero bytes, and
// whoever reads can ask afterwards whether that happened. Knows addresses, no files.
#pragma once

#include <cstddef>

namespace tarnwick {

/// Guards the pages of one mapping as long as it lives. Beyond a few hundred guards at once a mapping goes without, and reading
/// behind the end of its file ends the program as ever.
class MappingGuard {
 public:
  MappingGuard(const char* mapping, std::size_t size);
  ~MappingGuard();
  MappingGuard(const MappingGuard&) = delete;
  MappingGuard& operator=(const MappingGuard&) = delete;

  /// True when bytes were asked for that the file no longer had: what was read may be zeros.
  bool WasCutShort() const;

 private:
  std::size_t place_;
};

}  // namespace tarnwick
