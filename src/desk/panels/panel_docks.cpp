#include "desk/panels/panel_docks.h"

#include <QDockWidget>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <algorithm>
#include <functional>
#include <utility>

#include "desk/settings/settings.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kGraphsWidth = 700;   // pixels that graphs are read well in, beside a panel
constexpr QPoint kOffSide(40, 40);  // of a panel that is taken off its side

Qt::DockWidgetArea AreaOf(DockSide side) {
  switch (side) {
    case DockSide::Left:
      return Qt::LeftDockWidgetArea;
    case DockSide::Right:
      return Qt::RightDockWidgetArea;
    case DockSide::Top:
      return Qt::TopDockWidgetArea;
    case DockSide::Bottom:
      break;
  }
  return Qt::BottomDockWidgetArea;
}

DockSide SideOf(Qt::DockWidgetArea area) {
  for (const DockSide side : {DockSide::Right, DockSide::Top, DockSide::Bottom}) {
    if (AreaOf(side) == area) return side;
  }
  return DockSide::Left;
}

/// By the panel's name, which is a literal.
Setting<QSize> SizeOf(const PanelRow& row) {
  return {"Panels", row.name.data(), {}, "Size of the panel"};
}

/// Where a floating panel of that place is seen.
QRect Seen(QRect place, const QWidget& window) {
  constexpr int kFromCorner = 40;
  if (!QGuiApplication::screenAt(place.topLeft())) {
    place.moveTopLeft(window.frameGeometry().topLeft() + QPoint(kFromCorner, kFromCorner));
  }
  return {place.topLeft(), place.size().boundedTo(window.screen()->availableSize() / 2)};
}

}  // namespace

/// A dock that gets its panel when it is first shown, by a command or by the window's own menu.
class PanelDock final : public QDockWidget {
 public:
  PanelDock(const PanelRow& row, std::function<std::unique_ptr<Panel>()> make, QMainWindow* window)
      : QDockWidget(ToQt(row.caption), window), row_(row), make_(std::move(make)) {
    setObjectName(ToQt(row.name));
  }

  const PanelRow& Row() const { return row_; }
  Panel* Content() const { return panel_; }
  void EnsurePanel() {
    if (panel_) return;
    panel_ = make_().release();  // the dock's from here
    setWidget(panel_);
  }
  void setVisible(bool visible) override {
    if (visible) EnsurePanel();
    if (!visible && isVisible()) kept_ = size();
    QDockWidget::setVisible(visible);
  }
  /// What the user gave it last; invalid where that is nothing yet.
  QSize KeptSize() const { return isVisible() ? size() : kept_; }
  void KeepSize(QSize size) { kept_ = size; }

 private:
  const PanelRow& row_;
  std::function<std::unique_ptr<Panel>()> make_;
  Panel* panel_ = nullptr;
  QSize kept_;
};

PanelDocks::PanelDocks(QMainWindow& window, const std::vector<const PanelRow*>& rows,
                       const PanelParts& parts)
    : window_(window) {
  for (const PanelRow* row : rows) {
    const auto make = [this, row, parts] {
      std::unique_ptr<Panel> panel = row->make(parts);
      panel->Follow(followed_, {});
      return panel;
    };
    auto dock = std::make_unique<PanelDock>(*row, make, &window);
    dock->hide();
    window.addDockWidget(AreaOf(row->side), dock.get());
    connect(dock.get(), &QDockWidget::visibilityChanged, this, &PanelDocks::shownChanged);
    docks_.push_back(std::move(dock));
  }
}

PanelDocks::~PanelDocks() = default;

PanelDock& PanelDocks::DockOf(const PanelRow& panel) const {
  return **std::find_if(docks_.begin(), docks_.end(),
                        [&](const auto& dock) { return dock->Row().name == panel.name; });
}

void PanelDocks::Show(const PanelRow& panel) {
  PanelDock& dock = DockOf(panel);
  const QSize kept = dock.KeptSize();
  const bool was_hidden = dock.isHidden();
  if (was_hidden) MakeRoomFor(dock);
  dock.show();
  if (!was_hidden || !kept.isValid()) return;
  if (dock.isFloating()) return dock.resize(kept.boundedTo(window_.screen()->availableSize()));
  Widen(dock, {.side = SideOf(window_.dockWidgetArea(&dock)), .geometry = QRect({}, kept)});
}

