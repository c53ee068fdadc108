#include "sources/database/sqlite_file.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "base/error.h"

namespace tarnwick {

// Drivers and the library would answer all of this with "cannot be opened".
void RequireSqliteFile(const std::string& file) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file, ignored)) {
    throw FileError("The file of the data base is missing", file, "");
  }
  std::array<char, 16> head{};
  std::ifstream bytes(file, std::ios::binary);
  if (!bytes) throw FileError("The file of the data base cannot be read", file, "");
  bytes.read(head.data(), head.size());
  if (std::string_view(head.data(), head.size()) != std::string_view("SQLite format 3\0", 16)) {
    throw FileError("The file is no SQLite data base; one that is packed must be unpacked first",
                    file, "");
  }
}

}  // namespace tarnwick
