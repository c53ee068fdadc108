// Where a test finds the project's own files and the programs just built. The one place that knows the folders, so that no
// test has to be compiled anew for another checkout.
#pragma once

#include <filesystem>

namespace tarnwick::testing {

std::filesystem::path SourceFolder();
std::filesystem::path ExamplesFolder();
/// Of the programs of this build.
std::filesystem::path ProgramFolder();

}  // namespace tarnwick::testing
