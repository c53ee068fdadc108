// A folder of its own for a test that needs files, gone with all it holds when the object goes, and whole-file reading
// and writing. Knows the file system only.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tarnwick::testing {

class TemporaryFolder {
 public:
  // Makes a fresh, empty folder; throws std::runtime_error where that fails.
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

  // The full path of a name inside the folder; nothing is made.
  [[nodiscard]] std::filesystem::path File(std::string_view name) const { return path_ / name; }

  // Writes a file of these bytes into the folder and answers its full path.
  std::filesystem::path Write(std::string_view name, std::string_view bytes) const;

 private:
  std::filesystem::path path_;
};

// The bytes of a whole file; throws std::runtime_error when it cannot be read.
[[nodiscard]] std::string ReadFile(const std::filesystem::path& path);

// Replaces a file's content by these bytes; throws std::runtime_error when it cannot be written.
void WriteFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace tarnwick::testing
