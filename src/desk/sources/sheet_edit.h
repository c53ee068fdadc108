// Which sheet of a workbook is read, and which cells of it. Knows places in workbooks; the sheets' names are read beside.
#pragma once

#include "desk/sources/place_edit.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace tarnwick {

class LatestWork;

class SheetEdit final : public PlaceEdit {
  Q_OBJECT

 public:
  explicit SheetEdit(QWidget* parent);

  void Show(const TDSInfo& info) override;
  std::optional<QString> Take(TDSInfo& info) const override;

 private:
  void AskForSheets(const TDSInfo& info);

  QLabel* file_;
  QComboBox* sheet_;
  QLineEdit* range_;
  LatestWork* names_;
};

}  // namespace tarnwick
