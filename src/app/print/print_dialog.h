// The window that prints a graph: a preview beside what the user decides about it. What is decided is in the graph at once,
// as one step of the document. Knows documents and printers; the picture on paper is the engine's.
#pragma once

#include <QDialog>
#include <optional>

#include "desk/document/open_edit.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QPrinter;
class QPrintPreviewWidget;
class QSpinBox;

namespace tarnwick {

class Document;
class FileChooser;
class Prompt;

class PrintDialog final : public QDialog {
  Q_OBJECT

 public:
  /// Prints the whole graph of `document`. `printer` keeps its paper from one printing to the next. All outlive the window.
  PrintDialog(Document& document, QPrinter& printer, FileChooser& chooser, Prompt& prompt,
              QWidget* parent = nullptr);

 public slots:
  /// Accepted: the decisions stay with the graph, else they are taken back.
  void done(int result) override;

 private:
  QWidget* MakePaper();
  QWidget* MakePlacement();
  QWidget* MakeOptions();
  QWidget* MakeButtons();
  QSpinBox* AddPercent(QFormLayout& form, const QString& label, const char* name, int low,
                       int high);
  void ShowPaper();
  void SetUpPage();
  void Apply();
  /// Prints to what is chosen; false, with the reason told, when it did not come to that.
  bool Print();

  Document& document_;
  QPrinter& printer_;
  FileChooser& chooser_;
  Prompt& prompt_;
  std::optional<OpenEdit> edit_;  // until the user has decided
  QPrintPreviewWidget* preview_ = nullptr;
  QComboBox* target_ = nullptr;
  QLabel* paper_ = nullptr;
  QComboBox* orientation_ = nullptr;
  QSpinBox* left_ = nullptr;
  QSpinBox* top_ = nullptr;
  QSpinBox* scale_ = nullptr;
  QCheckBox* background_ = nullptr;
  QCheckBox* line_styles_ = nullptr;
};

}  // namespace tarnwick
