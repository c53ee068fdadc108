// The graph windows of a session as they are kept between runs: files, places, which one was worked in. Knows settings and
// graph windows; opens nothing.
#pragma once

#include <QRect>
#include <filesystem>
#include <span>
#include <vector>

#include "desk/settings/setting.h"

namespace tarnwick {

class Document;
class Settings;
class TGraphWindow;

/// Whether every start opens what the last session had open.
inline constexpr Setting<bool> kReopenAtStart = {
    .section = "Tarnwick", .key = "ReopenWindows", .label = "Reopen the last session at the start"};

/// This and that which the session is kept in.
std::span<const SettingRow> SessionSettings();

enum class WindowShown : int { Normal, Minimised, Maximised };

struct SessionWindow {
  std::filesystem::path file;  ///< that it shows; empty: none that could be opened again
  QRect place;                 ///< in the workspace, where it is neither of the other states
  WindowShown shown = WindowShown::Normal;
  bool active = false;
};

/// The graph file of a document, else the file its data came from.
std::filesystem::path SessionFileOf(const Document& document);

SessionWindow SessionWindowOf(const TGraphWindow& window, const TGraphWindow* active);

/// Brings a window to the place it had, as far as its workspace still goes.
void PlaceAsKept(TGraphWindow& window, const SessionWindow& kept);

/// Windows without a file are left out.
void KeepSession(const std::vector<SessionWindow>& windows, Settings& settings);
std::vector<SessionWindow> KeptSession(const Settings& settings);

}  // namespace tarnwick
