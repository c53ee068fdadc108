#include "app/data/data_feature.h"

#include "desk/document/document.h"

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
  };
  return {.name = "data", .commands = {kCommands}};
}

}  // namespace tarnwick
