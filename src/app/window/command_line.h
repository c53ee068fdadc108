// The words of a command line: files to open and options, in the order in which they take effect. Knows no window.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tarnwick {

struct CommandLine {
  std::vector<std::filesystem::path>
      files;  ///< existing files, in the order of opening: the last word first
  std::vector<std::string> options;  ///< lower case, without "-", in the order in which they stood
};

/// Each word with a quote before it, blanks at both ends trimmed: the form in which a command line is handed on.
std::string JoinWords(const std::vector<std::string>& words);

/// Takes a joined line apart, from its end. Words that are neither an option nor an existing file are passed over; the
/// option "no" drops all options.
CommandLine ParseCommandLine(const std::string& joined);

}  // namespace tarnwick
