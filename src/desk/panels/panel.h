// A panel beside the graphs, and the row that it is made from. Every panel is told of every change alike. Knows documents;
// where a panel is docked and when it is made is the shell's affair (panel_docks.h).
#pragma once

#include <QRect>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "graph/xy_graph.h"

namespace tarnwick {

class CommandActions;
class Document;
class PanelHost;
class Settings;
class Workspace;

/// What has happened since a panel was told last.
struct PanelChange {
  enum class What : std::uint8_t {
    ActiveDocument,  ///< another document is looked at, or none
    Graph,           ///< something of its graph; `graph` says what
    State,           ///< its files, steps or note
    View             ///< how it is looked at: mouse let go, another mode
  };
  What what = What::ActiveDocument;
  std::optional<GraphChange> graph = {};
};

class Panel : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;
  /// Shows what now holds of the active document; null without one. Called often, so cheap when nothing that is shown
  /// changed.
  virtual void Follow(Document* document, PanelChange change) = 0;
};

/// What a panel may keep; all outlive it.
struct PanelParts {
  CommandActions& actions;  ///< runs what its buttons ask for
  Settings& settings;
  Workspace& workspace;
};

enum class DockSide : std::uint8_t { Left, Right, Top, Bottom };

/// Whether the user may drag a panel to another place.
enum class PanelHold : std::uint8_t { Movable, Fixed };

struct PanelPlace {
  bool shown = true;
  bool floats = false;
  DockSide side = DockSide::Left;  ///< that it is docked at, or was last
  /// Of a floating panel on the screen, of a docked one in the window, pixels; empty: as it is.
  QRect geometry = {};
  PanelHold hold = PanelHold::Movable;
};

struct PanelRow {
  std::string_view name;     ///< of the dock, for settings and tests
  std::string_view caption;  ///< above the panel
  DockSide side = DockSide::Right;
  std::unique_ptr<Panel> (*make)(const PanelParts& parts) = nullptr;  ///< when it is shown first
  // Of one that comes back as it was: called at the window's first showing and at its end.
  void (*restore)(PanelHost& panels, const Settings& settings) = nullptr;
  void (*store)(const PanelHost& panels, Settings& settings) = nullptr;
};

/// What commands do with panels. A panel is named by its row.
class PanelHost {
 public:
  virtual ~PanelHost() = default;
  virtual void Show(const PanelRow& panel) = 0;
  virtual void Hide(const PanelRow& panel) = 0;
  virtual bool IsShown(const PanelRow& panel) const = 0;
  virtual PanelPlace PlaceOf(const PanelRow& panel) const = 0;
  /// Gives a panel its place, as far as the window goes; one that would float where no screen is floats by the window.
  virtual void Put(const PanelRow& panel, const PanelPlace& place) = 0;

 protected:
  PanelHost() = default;
  PanelHost(const PanelHost&) = default;
  PanelHost& operator=(const PanelHost&) = default;
};

/// Shows a hidden panel and hides a shown one.
inline void Toggle(PanelHost& panels, const PanelRow& panel) {
  panels.IsShown(panel) ? panels.Hide(panel) : panels.Show(panel);
}

}  // namespace tarnwick
