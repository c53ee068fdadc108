#include "desk/panels/panel_docks.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QScreen>
#include <algorithm>
#include <functional>
#include <utility>

#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kGraphsWidth = 700;  // pixels that graphs are read well in, beside a panel

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
    QDockWidget::setVisible(visible);
  }

 private:
  const PanelRow& row_;
  std::function<std::unique_ptr<Panel>()> make_;
  Panel* panel_ = nullptr;
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
  if (dock.isHidden()) MakeRoomFor(dock);
  dock.show();
}

void PanelDocks::Hide(const PanelRow& panel) {
  DockOf(panel).hide();
}

bool PanelDocks::IsShown(const PanelRow& panel) const {
  return !DockOf(panel).isHidden();
}

void PanelDocks::MakeRoomFor(PanelDock& dock) {
  dock.EnsurePanel();
  if (window_.isMaximized() || window_.isFullScreen() || dock.isFloating()) return;
  const Qt::DockWidgetArea area = window_.dockWidgetArea(&dock);
  if (area != Qt::LeftDockWidgetArea && area != Qt::RightDockWidgetArea) return;
  const int panel = dock.sizeHint().width();
  const int wanted = kGraphsWidth + panel - window_.width();
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
