// A file that is written to, read as it grows. Knows bytes and what may happen to a file: no text, no rows. It reads by the
// system's read alone: a mapping of a file that is cut short ends the program.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "base/descriptor.h"

namespace tarnwick {

class GrowingFile {
 public:
  /// Opens nothing yet.
  explicit GrowingFile(std::filesystem::path path) : path_(std::move(path)) {}

  enum class Came {
    Nothing,  ///< for now
    Bytes,
    NewFile,  ///< another file has taken its place, of which nothing is read yet; the one before was read to its end
    Rewritten  ///< it was cut short or written anew, and is read from its beginning next
  };
  /// Appends at most a megabyte of what came to `bytes`. Throws FileError for what cannot be read.
  Came Read(std::string& bytes);
  /// False while there is no file at the path; what was opened before is still read.
  bool IsThere() const { return there_; }
  /// Reads the file at the path from its beginning next.
  void Reopen();

 private:
  void OpenWhereThere();
  void Forget();
  bool ReplacedByAnother();
  std::string At(off_t from, std::size_t count) const;

  std::filesystem::path path_;
  std::optional<Descriptor> file_;
  dev_t device_ = 0;
  ino_t node_ = 0;
  off_t position_ = 0;
  std::string first_read_;  // the file's beginning
  std::string last_read_;   // the bytes before the position
  bool there_ = true;
};

}  // namespace tarnwick
