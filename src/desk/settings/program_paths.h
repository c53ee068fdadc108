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
      fit_functions;  ///< ready-made fitting functions (.tfn), by name
  /// Where the user's own template for new graphs lies, or is to be kept; empty: nowhere.
  std::filesystem::path own_template = {};
  std::vector<std::filesystem::path> libraries = {};  ///< folders of what is loaded at run time
  std::filesystem::path help = {};  ///< the gathered pages of the help; empty: there are none
  /// Where the user's own fitting functions may lie: folders in the order in which they are looked for.
  std::vector<std::filesystem::path> function_folders = {};
  std::filesystem::path recovery = {};  ///< where copies of changed graphs are kept; empty: nowhere
};

/// What a new graph begins with: the user's own template once there is one.
std::filesystem::path TemplateOfNewGraphs(const ProgramPaths& paths);

/// The fitting functions that there are now: the ready-made ones, then the user's own.
std::vector<std::filesystem::path> FitFunctions(const ProgramPaths& paths);

/// Where the user's own functions are kept: the first of their folders that can be written, made where it is missing. Empty:
/// there is none.
std::filesystem::path MakeFunctionFolder(const ProgramPaths& paths);

/// Looks beside the program, in its data folder and in the user's. Needs the application object.
ProgramPaths FindProgramPaths();

}  // namespace tarnwick
