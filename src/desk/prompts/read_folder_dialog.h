// Asks for a folder and a mask, and shows which files they mean before they are opened.
#pragma once

#include <QDialog>

#include "desk/prompts/file_chooser.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace tarnwick {

class Txy_ReadFolder final : public QDialog {
  Q_OBJECT

 public:
  Txy_ReadFolder(const std::filesystem::path& folder, QWidget* parent);
  FolderChoice Choice() const;

 private:
  void Browse();
  void ShowFiles();

  QLineEdit* folder_;
  QLineEdit* mask_;
  QLabel* files_;
  QPushButton* open_;
};

}  // namespace tarnwick
