#include "support/told.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/project_paths.h"
#include "support/temporary_folder.h"

namespace tarnwick::testing {

void ExpectTold(const std::filesystem::path& file, std::string_view name,
                const std::vector<std::string>& told) {
  std::istringstream text(ReadFile(SourceFolder() / "tests" / file));
  std::vector<std::string> expected;
  bool within = false;
  for (std::string line; std::getline(text, line);) {
    if (line.starts_with("== ")) {
      within = line.substr(3) == name;
    } else if (within && !line.empty()) {
      expected.push_back(line);
    }
  }
  if (told == expected) return;
  std::size_t same = 0;
  while (same < told.size() && same < expected.size() && told[same] == expected[same]) ++same;
  std::string all;
  for (const std::string& line : told) all += line + '\n';
  ADD_FAILURE() << file << " differs from line " << same + 1 << " of the section on, which reads\n"
                << (same < expected.size() ? expected[same] : "(nothing)")
                << "\nTold was\n== " << name << '\n'
                << all;
}

}  // namespace tarnwick::testing
