// Where the program finds what belongs to it. Knows the folders of an installation and of a build.
#pragma once

#include <filesystem>
#include <vector>

namespace tarnwick {

/// What a new graph begins with, wherever it lies.
inline constexpr const char* kDefaultTemplateName = "default.ttp";

struct ProgramPaths {
  std::filesystem::path default_template;  ///< empty when there is none
  std::vector<std::filesystem::path>
      examples;  ///< shipped example files; empty when they are not found
  std::vector<std::filesystem::path>
      fit_functions;  ///< fitting functions (.tfn): the ready-made ones by name, then the user's own
  /// Where the user's own template for new graphs lies, or is to be kept; empty: nowhere.
  std::filesystem::path own_template = {};
  std::vector<std::filesystem::path> libraries = {};  ///< folders of what is loaded at run time
  std::filesystem::path help = {};      ///< the gathered pages of the help; empty: there are none
  std::filesystem::path recovery = {};  ///< where copies of changed graphs are kept; empty: nowhere
};

/// What a new graph begins with: the user's own template once there is one.
std::filesystem::path TemplateOfNewGraphs(const ProgramPaths& paths);

/// Looks beside the program, in its data folder and in the user's. Needs the application object.
ProgramPaths FindProgramPaths();

}  // namespace tarnwick
