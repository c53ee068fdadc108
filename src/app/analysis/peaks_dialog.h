// The dialog that finds the peaks of a DataSet and marks them. Knows what is asked for and which marks it has made; what a
// peak is
// and how it is marked is results/peak_marks.h's.
#pragma once

#include <QDialog>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "desk/document/open_edit.h"
#include "results/peak_marks.h"

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace tarnwick {

class Document;
class Prompt;

class Txy_Peaks final : public QDialog {
  Q_OBJECT

 public:
  /// Begins with the current DataSet. Document and prompt outlive the dialog.
  Txy_Peaks(Document& document, Prompt& prompt, QWidget* parent = nullptr);

  void done(int result) override;

 private:
  /// A margin as typed: the number it was taken for, and the text that stands for that.
  struct Margin {
    QLineEdit* edit = nullptr;
    QString taken;
    std::optional<double> value;
  };

  QGroupBox* MakeMargins();
  QWidget* MakeNoise();
  QGroupBox* MakeCaptions();
  QWidget* MakeButtons();
  void TakeMargin(Margin& margin);
  void TakeNoise();
  void Preview();
  /// Searches anew, the marks of the last search going. Throws Error; where it found nothing to look at, they stay.
  void Search();
  void DeleteMarks();
  void ClearMarks();
  /// The graph as it was before the dialog, but for its data.
  void Restore();
  double NoisePercent() const;

  Document& document_;
  Prompt& prompt_;
  OpenEdit edit_;
  MarkList marks_before_;
  bool marks_were_shown_;
  std::vector<std::int32_t> marks_;  // made by the last search
  bool cleared_ = false;             // the user has removed them, and changed nothing since

  QComboBox* series_;
  std::array<Margin, 2> margins_;  // left, right
  QLineEdit* noise_ = nullptr;
  QSpinBox* digits_ = nullptr;
  QSpinBox* precision_ = nullptr;
  QLabel* found_ = nullptr;
};

}  // namespace tarnwick