void PanelDocks::Hide(const PanelRow& panel) {
  DockOf(panel).hide();
}

bool PanelDocks::IsShown(const PanelRow& panel) const {
  return !DockOf(panel).isHidden();
}

PanelPlace PanelDocks::PlaceOf(const PanelRow& panel) const {
  PanelDock& dock = DockOf(panel);
  PanelPlace place;
  place.shown = !dock.isHidden();
  place.floats = dock.isFloating();
  place.side = SideOf(window_.dockWidgetArea(&dock));
  place.geometry = dock.geometry();
  const bool movable = dock.features().testFlag(QDockWidget::DockWidgetMovable);
  place.hold = movable ? PanelHold::Movable : PanelHold::Fixed;
  return place;
}

void PanelDocks::Put(const PanelRow& panel, const PanelPlace& place) {
  PanelDock& dock = DockOf(panel);
  QDockWidget::DockWidgetFeatures features = QDockWidget::DockWidgetClosable;
  if (place.hold == PanelHold::Movable)
    features |= QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable;
  dock.setFeatures(features);
  const Qt::DockWidgetArea area = AreaOf(place.side);
  if (window_.dockWidgetArea(&dock) != area) window_.addDockWidget(area, &dock);
  const QRect from_side(window_.mapToGlobal(dock.pos()) + kOffSide, dock.size());
  dock.setFloating(place.floats);
  dock.setVisible(place.shown);
  if (place.floats) {
    const bool given = place.geometry.isValid();
    dock.setGeometry(Seen(given ? place.geometry : from_side, window_));
  } else if (place.geometry.isValid()) {
    Widen(dock, place);
  }
}

/// Gives a docked panel its size across its side.
void PanelDocks::Widen(PanelDock& dock, const PanelPlace& place) {
  const bool beside = place.side == DockSide::Left || place.side == DockSide::Right;
  const QSize size = place.geometry.size().boundedTo(window_.size() / 2);
  window_.resizeDocks({&dock}, {beside ? size.width() : size.height()},
                      beside ? Qt::Horizontal : Qt::Vertical);
}

void PanelDocks::Restore(const Settings& settings) {
  for (const auto& dock : docks_) {
    if (dock->Row().restore) {
      dock->Row().restore(*this, settings);
    } else {
      dock->KeepSize(settings.Read(SizeOf(dock->Row())));
    }
  }
}

void PanelDocks::Store(Settings& settings) const {
  for (const auto& dock : docks_) {
    if (dock->Row().store) {
      dock->Row().store(*this, settings);
    } else if (const QSize kept = dock->KeptSize(); kept.isValid()) {
      settings.Write(SizeOf(dock->Row()), kept);
    }
  }
}

void PanelDocks::MakeRoomFor(PanelDock& dock) {
  dock.EnsurePanel();
  if (window_.isMaximized() || window_.isFullScreen() || dock.isFloating()) return;
  const Qt::DockWidgetArea area = window_.dockWidgetArea(&dock);
  if (area != Qt::LeftDockWidgetArea && area != Qt::RightDockWidgetArea) return;
  const QSize kept = dock.KeptSize();
  const int panel = kept.isValid() ? kept.width() : dock.sizeHint().width();
  const int wanted = kGraphsWidth + panel - window_.centralWidget()->width();
  const int room = window_.screen()->availableGeometry().right() - window_.frameGeometry().right();
  const int more = std::clamp(wanted, 0, std::max(room, 0));
  window_.resize(window_.width() + more, window_.height());
  window_.resizeDocks({&dock}, {panel}, Qt::Horizontal);
}

void PanelDocks::Follow(Document* document, PanelChange change) {
  followed_ = document;
  for (const auto& dock : docks_) {
    if (Panel* panel = dock->Content()) panel->Follow(document, change);
  }
}

}  // namespace tarnwick
