#include "desk/document/file_stamp.h"

#include <system_error>

namespace tarnwick {

std::optional<FileStamp> StampOf(const std::filesystem::path& file) {
  std::error_code no_time, no_size;
  FileStamp stamp{std::filesystem::last_write_time(file, no_time), 0};
  stamp.size = std::filesystem::file_size(file, no_size);
  return no_time || no_size ? std::nullopt : std::optional(stamp);
}

}  // namespace tarnwick
