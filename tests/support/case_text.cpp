#include "support/case_text.h"

#include <algorithm>

#include "support/project_paths.h"

namespace tarnwick::testing {

std::string Unescaped(std::string_view line) {
  std::string bytes;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] != '\\' || i + 1 == line.size()) {
      bytes += line[i];
    } else if (line[++i] == 'x') {
      bytes += static_cast<char>(std::stoi(std::string(line.substr(i + 1, 2)), nullptr, 16));
      i += 2;
    } else {
      bytes += line[i] == 't' ? '\t' : line[i] == 'r' ? '\r' : line[i];
    }
  }
  return bytes;
}

std::vector<std::filesystem::path> FilesOf(std::string_view folder, std::string_view ending) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(SourceFolder() / folder)) {
    if (entry.path().extension() == ending) files.push_back(entry.path());
  }
  std::ranges::sort(files);
  return files;
}

}  // namespace tarnwick::testing
