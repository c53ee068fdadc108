// The dialog that tells how two DataSets differ: figures, tests, boxes and histograms. Knows what is chosen; what is told of it
// is results/sample_report.h's.
#pragma once

#include <QDialog>

class QComboBox;
class QLabel;
class QTableWidget;

namespace tarnwick {

class Document;
class SamplePicture;

class CompareDialog final : public QDialog {
  Q_OBJECT

 public:
  explicit CompareDialog(Document& document, QWidget* parent = nullptr);

 private:
  void Compare();
  void Copy();

  Document& document_;
  QComboBox* first_;
  QComboBox* second_;
  QTableWidget* table_;
  QLabel* told_;
  SamplePicture* picture_;
};

}  // namespace tarnwick
