#include "app/analysis/smooth_dialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QSpinBox>

#include "desk/widgets/checked_field.h"
#include "graph/xy_graph.h"
#include "results/smooth_series.h"

namespace tarnwick {
namespace {

constexpr ResultTexts kSmoothTexts = {"Smooth", "Smoothing", "Smooth"};
constexpr ResultTexts kBaseLineTexts = {"BaseLine", "Base Line", "Base Line"};

QComboBox* MakeChoice(const char* name, const QStringList& choices) {
  auto* choice = new QComboBox;
  choice->setObjectName(name);
  choice->addItems(choices);
  return choice;
}

}  // namespace

SmoothDialog::SmoothDialog(Document& document, Prompt& prompt, QWidget* parent)
    : ResultDialog(document, kSmoothTexts, AxisId::Y, prompt, parent),
      method_(MakeChoice("Method", {tr("Savitzky-Golay"), tr("Running median")})) {
  Options().addRow(tr("&Method"), method_);
  const LocalPolynomial first;
  window_ = AddNumber("Window", tr("&Window"), 3, 9999, first.window);
  window_->setSingleStep(2);
  window_->setSuffix(tr(" points"));
  order_ = AddNumber("Order", tr("&Order of the polynomial"), 0, 9, first.order);
  derivative_ = AddNumber("Derivative", tr("&Derivative"), 0, 2, first.derivative);
  connect(method_, &QComboBox::currentIndexChanged, this, &SmoothDialog::Follow);
  OfferName();
}

QSpinBox* SmoothDialog::AddNumber(const char* name, const QString& label, int lowest, int highest,
                                  int value) {
  auto* box = new QSpinBox;
  box->setObjectName(name);
  box->setRange(lowest, highest);
  box->setValue(value);
  Options().addRow(label, box);
  connect(box, &QSpinBox::valueChanged, this, &SmoothDialog::Refresh);
  return box;
}

void SmoothDialog::Follow() {
  const bool polynomials = method_->currentIndex() == 0;
  order_->setEnabled(polynomials);
  derivative_->setEnabled(polynomials);
  Refresh();
}

std::string SmoothDialog::NameFor(const TxyGraph& graph, const TSeries& source) const {
  return SmoothName(graph, source);
}

std::string SmoothDialog::Make(TxyGraph& graph, TSeries& source, const NewSeries& wanted,
                               ResultStage) {
  const SmoothOptions options = {static_cast<SmoothMethod>(method_->currentIndex()),
                                 {window_->value(), order_->value(), derivative_->value()}};
  return AddSmooth(graph, source, options, wanted).told;
}

BaseLineDialog::BaseLineDialog(Document& document, Prompt& prompt, QWidget* parent)
    : ResultDialog(document, kBaseLineTexts, AxisId::Y, prompt, parent),
      method_(MakeChoice("Method", {tr("Rubber band"), tr("Asymmetric least squares (arPLS)")})),
      smoothness_(new NumberEdit(NumberEdit::Accepts::AboveZero)),
      result_(MakeChoice("Result", {tr("The DataSet less its base line"), tr("The base line")})) {
  const BaseLineOptions first;
  method_->setCurrentIndex(static_cast<int>(first.method));
  smoothness_->setObjectName("Smoothness");
  smoothness_->SetNumber(first.asymmetric.smoothness);
  smoothness_->setToolTip(tr("The greater, the stiffer: 1e2 to 1e9"));
  Options().addRow(tr("&Method"), method_);
  Options().addRow(tr("&Smoothness"), smoothness_);
  Options().addRow(tr("&Result"), result_);
  connect(method_, &QComboBox::currentIndexChanged, this, &BaseLineDialog::Follow);
  connect(result_, &QComboBox::currentIndexChanged, this, &BaseLineDialog::Refresh);
  connect(smoothness_, &QLineEdit::textEdited, this, &BaseLineDialog::Refresh);
  OfferName();
}

void BaseLineDialog::Follow() {
  smoothness_->setEnabled(method_->currentIndex() == static_cast<int>(BaseLineMethod::Asymmetric));
  Refresh();
}

QString BaseLineDialog::Lacking() const {
  return smoothness_->Number() ? QString() : tr("The smoothness is a number above 0.");
}

std::string BaseLineDialog::NameFor(const TxyGraph& graph, const TSeries& source) const {
  return BaseLineName(graph, source);
}

std::string BaseLineDialog::Make(TxyGraph& graph, TSeries& source, const NewSeries& wanted,
                                 ResultStage) {
  BaseLineOptions options;
  options.method = static_cast<BaseLineMethod>(method_->currentIndex());
  options.asymmetric.smoothness = *smoothness_->Number();
  options.result = static_cast<BaseLineResult>(result_->currentIndex());
  return AddLessBaseLine(graph, source, options, wanted).told;
}

}  // namespace tarnwick
