// Whether a file is still the one that was read or written. Knows times and sizes; reads no contents.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace tarnwick {

/// What tells that a file was written since.
struct FileStamp {
  std::filesystem::file_time_type time;
  std::uintmax_t size = 0;
  bool operator==(const FileStamp&) const = default;
};

/// Of the file as it is now; nothing where it is not there or cannot be looked at.
std::optional<FileStamp> StampOf(const std::filesystem::path& file);

}  // namespace tarnwick
