// The dialogs that make an integral, a running sum or a histogram of a DataSet, and its derivative. Know what is asked for; what
// comes of it is results/derived_series.h's.
#pragma once

#include "app/analysis/result_dialog.h"
#include "results/derived_series.h"

class QCheckBox;
class QSpinBox;

namespace tarnwick {

/// One dialog in three modes.
class Txy_Integr final : public ResultDialog {
  Q_OBJECT

 public:
  /// `mode` is one of Integral, RunningSum and Histogram.
  Txy_Integr(Document& document, DerivedKind mode, Prompt& prompt, QWidget* parent = nullptr);

 private:
  std::string NameFor(const TxyGraph& graph, const TSeries& source) const override;
  Making Chosen(const NewSeries& wanted, ResultStage stage) override;

  DerivedKind mode_;
  QCheckBox* hide_source_;
  QSpinBox* bins_ = nullptr;  // of a histogram
};

class Txy_Differ final : public ResultDialog {
  Q_OBJECT

 public:
  Txy_Differ(Document& document, Prompt& prompt, QWidget* parent = nullptr);

 private:
  std::string NameFor(const TxyGraph& graph, const TSeries& source) const override;
  Making Chosen(const NewSeries& wanted, ResultStage stage) override;
};

}  // namespace tarnwick
