// Where a table of a data base stands: its address, and the table or the query. Knows places of data bases; asks them what
// they hold in the background.
#pragma once

#include <QTimer>
#include <optional>

#include "desk/sources/place_edit.h"
#include "sources/database/database_place.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace tarnwick {

class LatestWork;

class DatabaseEdit final : public PlaceEdit {
  Q_OBJECT

 public:
  explicit DatabaseEdit(QWidget* parent);

  void Show(const TDSInfo& info) override;
  std::optional<QString> Take(TDSInfo& info) const override;

 private:
  struct Answer;

  void MakeFields();
  void MakeLayout();
  void Connect();
  void ChooseFile();
  void AddressChanged();
  void PasswordTyped();
  /// Puts what is typed into the desktop's key store, or takes it out again where nothing is.
  void KeepOrForget();
  void QueryChanged();
  /// What the base at the address holds, and whether table or query can be read there.
  void Ask();
  void Take(const Answer& answer);
  void Tell(const QString& text, bool is_wrong);
  /// As typed; throws Error.
  DatabasePlace Place() const;

  QLineEdit* address_;
  QPushButton* browse_;
  QLineEdit* password_;
  QPushButton* keep_;
  std::optional<bool> has_key_store_;  // once it was asked for
  QComboBox* table_;
  QPlainTextEdit* query_;
  QCheckBox* thinned_;
  QPushButton* test_;
  QLabel* told_;
  LatestWork* asking_;
  QTimer patience_;
};

}  // namespace tarnwick
