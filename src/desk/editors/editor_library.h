// A library with an editor, loaded from the program's folder when it is first wanted. Knows files and tables, not what is
// edited.
#pragma once

#include <QLibrary>
#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

#include "desk/editors/editor_table.h"

namespace tarnwick {

class EditorLibrary {
 public:
  /// Takes a library that is loaded already, and its table.
  EditorLibrary(std::unique_ptr<QLibrary> library, const EditorTable& table);
  /// Unloads it: whoever has an editor of it keeps the library, too.
  ~EditorLibrary();
  EditorLibrary(const EditorLibrary&) = delete;
  EditorLibrary& operator=(const EditorLibrary&) = delete;

  const EditorTable& Table() const { return table_; }

 private:
  std::unique_ptr<QLibrary> library_;
  const EditorTable& table_;
};

/// The file of the library `name` ("tgredt") on this platform: "tgredt.so".
std::string EditorLibraryFile(std::string_view name);

/// Where the first of the folders that has the library has it; empty where none has.
std::filesystem::path FindLibrary(std::string_view name,
                                  const std::vector<std::filesystem::path>& folders);

/// Loads the library from the first of the folders that has it. Null when it exports no table. Throws Error "Required library
/// 'tgredt.so' is missing. Try to re-install Tarnwick.", and "Library 'tgredt.so' is damaged. Try to re-install Tarnwick." when
/// it cannot be loaded or is none of this program's.
std::shared_ptr<const EditorLibrary> LoadEditorLibrary(
    std::string_view name, const std::vector<std::filesystem::path>& folders);

}  // namespace tarnwick
