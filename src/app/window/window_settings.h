// Where the main window stands, kept between runs. Knows settings, screens and one window.
#pragma once

#include <span>

#include "desk/settings/setting.h"

class QWidget;

namespace tarnwick {

class Settings;

/// Whether the buttons of the tool bar show their captions.
inline constexpr Setting<bool> kButtonCaptions = {
    .section = "Tarnwick", .key = "ShowButtonCaptions", .label = "Captions below the buttons"};

/// Whether graphs stand behind tabs instead of in frames of their own.
inline constexpr Setting<bool> kGraphsInTabs = {
    .section = "Tarnwick", .key = "GraphsInTabs", .label = "Graphs behind tabs"};

/// These and those that the place is kept in.
std::span<const SettingRow> WindowSettings();

/// Puts a window that is not shown yet where it stood, on a screen that is there, maximised if it was; one that was minimised
/// begins as it was before. What is damaged or lies on no screen falls back.
void RestoreWindow(QWidget& window, const Settings& settings);
/// Keeps state and place as they are, and beside them the place that the window has while it is neither maximised nor
/// minimised.
void StoreWindow(const QWidget& window, Settings& settings);

}  // namespace tarnwick
