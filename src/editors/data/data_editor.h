// The data editor: how the current DataSet is read, its points, its figures, each on a page. Knows its pages; what they show
// and change is theirs.
#pragma once

#include <QWidget>

#include "desk/panels/panel.h"
#include "editors/data/edited_series.h"

class QComboBox;
class QTabWidget;

namespace tarnwick {

class PointsPage;
class SourcePage;
class StatisticsPage;

class DataEditor final : public QWidget {
  Q_OBJECT

 public:
  /// `parts` outlive the editor.
  explicit DataEditor(const PanelParts& parts, QWidget* parent = nullptr);

  void Follow(Document* document);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void Refresh();
  void ShowPagesOf(const TSeries* series);
  void RefreshNames();

  EditedSeries series_;
  QMetaObject::Connection picked_;  // of the document followed
  QMetaObject::Connection source_wanted_;
  QComboBox* names_;
  QTabWidget* pages_;
  SourcePage* source_;
  PointsPage* points_;
  StatisticsPage* statistics_;
};

}  // namespace tarnwick
