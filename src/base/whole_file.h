// Writes a file whole or not at all: into a nameless file in the target's folder, which gets its name when complete.
// Knows no formats.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tarnwick {

/// One file being written. Until Commit the target stays as it was; without Commit nothing remains, not even when the
/// process is killed. (A file system without nameless files gets a hidden file beside the target, which only a killed
/// process leaves.) A symbolic link is followed, the target's permissions are kept. A target that is no regular file (a
/// pipe, a device) is written straight.
class WholeFile {
 public:
  /// Opens the file to be. Throws FileError with the system's reason.
  explicit WholeFile(const std::filesystem::path& path);
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  /// Appends bytes. Throws FileError.
  void Write(std::string_view bytes);
  /// Brings everything to the disk and gives the file its name. Throws FileError; the target is then as it was.
  void Commit();

 private:
  [[noreturn]] void Fail(int reason) const;
  std::filesystem::path TemporaryName(int attempt) const;
  void OpenNamed();
  bool LinkAs(const std::filesystem::path& name) const;
  void Name();
  void FlushBuffer();

  std::filesystem::path shown_;      // as given, for messages
  std::filesystem::path target_;     // links resolved
  std::filesystem::path temporary_;  // empty: nameless; equal to target_ when written straight
  std::string buffer_;
  int descriptor_ = -1;
  bool committed_ = false;
};

/// Writes `contents` as the whole file `path`. Throws FileError; the old file then stays.
void WriteWholeFile(const std::filesystem::path& path, std::string_view contents);

/// From now on a file that grows beyond what the system allows throws as a full disk does, instead of ending the process. For
/// the entry of a program.
void RefuseTooLargeFiles();

}  // namespace tarnwick
