#include "support/told.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "support/project_paths.h"
#include "support/temporary_folder.h"

namespace tarnwick::testing {

std::vector<std::string> Written(const std::filesystem::path& file, std::string_view name) {
  std::istringstream text(ReadFile(SourceFolder() / "tests" / file));
  std::vector<std::string> lines;
  bool within = false;
  for (std::string line; std::getline(text, line);) {
    if (line.starts_with("== ")) {
      within = line.substr(3) == name;
    } else if (within && !line.empty()) {
      lines.push_back(line);
    }
  }
  return lines;
}

void ExpectTold(const std::filesystem::path& file, std::string_view name,
                const std::vector<std::string>& told, const Alike& alike) {
  const std::vector<std::string> written = Written(file, name);
  const auto apart = std::ranges::mismatch(told, written, alike);
  if (apart.in1 == told.end() && apart.in2 == written.end()) return;
  std::string all;
  for (const std::string& line : told) all += line + '\n';
  ADD_FAILURE() << file << " reads otherwise\n"
                << (apart.in2 == written.end() ? "(nothing)" : *apart.in2)
                << "\nTold was\n== " << name << '\n'
                << all;
}

}  // namespace tarnwick::testing
