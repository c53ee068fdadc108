// The dialogs that make a smoother DataSet, and one less its base line. Know what is asked for; what comes of it is
// results/smooth_series.h's.
#pragma once

#include "app/analysis/result_dialog.h"

class QComboBox;
class QSpinBox;

namespace tarnwick {

class NumberEdit;

class SmoothDialog final : public ResultDialog {
  Q_OBJECT

 public:
  SmoothDialog(Document& document, Prompt& prompt, QWidget* parent = nullptr);

 private:
  std::string NameFor(const TxyGraph& graph, const TSeries& source) const override;
  std::string Make(TxyGraph& graph, TSeries& source, const NewSeries& wanted,
                   ResultStage stage) override;
  void Follow();
  QSpinBox* AddNumber(const char* name, const QString& label, int lowest, int highest, int value);

  QComboBox* method_;
  QSpinBox* window_;
  QSpinBox* order_;
  QSpinBox* derivative_;
};

class BaseLineDialog final : public ResultDialog {
  Q_OBJECT

 public:
  BaseLineDialog(Document& document, Prompt& prompt, QWidget* parent = nullptr);

 private:
  std::string NameFor(const TxyGraph& graph, const TSeries& source) const override;
  std::string Make(TxyGraph& graph, TSeries& source, const NewSeries& wanted,
                   ResultStage stage) override;
  QString Lacking() const override;
  void Follow();

  QComboBox* method_;
  NumberEdit* smoothness_;
  QComboBox* result_;
};

}  // namespace tarnwick
