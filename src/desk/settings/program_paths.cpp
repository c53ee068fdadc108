#include "desk/settings/program_paths.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <system_error>
#include <utility>

#include "desk/settings/program_folder.h"
#include "desk/widgets/text.h"
#include "graph/files/file_kinds.h"

namespace tarnwick {
namespace {

bool IsFile(const std::filesystem::path& path) {
  std::error_code ignored;  // unreadable means not there
  return std::filesystem::is_regular_file(path, ignored);
}

std::filesystem::path Location(QStandardPaths::StandardLocation location) {
  return ToPath(QStandardPaths::writableLocation(location)) / "tarnwick";
}

std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  std::error_code missing;
  for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
    if (entry.is_regular_file(missing)) files.push_back(entry.path().lexically_normal());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<std::filesystem::path> FunctionsIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files = FilesIn(folder);
  std::erase_if(files,
                [](const auto& file) { return KindOf(file).holds != FileHolds::FitFunction; });
  // By what the menu shows: "Gaussian" before "Gaussian with base line".
  std::sort(files.begin(), files.end(),
            [](const auto& one, const auto& other) { return one.stem() < other.stem(); });
  return files;
}

bool IsFolder(const std::filesystem::path& path) {
  std::error_code ignored;  // unreadable means not there
  return std::filesystem::is_directory(path, ignored);
}

bool CanBeWritten(const std::filesystem::path& folder) {
  return QFileInfo(PathText(folder)).isWritable();
}

/// What is installed lies here: beside the programs of a system, else with the program.
std::filesystem::path ShareOf(const std::filesystem::path& program) {
  const std::filesystem::path share = program / "../share/tarnwick";
  return IsFolder(share) ? share : program;
}

/// The first folder of these that `files` finds something in.
template <class Find>
std::vector<std::filesystem::path> FirstOf(const std::vector<std::filesystem::path>& folders,
                                           Find files) {
  for (const auto& folder : folders) {
    if (auto found = files(folder); !found.empty()) return found;
  }
  return {};
}

}  // namespace

std::filesystem::path TemplateOfNewGraphs(const ProgramPaths& paths) {
  return IsFile(paths.own_template) ? paths.own_template : paths.default_template;
}

std::vector<std::filesystem::path> FitFunctions(const ProgramPaths& paths) {
  std::vector<std::filesystem::path> own;
  for (const auto& folder : paths.function_folders) {
    for (auto& function : FunctionsIn(folder)) own.push_back(std::move(function));
  }
  std::vector<std::filesystem::path> functions = paths.fit_functions;
  std::erase_if(functions, [&](const auto& ready) {
    return std::ranges::any_of(
        own, [&](const auto& function) { return function.filename() == ready.filename(); });
  });
  functions.insert(functions.end(), own.begin(), own.end());
  return functions;
}

std::filesystem::path MakeFunctionFolder(const ProgramPaths& paths) {
  for (const auto& folder : paths.function_folders) {
    std::error_code ignored;  // one that cannot be made is not used
    std::filesystem::create_directories(folder, ignored);
    if (IsFolder(folder) && CanBeWritten(folder)) return folder;
  }
  return {};
}

ProgramPlaces PlacesOfProgram() {
  return {.program = ToPath(QCoreApplication::applicationDirPath()),
          .user = Location(QStandardPaths::GenericDataLocation),
          .cache = Location(QStandardPaths::GenericCacheLocation)};
}

ProgramPaths FindProgramPaths(const ProgramPlaces& places) {
  const std::filesystem::path& program = places.program;
  const std::filesystem::path share = ShareOf(program);
  // A folder of programs belongs to many.
  const bool own = share == program && CanBeWritten(program);
  const std::filesystem::path& folder = own ? program : places.user;
  ProgramPaths paths;
  if (!own) paths.trouble = FillProgramFolder(share, folder);
  const bool filled = !own && paths.trouble.empty();

  paths.own_template = folder / kDefaultTemplateName;
  // What was taken out of a folder that was filled is not wanted.
  if (!filled && IsFile(share / kDefaultTemplateName))
    paths.default_template = share / kDefaultTemplateName;
  paths.libraries = {program, program / "../lib/tarnwick"};
  // Of a build: the source tree around build/PRESET/bin.
  const std::filesystem::path sources = program / "../../..";
  paths.examples =
      FirstOf({folder / "examples", share / "examples", sources / "examples"}, FilesIn);
  if (!filled) paths.fit_functions = FirstOf({share / "TFN", sources / "TFN"}, FunctionsIn);
  paths.function_folders = {folder / "TFN", places.user / "TFN"};
  if (folder == places.user) paths.function_folders.pop_back();
  if (own && FitFunctions(paths).empty()) {
    paths.trouble = "There are no fitting functions: they are not in " + (folder / "TFN").string() +
                    ", where they belong beside the program";
  }
  for (const auto& with_help : {folder, share}) {
    paths.help = with_help / "HELP/tarnwick.qch";
    if (IsFile(paths.help)) break;
    paths.help.clear();
  }
  paths.recovery = places.user / "recovery";
  paths.pictures = places.cache / "recent graphs";
  return paths;
}

}  // namespace tarnwick
