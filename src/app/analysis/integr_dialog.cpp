#include "app/analysis/integr_dialog.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QSpinBox>
#include <QVBoxLayout>
#include <array>

#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

/// In the order of DerivedKind.
constexpr std::array<ResultTexts, 4> kTexts = {{
    {"Txy_Integr", "Numerical Integration", "Integrate"},
    {"Txy_Integr", "Running Summation", "Running Sum"},
    {"Txy_Integr", "Running Histogram", "Histogram"},
    {"Txy_Differ", "Numerical Differentiation", "Differentiate"},
}};

const ResultTexts& TextsOf(DerivedKind kind) {
  return kTexts.at(static_cast<std::size_t>(kind));
}

}  // namespace

Txy_Integr::Txy_Integr(Document& document, DerivedKind mode, Prompt& prompt, QWidget* parent)
    : ResultDialog(document, TextsOf(mode), AxisId::Y2, prompt, parent),
      mode_(mode),
      hide_source_(new QCheckBox(tr("Hide Source When Finished"))) {
  hide_source_->setObjectName("cbx_HideSource");
  hide_source_->setChecked(HidesSource(mode));
  SourceBox().addWidget(hide_source_);
  if (mode == DerivedKind::Histogram) {
    bins_ = new QSpinBox;
    bins_->setObjectName("e_Bins");
    bins_->setRange(10, 5000);
    bins_->setValue(100);
    Options().addRow(tr("Number of Bins:"), bins_);
    connect(bins_, &QSpinBox::valueChanged, this, &Txy_Integr::Refresh);
  }
  OfferName();
}

std::string Txy_Integr::NameFor(const TxyGraph& graph, const TSeries& source) const {
  return DerivedName(graph, source, mode_);
}

Making Txy_Integr::Chosen(const NewSeries& wanted, ResultStage stage) {
  const bool hide = hide_source_->isChecked() && stage == ResultStage::Final;
  DerivedOptions options{.name = wanted.name,
                         .y_axis = wanted.y_axis,
                         .source = hide ? SourceAfter::Hidden : SourceAfter::Shown};
  if (bins_) options.bins = bins_->value();
  return [options, mode = mode_](TxyGraph& graph, TSeries& source, const CancelPoint&) {
    return AddDerived(graph, source, mode, options).told;
  };
}

Txy_Differ::Txy_Differ(Document& document, Prompt& prompt, QWidget* parent)
    : ResultDialog(document, TextsOf(DerivedKind::Derivative), AxisId::Y2, prompt, parent) {
  OfferName();
}

std::string Txy_Differ::NameFor(const TxyGraph& graph, const TSeries& source) const {
  return DerivedName(graph, source, DerivedKind::Derivative);
}

Making Txy_Differ::Chosen(const NewSeries& wanted, ResultStage) {
  const DerivedOptions options{.name = wanted.name, .y_axis = wanted.y_axis};
  return [options](TxyGraph& graph, TSeries& source, const CancelPoint&) {
    return AddDerived(graph, source, DerivedKind::Derivative, options).told;
  };
}

}  // namespace tarnwick
