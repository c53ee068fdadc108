#include "app/data/data_feature.h"

#include "desk/commands/workspace.h"
#include "desk/document/document.h"
#include "desk/document/refresh_documents.h"

namespace tarnwick {

Feature DataFeature() {
  static constexpr Command kCommands[] = {
      {.name = "editRefresh1",
       .caption = "&Current Window",
       .shortcut = "F5",
       .hint = "Refresh Data|Refresh DataSets from External Sources",
       .icon = "refresh",
       .menu = Menu::RefreshData,
       .tool = ToolGroup::Data,
       .enabled = HasDocument,
       .run = [](CommandContext& c) { c.document->Files().Refresh(); }},
      {.name = "editRefreshAll1",
       .caption = "&All Windows",
       .shortcut = "Ctrl+F5",
       .hint = "Refresh All Data|Refresh Data in All Windows",
       .icon = "refresh-all",
       .menu = Menu::RefreshData,
       .enabled = HasDocument,
       .run = [](CommandContext& c) { RefreshDocuments(c.workspace.Documents()); }},
  };
  return {.name = "data", .commands = {kCommands}};
}

}  // namespace tarnwick
