// The panels of a main window: a dock for each row, its panel made when it is first shown, all of them fed alike. Knows
// rows, not what is in a panel.
#pragma once

#include <QObject>
#include <QPointer>
#include <memory>
#include <vector>

#include "desk/document/document.h"
#include "desk/panels/panel.h"

class QMainWindow;

namespace tarnwick {

class PanelDock;

class PanelDocks final : public QObject, public PanelHost {
  Q_OBJECT

 public:
  /// Docks, hidden, for the rows, which outlive this.
  PanelDocks(QMainWindow& window, const std::vector<const PanelRow*>& rows,
             const PanelParts& parts);
  /// Takes docks and panels along.
  ~PanelDocks() override;

  /// Also widens the window, as far as the screen goes, where the panel would leave the graphs too little.
  void Show(const PanelRow& panel) override;
  void Hide(const PanelRow& panel) override;
  bool IsShown(const PanelRow& panel) const override;
  PanelPlace PlaceOf(const PanelRow& panel) const override;
  void Put(const PanelRow& panel, const PanelPlace& place) override;
  /// Rows say for themselves how they come back; others come back in their size when they are shown.
  void Restore(const Settings& settings);
  void Store(Settings& settings) const;
  /// Tells every panel that was made.
  void Follow(Document* document, PanelChange change);

 signals:
  /// A panel is shown or hidden now, by whomever.
  void shownChanged();

 private:
  PanelDock& DockOf(const PanelRow& panel) const;
  void MakeRoomFor(PanelDock& dock);
  void Widen(PanelDock& dock, const PanelPlace& place);

  QMainWindow& window_;
  std::vector<std::unique_ptr<PanelDock>> docks_;
  QPointer<Document> followed_;
};

}  // namespace tarnwick
