#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <QMenu>
#include <QVBoxLayout>

#include "app/help/help_viewer.h"
#include "app/window/features.h"
#include "support/project_paths.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

namespace fs = std::filesystem;

fs::path Pages() {
  return testing::SourceFolder() / "help";
}

std::vector<std::string> Found(const std::string& text, const char* pattern) {
  const std::regex what(pattern);
  std::vector<std::string> found;
  for (std::sregex_iterator at(text.begin(), text.end(), what), end; at != end; ++at) {
    found.push_back((*at)[1]);
  }
  return found;
}

/// The ids of each page.
std::map<std::string, std::set<std::string>> Ids() {
  std::map<std::string, std::set<std::string>> ids;
  for (const auto& entry : fs::directory_iterator(Pages())) {
    if (entry.path().extension() != ".html") continue;
    const auto found = Found(testing::ReadFile(entry.path()), "id=\"([^\"]*)\"");
    ids[entry.path().filename().string()] = {found.begin(), found.end()};
    EXPECT_EQ(ids[entry.path().filename().string()].size(), found.size()) << entry.path();
  }
  return ids;
}

TEST(HelpPages, TellOfEveryCommandPanelAndDialogOnce) {
  std::multiset<std::string> all;
  for (const auto& [page, ids] : Ids()) all.insert(ids.begin(), ids.end());
  std::vector<std::string> wanted{"TfrmCalc", "TxyMark",        "Print",      "PageSetup",
                                  "ToldBar",  "Txy_ReadFolder", "ValueEditor"};
  for (const Command* command : CommandsOf(Features())) wanted.emplace_back(command->name);
  for (const PanelRow* panel : PanelsOf(Features())) wanted.emplace_back(panel->name);
  for (const std::string& name : wanted) EXPECT_EQ(all.count(name), 1U) << name;
}

TEST(HelpPages, LinksLeadSomewhereAndEveryPageIsInTheContents) {
  const auto pages = Ids();
  std::istringstream contents(testing::ReadFile(Pages() / "contents.txt"));
  std::set<std::string> listed;
  for (std::string line; std::getline(contents, line);) {
    if (!line.starts_with('#')) listed.insert(line);
  }
  EXPECT_EQ(listed.size(), pages.size());
  for (const auto& [page, ids] : pages) {
    EXPECT_TRUE(listed.contains(page)) << page;
    const std::string text = testing::ReadFile(Pages() / page);
    for (const std::string& link : Found(text, "href=\"([^\"]*)\"")) {
      const auto hash = link.find('#');
      const std::string to = hash == 0 ? page : link.substr(0, hash);
      ASSERT_TRUE(pages.contains(to)) << page << ": " << link;
      if (hash != link.npos) {
        EXPECT_TRUE(pages.at(to).contains(link.substr(hash + 1))) << page << ": " << link;
      }
    }
  }
}

TEST(HelpPages, TopicsGoFromWhatIsLookedAtOutwards) {
  QWidget dialog;
  dialog.setObjectName("TfrmCalc");
  QWidget box(&dialog);
  QWidget field(&box);
  field.setObjectName("FitTolerance");
  EXPECT_EQ(TopicsOf(&field), (QStringList{"FitTolerance", "TfrmCalc"}));
  QMenu menu(&dialog);
  QAction* const entry = menu.addAction("Zoom");
  entry->setObjectName("GraphZoom1");
  menu.setActiveAction(entry);
  EXPECT_EQ(TopicsOf(&menu), (QStringList{"GraphZoom1", "TfrmCalc"}));
  EXPECT_TRUE(TopicsOf(nullptr).isEmpty());
}

}  // namespace
}  // namespace tarnwick
