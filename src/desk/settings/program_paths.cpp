#include "desk/settings/program_paths.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <algorithm>
#include <system_error>

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
  for (const char* folder : {"TFN", "../share/tarnwick/TFN", "../../../TFN"}) {
    paths.fit_functions = FunctionsIn(program / folder);
    if (!paths.fit_functions.empty()) break;
  }
  for (auto& own : FunctionsIn(UserFolder() / "TFN")) paths.fit_functions.push_back(own);
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
