// How the current DataSet is read: the first lines as they are cut, and everything that can be said of it. The graph changes when
// it is taken over, as one step. Knows drafts and previews; reading is the document's.
#pragma once

#include <QWidget>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "desk/panels/panel.h"
#include "editors/data/edited_series.h"
#include "editors/data/preview_table.h"
#include "editors/data/source_draft.h"

class QLabel;
class QPushButton;
class QScrollArea;
class QTimer;
class QVBoxLayout;

namespace tarnwick {

class CutsView;
class FieldForm;
class LatestWork;
class PlaceEdit;
class PointCounter;

class SourcePage final : public QWidget {
  Q_OBJECT

 public:
  SourcePage(const PanelParts& parts, const EditedSeries& series, QWidget* parent);

  void Refresh();

 private:
  QWidget* BuildButtons();
  void TakeField(std::size_t row);
  void UseColumn(const QString& name, ColumnUse use);
  void DraftChanged();
  QString WithoutSourceText() const;
  void ShowFields();
  void ShowPlace();
  void TakePlace();
  void ShowPreview();
  void OpenHead();
  /// Asks for the first rows of a source that is no text; they are shown when they come.
  void AskForRows();
  void ShowTrouble(const QString& trouble);
  void ShowColumns(SourcePreview preview);
  void ShowCuts();
  void TakeCuts(const std::vector<std::int32_t>& cuts);
  std::vector<int> UsedColumns() const;
  void Guess();
  void Apply();
  void Revert();
  void Tell(const QString& text);
  /// Says under a column expression what is wrong with it. False when something is.
  bool JudgeExpressions();
  void CountPoints();
  void StopCounting();

  PanelParts parts_;
  const EditedSeries& series_;
  SourceDraft draft_;
  const TSeries* begun_for_ = nullptr;  // compared only
  std::string head_place_;              // where head_ was read
  std::shared_ptr<const TextSource> head_;
  SourcePreview preview_;
  std::vector<std::string> further_;  // columns to be drawn as DataSets more

  QLabel* file_;
  QVBoxLayout* place_;  // of the edit below, which is of the draft's kind
  PlaceEdit* place_edit_ = nullptr;
  CutsView* cuts_;  // where the text is cut by place
  PreviewTable* table_;
  QLabel* told_;
  QScrollArea* scroll_;
  FieldForm* form_;
  QPushButton* guess_ = nullptr;
  QPushButton* by_place_ = nullptr;
  QPushButton* apply_ = nullptr;
  QPushButton* revert_ = nullptr;
  QLabel* count_ = nullptr;
  QTimer* soon_;  // previews while one types
  PointCounter* counter_;
  LatestWork* rows_;  // asked for
};

}  // namespace tarnwick
