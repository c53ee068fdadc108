// Reads the symbols of every compiled source: what one folder calls and another defines is a use, whichever header declares
// it. Uses point down, as includes do, and no chain of them leads back into a folder.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "layers/layer_table.h"
#include "support/project_paths.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

struct Symbol {
  std::string folder;
  std::string name;  // as the linker knows it
  char kind;         // as nm tells it
};

/// The line of a symbol as nm -A -P writes it: "OBJECT: NAME KIND ...".
std::optional<Symbol> ReadSymbol(const std::string& line,
                                 const std::map<std::string, std::string>& folders) {
  std::istringstream words(line);
  std::string object;
  Symbol symbol;
  if (!(words >> object >> symbol.name >> symbol.kind)) return std::nullopt;
  object.pop_back();  // the colon
  const auto folder = folders.find(object);
  if (folder == folders.end()) return std::nullopt;
  symbol.folder = folder->second;
  return symbol;
}

/// One use of a folder by another, with a symbol that shows it.
using Uses = std::map<std::pair<std::string, std::string>, std::string>;

Uses UsesBetweenFolders(const std::vector<Symbol>& symbols) {
  std::map<std::string, std::set<std::string>> defined;  // the folders that define a symbol
  std::map<std::string, std::set<std::string>> inlined;  // or bring an inline one along
  for (const Symbol& symbol : symbols) {
    const std::string_view kinds(&symbol.kind, 1);
    if (kinds.find_first_of("TDBRGSA") == 0) defined[symbol.name].insert(symbol.folder);
    if (kinds.find_first_of("WVu") == 0) inlined[symbol.name].insert(symbol.folder);
  }
  Uses uses;
  for (const Symbol& symbol : symbols) {
    if (symbol.kind != 'U') continue;
    auto owner = defined.find(symbol.name);
    // What several folders bring along belongs to none of them.
    if (owner == defined.end()) owner = inlined.find(symbol.name);
    if (owner == defined.end() || owner == inlined.end() || owner->second.size() != 1) continue;
    const std::string& used = *owner->second.begin();
    if (used != symbol.folder) uses[{symbol.folder, used}] = symbol.name;
  }
  return uses;
}

std::vector<Symbol> SymbolsOf(const std::string& command,
                              const std::map<std::string, std::string>& folders) {
  std::vector<Symbol> symbols;
  const std::unique_ptr<FILE, int (*)(FILE*)> lines(popen(command.c_str(), "r"), &pclose);
  std::string line;
  for (int c = std::getc(lines.get()); c != EOF; c = std::getc(lines.get())) {
    if (c != '\n') {
      line += static_cast<char>(c);
      continue;
    }
    if (const auto symbol = ReadSymbol(line, folders)) symbols.push_back(*symbol);
    line.clear();
  }
  return symbols;
}

/// By object, the folder of its source: those of the build that this test is part of.
std::map<std::string, std::string> CompiledSources() {
  const std::filesystem::path root = testing::SourceFolder() / "src";
  std::map<std::string, std::string> folders;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    if (entry.path().extension() != ".cpp") continue;
    const std::filesystem::path source = std::filesystem::relative(entry.path(), root);
    const std::string layer = source.begin()->string();
    const std::filesystem::path object = testing::ProgramFolder().parent_path() / "src" / layer /
                                         "CMakeFiles" / ("tarnwick_" + layer + ".dir") /
                                         (source.lexically_relative(layer).string() + ".o");
    if (std::filesystem::exists(object)) folders[object.string()] = source.parent_path().string();
  }
  return folders;
}

Uses UsesAmongSources() {
  const std::map<std::string, std::string> folders = CompiledSources();
  const testing::TemporaryFolder temporary;
  std::string list;
  for (const auto& [object, folder] : folders) list += object + '\n';
  const std::filesystem::path file = temporary.Write("objects", list);
  return UsesBetweenFolders(SymbolsOf("nm -A -P --extern-only '@" + file.string() + "'", folders));
}

FolderUses ByFolder(const Uses& uses) {
  FolderUses by_folder;
  for (const auto& [use, symbol] : uses) by_folder[use.first].insert(use.second);
  return by_folder;
}

TEST(LinkDirection, TellsUsesFromWhatBothSidesBringAlong) {
  const std::vector<Symbol> symbols = {
      {"app/canvas", "MakeMode", 'U'}, {"app/modes", "MakeMode", 'T'},
      {"app/modes", "Picked", 'U'},    {"app/canvas", "Picked", 'D'},
      {"app/modes", "Inline", 'U'},    {"app/canvas", "Inline", 'W'},
      {"app/print", "Inline", 'W'},    {"app/print", "strlen", 'U'},
      {"app/print", "Picked", 'U'},
  };
  const FolderUses circles = InCircles(ByFolder(UsesBetweenFolders(symbols)));
  const FolderUses expected = {
      {"app/canvas", {"app/modes"}}, {"app/modes", {"app/canvas"}}, {"app/print", {"app/canvas"}}};
  EXPECT_EQ(circles, expected);
}

TEST(LinkDirection, FoldersUseOnlyWhatStandsBelowThem) {
  const Uses uses = UsesAmongSources();
  ASSERT_FALSE(uses.empty());
  for (const auto& [use, symbol] : uses) {
    const std::string layer = use.first.substr(0, use.first.find('/'));
    const std::string used = use.second.substr(0, use.second.find('/'));
    EXPECT_TRUE(FindLayer(layer)->MayUse(used))
        << use.first << " needs " << symbol << " of " << use.second;
  }
}

TEST(LinkDirection, NoFoldersUseEachOtherInACircle) {
  const Uses uses = UsesAmongSources();
  const FolderUses circles = InCircles(ByFolder(uses));
  for (const auto& [use, symbol] : uses) {
    const auto folder = circles.find(use.first);
    if (folder == circles.end() || !circles.contains(use.second)) continue;
    ADD_FAILURE() << use.first << " needs " << symbol << " of " << use.second
                  << ", which leads back to it or into a circle";
  }
}

}  // namespace
}  // namespace tarnwick
