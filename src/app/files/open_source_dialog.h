// Asks for a source of data that is no file: what kind it is, and where it stands. Knows the table of place edits; reads nothing.
#pragma once

#include <QDialog>
#include <optional>

#include "data/ds_info.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QStackedWidget;

namespace tarnwick {

class PlaceEdit;

enum class OpenedInto { NewWindow, PresentGraph };

class OpenSourceDialog final : public QDialog {
  Q_OBJECT

 public:
  /// `present`: whether there is a graph that the data may go to.
  OpenSourceDialog(bool present, QWidget* parent);

  /// What is typed; only DataSource and its place are set. Nothing while that is no place.
  std::optional<TDSInfo> Place() const;
  OpenedInto Into() const;
  /// Why the place cannot be opened, until something else is typed.
  void Refuse(const QString& why);

 private:
  void Judge();

  QComboBox* kind_;
  QStackedWidget* places_;
  QCheckBox* present_;
  QLabel* told_;
  QPushButton* open_;
};

}  // namespace tarnwick
