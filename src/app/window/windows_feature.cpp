#include "app/window/windows_feature.h"

#include <vector>

#include "app/window/recent_files.h"
#include "app/window/window_session.h"
#include "app/window/window_settings.h"
#include "desk/commands/workspace.h"
#include "desk/settings/settings.h"

namespace tarnwick {
namespace {

template <WindowArrangement kArrangement>
void Arrange(CommandContext& context) {
  context.workspace.Arrange(kArrangement);
}

bool InTabs(const CommandContext& context) {
  return context.workspace.GetFrames() == WindowFrames::Tabs;
}

void ToggleTabs(CommandContext& context) {
  const bool tabs = !InTabs(context);
  context.workspace.SetFrames(tabs ? WindowFrames::Tabs : WindowFrames::Frames);
  context.settings.Write(kGraphsInTabs, tabs);
}

/// Behind tabs there is nothing to arrange.
bool CanArrange(const CommandContext& context) {
  return HasDocument(context) && !InTabs(context);
}

bool CanReopen(const CommandContext& context) {
  return context.workspace.WindowsToReopen() > 0;
}

bool ReopensAtStart(const CommandContext& context) {
  return context.settings.Read(kReopenAtStart);
}

void ToggleReopenAtStart(CommandContext& context) {
  context.settings.Write(kReopenAtStart, !ReopensAtStart(context));
}

bool CaptionsShown(const CommandContext& context) {
  return context.workspace.GetButtonCaptions() == ButtonCaptions::Shown;
}

void ToggleCaptions(CommandContext& context) {
  const bool show = !CaptionsShown(context);
  context.workspace.SetButtonCaptions(show ? ButtonCaptions::Shown : ButtonCaptions::Hidden);
  context.settings.Write(kButtonCaptions, show);
}

CommandFace CaptionsFace(const CommandContext& context) {
  if (!CaptionsShown(context)) return {};
  return {.caption = "Hide Button &Captions",
          .hint = "Hide Button Captions|Hide Menu Button Captions"};
}

std::span<const SettingRow> AllSettings() {
  static const std::vector<SettingRow> kRows = [] {
    std::vector<SettingRow> rows;
    for (const std::span<const SettingRow> some :
         {WindowSettings(), RecentSettings(), SessionSettings()})
      rows.insert(rows.end(), some.begin(), some.end());
    return rows;
  }();
  return kRows;
}

}  // namespace

Feature WindowsFeature() {
  static constexpr Command kCommands[] = {
      {.name = "WindowCascade1",
       .caption = "&Cascade",
       .hint = "Cascade",
       .icon = "cascade",
       .menu = Menu::Window,
       .enabled = CanArrange,
       .run = Arrange<WindowArrangement::Cascade>},
      {.name = "WindowTileHorizontal1",
       .caption = "Tile &Horizontally",
       .hint = "Tile Horizontally",
       .icon = "tile-horizontal",
       .menu = Menu::Window,
       .enabled = CanArrange,
       .run = Arrange<WindowArrangement::TileHorizontally>},
      {.name = "WindowTileVertical1",
       .caption = "Tile &Vertically",
       .hint = "Tile Vertically",
       .icon = "tile-vertical",
       .menu = Menu::Window,
       .enabled = CanArrange,
       .run = Arrange<WindowArrangement::TileVertically>},
      {.name = "WindowMinimizeAll1",
       .caption = "&Minimize All",
       .hint = "Minimize Al|Minimize all Graphs to Icons ",
       .icon = "minimize-all",
       .menu = Menu::Window,
       .group = 1,
       .enabled = CanArrange,
       .run = Arrange<WindowArrangement::MinimizeAll>},
      {.name = "WindowArrangeAll1",
       .caption = "Arrange &Icons",
       .hint = "Arrange All|Arranges all Icons ",
       .icon = "arrange-icons",
       .menu = Menu::Window,
       .group = 1,
       .enabled = CanArrange,
       .run = Arrange<WindowArrangement::ArrangeIcons>},
      {.name = "WindowTabs1",
       .caption = "Graphs in &Tabs",
       .hint = "Graphs in Tabs|Show One Graph at a Time, the Others behind Tabs",
       .icon = "tabs",
       .menu = Menu::Window,
       .group = 2,
       .run = ToggleTabs,
       .checked = InTabs},
      {.name = "WindowReopen1",
       .caption = "&Reopen Last Session",
       .hint = "Reopen Last Session|Open What Was Open When the Program Was Closed Last",
       .icon = "reopen",
       .menu = Menu::Window,
       .group = 3,
       .enabled = CanReopen,
       .run = [](CommandContext& c) { c.workspace.ReopenSession(); }},
      {.name = "WindowReopenAtStart1",
       .caption = "Reopen at &Start",
       .hint = "Reopen at Start|Open the Windows of the Last Session at Every Start",
       .icon = "reopen-start",
       .menu = Menu::Window,
       .group = 3,
       .run = ToggleReopenAtStart,
       .checked = ReopensAtStart},
      {.name = "MenuShowCaptions1",
       .caption = "Show Button &Captions",
       .hint = "Show Button Captions|Show Menu Button Captions",
       .icon = "button-captions",
       .menu = Menu::View,
       .run = ToggleCaptions,
       .face_now = CaptionsFace},
  };
  return {.name = "window", .commands = {kCommands}, .settings = AllSettings()};
}

}  // namespace tarnwick
