#include "desk/settings/program_paths.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <system_error>
#include <utility>

#include "desk/widgets/text.h"
#include "graph/files/file_kinds.h"

namespace tarnwick {
namespace {

bool IsFile(const std::filesystem::path& path) {
  std::error_code ignored;  // unreadable means not there
  return std::filesystem::is_regular_file(path, ignored);
}

std::filesystem::path UserFolder() {
  return ToPath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)) / "tarnwick";
}

std::filesystem::path FindTemplate(const std::filesystem::path& program) {
  for (const auto& folder : {program, program / "../share/tarnwick"}) {
    if (IsFile(folder / kDefaultTemplateName)) return folder / kDefaultTemplateName;
  }
  return {};
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

}  // namespace

std::filesystem::path TemplateOfNewGraphs(const ProgramPaths& paths) {
  return IsFile(paths.own_template) ? paths.own_template : paths.default_template;
}

std::vector<std::filesystem::path> FitFunctions(const ProgramPaths& paths) {
  std::vector<std::filesystem::path> functions = paths.fit_functions;
  for (const auto& folder : paths.function_folders) {
    for (auto& own : FunctionsIn(folder)) functions.push_back(std::move(own));
  }
  return functions;
}

std::filesystem::path MakeFunctionFolder(const ProgramPaths& paths) {
  for (const auto& folder : paths.function_folders) {
    std::error_code ignored;  // one that cannot be made is not used
    std::filesystem::create_directories(folder, ignored);
    const QFileInfo made(PathText(folder));
    if (made.isDir() && made.isWritable()) return folder;
  }
  return {};
}

ProgramPaths FindProgramPaths() {
  const std::filesystem::path program = ToPath(QCoreApplication::applicationDirPath());
  ProgramPaths paths;
  paths.default_template = FindTemplate(program);
  paths.own_template = UserFolder() / kDefaultTemplateName;
  paths.libraries = {program, program / "../lib/tarnwick"};
  // Installed: share/tarnwick; from a build: the source tree around build/PRESET/bin.
  for (const char* folder : {"../share/tarnwick/examples", "../../../examples"}) {
    paths.examples = FilesIn(program / folder);
    if (!paths.examples.empty()) break;
  }
  for (const char* folder : {"../share/tarnwick/TFN", "../../../TFN"}) {
    paths.fit_functions = FunctionsIn(program / folder);
    if (!paths.fit_functions.empty()) break;
  }
  paths.function_folders = {program / "TFN", UserFolder() / "TFN"};
  for (const char* folder : {"HELP", "../share/tarnwick/HELP"}) {
    if (IsFile(program / folder / "tarnwick.qch")) {
      paths.help = program / folder / "tarnwick.qch";
      break;
    }
  }
  paths.recovery = UserFolder() / "recovery";
  return paths;
}

}  // namespace tarnwick
