// Where a table of a data base stands: its address, and the table or the query. Knows places of data bases; connects to none.
#pragma once

#include "desk/sources/place_edit.h"

class QLineEdit;
class QPlainTextEdit;

namespace tarnwick {

class DatabaseEdit final : public PlaceEdit {
  Q_OBJECT

 public:
  explicit DatabaseEdit(QWidget* parent);

  void Show(const TDSInfo& info) override;
  std::optional<QString> Take(TDSInfo& info) const override;

 private:
  void ChooseFile();

  QLineEdit* address_;
  QLineEdit* table_;
  QPlainTextEdit* query_;
};

}  // namespace tarnwick
