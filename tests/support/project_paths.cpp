#include "support/project_paths.h"

namespace tarnwick::testing {

std::filesystem::path SourceFolder() {
  return TARNWICK_SOURCE_DIR;
}

std::filesystem::path ExamplesFolder() {
  return SourceFolder() / "examples";
}

std::filesystem::path ProgramFolder() {
  return TARNWICK_BIN_DIR;
}

}  // namespace tarnwick::testing
