// The words of a command line: what to open and options, in the order in which they take effect. Knows no window.
#pragma once

#include <filesystem>
#include <string>
#include <variant>
#include <vector>

namespace tarnwick {

/// The graph that lies on the clipboard.
struct FromClipboard {
  bool operator==(const FromClipboard&) const = default;
};

struct CommandLine {
  /// Existing files and the clipboard, in the order of opening: the last word first.
  std::vector<std::variant<std::filesystem::path, FromClipboard>> openings;
  std::vector<std::string> options;  ///< lower case, without "-", in the order in which they stood
  /// Words at which something else lies: a folder, a device, a pipe; likewise in their order.
  std::vector<std::string> no_files;
  std::vector<std::string> unknown;  ///< words that name nothing, in the order in which they stood
};

/// Each word with a quote before it, blanks at both ends trimmed: the form in which a command line is handed on.
std::string JoinWords(const std::vector<std::string>& words);

/// The words of a joined line, in the order in which they stand; empty ones are lost.
std::vector<std::string> SplitWords(const std::string& joined);

/// Takes words from the last to the first. The option "no" drops all options.
CommandLine ParseWords(const std::vector<std::string>& words);

}  // namespace tarnwick
