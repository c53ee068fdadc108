// Reads every source file and holds its includes against the table of layers: an include may only point down, and Qt
// stays where it is allowed. The folders inside a layer have an order too: no chain of includes leads back into one.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "layers/layer_table.h"
#include "support/project_paths.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

// The header named by an include line, with its opening quote or bracket.
std::optional<std::string> IncludedHeader(std::string_view line) {
  const auto skip_blanks = [&] {
    while (!line.empty() && (line.front() == ' ' || line.front() == '\t')) line.remove_prefix(1);
  };
  skip_blanks();
  if (!line.starts_with('#')) return std::nullopt;
  line.remove_prefix(1);
  skip_blanks();
  if (!line.starts_with("include")) return std::nullopt;
  line.remove_prefix(std::string_view("include").size());
  skip_blanks();
  if (line.empty()) return std::nullopt;
  const std::size_t end = line.find(line.front() == '<' ? '>' : '"', 1);
  return std::string(line.substr(0, end));
}

bool IsQtHeader(std::string_view header) {
  return header.size() > 1 && header[0] == 'Q' &&
         (std::isupper(static_cast<unsigned char>(header[1])) != 0 || header.starts_with("Qt"));
}

// A header written with its module's folder (QtGui/QImage) is found whatever a target links, so the module is checked
// here. A bare class name (QImage) is found only where the target links the module: the compiler checks that.
bool QtAllowed(Qt allowed, std::string_view header) {
  static const std::map<std::string_view, Qt> kModules = {
      {"QtCore", Qt::Core},
      {"QtSql", Qt::Core},
      {"QtDBus", Qt::Core},
      {"QtGui", Qt::Gui},
      {"QtSvg", Qt::Gui},
      {"QtWidgets", Qt::Widgets},
      {"QtSvgWidgets", Qt::Widgets},
      {"QtPrintSupport", Qt::Widgets},
  };
  if (allowed == Qt::None) return false;
  const std::size_t slash = header.find('/');
  if (slash == std::string_view::npos) return true;
  const auto module = kModules.find(header.substr(0, slash));
  return module != kModules.end() && module->second <= allowed;
}

// What is wrong with one include of one layer; empty when nothing is.
std::string Objection(const Layer& layer, std::string_view include) {
  const bool quoted = include.front() == '"';
  const std::string_view header = include.substr(1);
  if (IsQtHeader(header))
    return QtAllowed(layer.qt, header) ? "" : "this part of Qt is not for the layer";
  if (!quoted) return "";
  const std::size_t slash = header.find('/');
  if (slash == std::string_view::npos)
    return header.ends_with(".moc") ? "" : "not written from src/";
  const std::string_view target = header.substr(0, slash);
  if (layer.MayUse(target)) return "";
  return FindLayer(target) == nullptr ? "no such layer" : "points to a layer it may not use";
}

TEST(IncludeDirection, TellsGoodIncludesFromBadOnes) {
  struct Row {
    std::string_view layer;
    std::string_view line;
    bool good;
  };
  static constexpr std::array kRows = {
      Row{"base", "#include \"base/prompt.h\"", true},
      Row{"base", "#include \"data/point_chain.h\"", false},
      Row{"base", "  #  include <QString>", false},
      Row{"base", "#include <vector>", true},
      Row{"data", "#include \"fit/cur_fit.h\"", true},
      Row{"data", "#include \"analysis/peaks.h\"", false},
      Row{"data", "#include \"point_chain.h\"", false},
      Row{"stream", "#include \"expr/word.h\"", false},
      Row{"analysis", "#include \"graph/axis.h\"", false},
      Row{"graph", "#include \"analysis/peaks.h\"", false},
      Row{"graph", "#include <QPainter>", true},
      Row{"graph", "#include <QtWidgets/QLabel>", false},
      Row{"cli", "#include <QtPrintSupport/QPrinter>", false},
      Row{"cli", "#include \"app/main_form.h\"", false},
      Row{"sources", "#include <QtGui/QImage>", false},
      Row{"sources", "#include <QSqlQuery>", true},
      Row{"app", "#include <QMainWindow>", true},
      Row{"app", "#include \"main_form.moc\"", true},
      Row{"app", "#include \"nowhere/else.h\"", false},
  };
  for (const Row& row : kRows) {
    const auto include = IncludedHeader(row.line);
    ASSERT_TRUE(include) << row.line;
    EXPECT_EQ(Objection(*FindLayer(row.layer), *include).empty(), row.good)
        << row.layer << ": " << row.line;
  }
}

struct Include {
  std::filesystem::path file;  // seen from src/, as is what it includes
  std::string header;          // with its opening quote or bracket
  int line;
};

std::vector<Include> AllIncludes() {
  const std::filesystem::path root = testing::SourceFolder() / "src";
  std::vector<Include> includes;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    const std::filesystem::path path = entry.path();
    if (path.extension() != ".cpp" && path.extension() != ".h") continue;
    std::istringstream lines(testing::ReadFile(path));
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
      ++number;
      if (const auto header = IncludedHeader(line))
        includes.push_back({std::filesystem::relative(path, root), *header, number});
    }
  }
  return includes;
}

TEST(IncludeDirection, NoFileIncludesWhatItsLayerMayNotUse) {
  const std::vector<Include> includes = AllIncludes();
  ASSERT_FALSE(includes.empty());
  for (const Include& include : includes) {
    const Layer* layer = FindLayer(include.file.begin()->string());
    ASSERT_NE(layer, nullptr) << include.file << " lies in a folder that is no layer";
    const std::string objection = Objection(*layer, include.header);
    EXPECT_TRUE(objection.empty()) << include.file.string() << ':' << include.line << ": "
                                   << include.header << ": " << objection;
  }
}

TEST(IncludeDirection, NoFoldersIncludeEachOtherInACircle) {
  FolderUses uses;
  for (const Include& include : AllIncludes()) {
    if (!include.header.starts_with('"') || include.header.find('/') == std::string::npos) continue;
    const std::string folder = include.file.parent_path().string();
    const std::string used = std::filesystem::path(include.header.substr(1)).parent_path().string();
    if (used != folder) uses[folder].insert(used);
  }
  EXPECT_TRUE(InCircles(uses).empty()) << ::testing::PrintToString(InCircles(uses));
}

}  // namespace
}  // namespace tarnwick
