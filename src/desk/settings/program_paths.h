// Where the program finds what belongs to it: in the program folder, which is where it lies when that is its own and can be
// written, else a folder of the user's filled from the installed share. Knows the folders of an installation and of a build.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tarnwick {

/// What a new graph begins with, wherever it lies.
inline constexpr const char* kDefaultTemplateName = "default.ttp";

struct ProgramPaths {
  std::filesystem::path default_template;  ///< empty when there is none
  std::vector<std::filesystem::path>
      examples;  ///< shipped example files; empty when they are not found
  /// Ready-made fitting functions (.tfn) that lie outside the program folder, by name.
  std::vector<std::filesystem::path> fit_functions;
  /// Where the user's own template for new graphs lies, or is to be kept; empty: nowhere.
  std::filesystem::path own_template = {};
  std::vector<std::filesystem::path> libraries = {};  ///< folders of what is loaded at run time
  std::filesystem::path help = {};  ///< the gathered pages of the help; empty: there are none
  /// Where the user may keep fitting functions: folders in the order in which they are looked for.
  std::vector<std::filesystem::path> function_folders = {};
  std::filesystem::path recovery = {};  ///< where copies of changed graphs are kept; empty: nowhere
  std::filesystem::path pictures = {};  ///< where those of recent graphs are kept; empty: nowhere
  std::string trouble = {};  ///< why the program folder does not hold all it should; empty: it does
};

/// What a new graph begins with: the user's own template once there is one.
std::filesystem::path TemplateOfNewGraphs(const ProgramPaths& paths);

/// The fitting functions that there are now: the ready-made ones, then those of the user's folders; a user's takes the place
/// of a ready-made one of its name.
std::vector<std::filesystem::path> FitFunctions(const ProgramPaths& paths);

/// Where the user's own functions are kept: the first of their folders that can be written, made where it is missing. Empty:
/// there is none.
std::filesystem::path MakeFunctionFolder(const ProgramPaths& paths);

/// The folders that everything is looked for in.
struct ProgramPlaces {
  std::filesystem::path program;  ///< where the program lies
  std::filesystem::path user;     ///< the user's, for this program's data
  std::filesystem::path cache;    ///< likewise, for what can be made again
};
/// Those of this program. Needs the application object.
ProgramPlaces PlacesOfProgram();

/// Looks there; fills the program folder when that is the user's.
ProgramPaths FindProgramPaths(const ProgramPlaces& places);

}  // namespace tarnwick
