#include "app/data/data_feature.h"

#include "app/data/data_set_list.h"
#include "desk/commands/workspace.h"
#include "desk/document/document.h"
#include "desk/document/refresh_documents.h"

namespace tarnwick {
namespace {

StreamState StateOf(const CommandContext& context) {
  return context.document ? context.document->Live().State() : StreamState::Stopped;
}

bool Comes(const CommandContext& context) {
  return StateOf(context) == StreamState::Running || StateOf(context) == StreamState::Away;
}

bool CanStart(const CommandContext& context) {
  return context.document && !Comes(context) && context.document->Live().HasSources();
}

bool CanStop(const CommandContext& context) {
  return Comes(context) || StateOf(context) == StreamState::Paused;
}

}  // namespace

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
       .run =
           [](CommandContext& c) {
             if (MayReadAgain({&c.document, 1})) c.document->Files().Refresh();
           }},
      {.name = "editRefreshAll1",
       .caption = "&All Windows",
       .shortcut = "Ctrl+F5",
       .hint = "Refresh All Data|Refresh Data in All Windows",
       .icon = "refresh-all",
       .menu = Menu::RefreshData,
       .enabled = HasDocument,
       .run = [](CommandContext& c) { RefreshDocuments(c.workspace.Documents()); }},
      {.name = "dataStartLive1",
       .caption = "&Start Live Data",
       .hint = "Start Live Data|Take in data as they come: from a file that grows, a line, a link",
       .icon = "live-start",
       .menu = Menu::Data,
       .group = 2,
       .enabled = CanStart,
       .run = [](CommandContext& c) { c.document->Live().Start(); }},
      {.name = "dataPauseLive1",
       .caption = "&Pause Live Data",
       .hint = "Pause Live Data|Take in nothing for a while",
       .icon = "live-pause",
       .menu = Menu::Data,
       .group = 2,
       .enabled = Comes,
       .run = [](CommandContext& c) { c.document->Live().Pause(); }},
      {.name = "dataStopLive1",
       .caption = "S&top Live Data",
       .hint = "Stop Live Data|Take in nothing more",
       .icon = "live-stop",
       .menu = Menu::Data,
       .group = 2,
       .enabled = CanStop,
       .run = [](CommandContext& c) { c.document->Live().Stop(); }},
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
