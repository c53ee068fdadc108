// The text of one source as UTF-8 or 8-bit bytes, mapped where it can be. Knows encodings, byte order marks and line
// ends; knows no fields.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/mapped_file.h"
#include "base/progress.h"

namespace tarnwick {

class TextSource {
 public:
  /// Reads what `file` holds. UTF-16 (with a byte order mark, or plainly so without) is turned into UTF-8 once; all
  /// else is used in place, unless quoted fields run over several lines: they are joined to one, so that line numbers
  /// behind them count less. Spectra in JCAMP-DX and EMSA become lines of X and Y, records of networks (Touchstone) a line
  /// each. Throws FileError when there is nothing, or no text.
  TextSource(MappedFile file, std::string name);
  /// The same for bytes that came another way.
  TextSource(std::string bytes, std::string name);
  TextSource(const TextSource&) = delete;
  TextSource& operator=(const TextSource&) = delete;

  /// Without byte order mark.
  std::string_view Text() const { return text_; }
  /// '\n', or '\r' when the text has no other line ends.
  char LineEnd() const { return line_end_; }
  const std::string& Name() const { return name_; }
  /// True when the file lost bytes that were read since.
  bool WasCutShort() const { return file_ && file_->WasCutShort(); }

 private:
  void Recognise(std::string_view bytes);
  void JoinQuotedLines();

  std::optional<MappedFile> file_;
  std::string converted_;
  std::string name_;
  std::string_view text_;
  char line_end_ = '\n';
};

/// Throws FileError where a text cannot begin so and nothing tells another format: what is packed, or known as no text, is judged
/// as a whole.
void RefuseBinaryBlock(std::string_view first, const std::string& name);

/// Opens the file, or the standard input when the path is "-"; what is packed (gzip, bzip2, xz, zstd) is unpacked as a whole,
/// with progress; `look` is MappedFile's. Throws FileError, and UnpackingCancelled.
MappedFile OpenSourceFile(const std::filesystem::path& path, Progress& progress,
                          const FirstLook& look = {});

}  // namespace tarnwick
