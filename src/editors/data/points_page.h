// The points of the current DataSet as a table: looked at, found, changed, added, pasted, deleted, put back; in a graph without
// DataSets the first point typed makes one. Knows how a graph's points are edited; every change is one step of the document.
#pragma once

#include <QWidget>
#include <cstdint>
#include <functional>
#include <set>
#include <string>

#include "desk/commands/command.h"
#include "desk/panels/panel.h"
#include "editors/data/edited_series.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace tarnwick {

class ChangesList;
class PointsModel;
class PointsView;
struct PastedPoints;
struct Point;

class PointsPage final : public QWidget {
  Q_OBJECT

 public:
  PointsPage(const PanelParts& parts, const EditedSeries& series, QWidget* parent);

  void Refresh();
  /// Goes to the point that was picked in the picture.
  void FollowPick();

 private:
  QWidget* BuildFind();
  QWidget* BuildButtons();
  void Find();
  void Insert();
  bool AddPoint(double x, double y);
  void Delete();
  void Copy() const;
  void Paste();
  void TellPasted(const PastedPoints& pasted);
  void PutBackChosen();
  void PutAllBack();
  /// One step of what `change` does to the current DataSet, unless the user would rather not edit what has a source.
  bool EditSeries(const char* step, const std::function<void(TSeries&)>& change);
  void GoToPoint(std::int32_t id, double x);
  bool TakeY(std::int32_t id, double y);
  void MarkedChanged();
  /// Tells once of a DataSet that reading its source again undoes what is edited, and offers to cut it off its source.
  /// False: the user
  /// lets it be.
  bool MayEdit(CommandContext& context);

  PanelParts parts_;
  const EditedSeries& series_;
  std::set<std::string> warned_;  // sources of which the user was told
  bool following_ = false;        // what is picked, instead of picking
  bool tells_empty_ = false;      // that there is no DataSet yet
  PointsModel* model_;
  PointsView* view_;
  ChangesList* changes_;
  QLabel* told_ = nullptr;
  QLineEdit* find_ = nullptr;
  QLineEdit* x_ = nullptr;
  QLineEdit* y_ = nullptr;
  QPushButton* delete_ = nullptr;
  QPushButton* copy_ = nullptr;
  QLabel* count_ = nullptr;
};

}  // namespace tarnwick
