#include "app/data/data_feature.h"

#include "app/data/data_set_list.h"
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
      // What belongs to measuring hardware, which is not offered here: known by name alone.
      {.name = "EditTbox1",
       .caption = "IO Tool&Box",
       .hint = "IO ToolBox|Edit IO Configuration",
       .menu = Menu::Edit,
       .hidden = true},
      {.name = "EditSusResAI1",
       .caption = "Resume &AI",
       .hint = "Run Test|Start Data Collection",
       .menu = Menu::Data,
       .hidden = true},
      {.name = "editStopAI1",
       .caption = "&Stop AI ",
       .hint = "Stop AI|Emergency Stop AI Activity",
       .hidden = true},
      {.name = "editZeroTimer1",
       .caption = "Zero Timer &Now",
       .hint = "Zero Timer Now|Set Timer to Zero Now",
       .menu = Menu::XAxisShift,
       .hidden = true},
  };
  return {.name = "data", .commands = {kCommands}, .lists = {{Menu::Data, DataSetItems}}};
}

}  // namespace tarnwick
