#include "desk/editors/editor_library.h"

#include <string>
#include <system_error>
#include <utility>

#include "base/error.h"
#include "base/version.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

Error Damaged(const std::string& file) {
  return Error("Library '" + file + "' is damaged. Try to re-install Tarnwick.");
}

bool IsOfThisProgram(const EditorTable& table) {
  return table.version == kEditorTableVersion && table.program && kVersion == table.program;
}

bool IsWhole(const EditorTable& table) {
  return table.edit && table.follow && table.delete_editor;
}

/// Unloaded again unless it is let go.
struct Unloading {
  void operator()(QLibrary* library) const {
    library->unload();
    delete library;
  }
};
using LoadedLibrary = std::unique_ptr<QLibrary, Unloading>;

}  // namespace

EditorLibrary::EditorLibrary(std::unique_ptr<QLibrary> library, const EditorTable& table)
    : library_(std::move(library)), table_(table) {}

EditorLibrary::~EditorLibrary() {
  table_.delete_editor();
  library_->unload();
}

std::string EditorLibraryFile(std::string_view name) {
  return std::string(name) + TARNWICK_MODULE_SUFFIX;
}

std::filesystem::path FindLibrary(std::string_view name,
                                  const std::vector<std::filesystem::path>& folders) {
  for (const std::filesystem::path& folder : folders) {
    std::filesystem::path file = folder / EditorLibraryFile(name);
    std::error_code unreadable;  // means not there
    if (std::filesystem::is_regular_file(file, unreadable)) return file;
  }
  return {};
}

std::shared_ptr<const EditorLibrary> LoadEditorLibrary(
    std::string_view name, const std::vector<std::filesystem::path>& folders) {
  const std::string file = EditorLibraryFile(name);
  const std::filesystem::path found = FindLibrary(name, folders);
  if (found.empty()) {
    throw Error("Required library '" + file + "' is missing. Try to re-install Tarnwick.");
  }
  LoadedLibrary library(new QLibrary(PathText(found)));
  // What it asks of the program and does not find shall show now, not in the middle of editing.
  library->setLoadHints(QLibrary::ResolveAllSymbolsHint);
  if (!library->load()) throw Damaged(file);
  const std::string symbol = std::string(name) + "Table";
  const auto* table = reinterpret_cast<const EditorTable*>(library->resolve(symbol.c_str()));
  if (!table) return nullptr;
  if (!IsOfThisProgram(*table)) throw Damaged(file);
  if (!IsWhole(*table)) return nullptr;
  return std::make_shared<const EditorLibrary>(std::unique_ptr<QLibrary>(library.release()),
                                               *table);
}

}  // namespace tarnwick
