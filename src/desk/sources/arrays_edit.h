// Which arrays of a file are read as columns. Knows paths of arrays; what the file holds is read beside.
#pragma once

#include "desk/sources/place_edit.h"

class QLabel;
class QLineEdit;
class QTreeWidget;

namespace tarnwick {

class LatestWork;

class ArraysEdit final : public PlaceEdit {
  Q_OBJECT

 public:
  explicit ArraysEdit(QWidget* parent);

  void Show(const TDSInfo& info) override;
  std::optional<QString> Take(TDSInfo& info) const override;

 private:
  void AskForArrays(const TDSInfo& info);
  /// The marks in the list say what is typed, and the other way round.
  void MarkTyped();
  void TypeMarked();

  QLabel* file_;
  QLineEdit* paths_;
  QTreeWidget* list_;
  LatestWork* arrays_;
};

}  // namespace tarnwick
