#include "app/fit/fit_options_page.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>
#include <limits>

#include "desk/widgets/checked_field.h"

namespace tarnwick {
namespace {

QSpinBox* Count(int least, QWidget* parent) {
  auto* box = new QSpinBox(parent);
  box->setRange(least, std::numeric_limits<int>::max());
  box->setGroupSeparatorShown(false);
  box->setMaximumWidth(160);
  return box;
}

QColor ToQColor(Color color) {
  return {color.Red(), color.Green(), color.Blue()};
}

}  // namespace

FitOptionsPage::FitOptionsPage(QWidget* parent) : QWidget(parent) {
  auto* fit = new QGroupBox(tr("Fit"), this);
  auto* fit_form = new QFormLayout(fit);
  AddFitFields(*fit_form);
  auto* weights = new QGroupBox(tr("Weights"), this);
  auto* weight_form = new QFormLayout(weights);
  AddWeightFields(*weight_form);
  auto* curve = new QGroupBox(tr("Curve"), this);
  auto* curve_form = new QFormLayout(curve);
  AddCurveFields(*curve_form);
  auto* right = new QVBoxLayout;
  right->addWidget(weights);
  right->addWidget(curve);
  trouble_ = new QLabel(this);
  trouble_->setObjectName("FitSettingsTrouble");
  trouble_->setWordWrap(true);
  auto* row = new QHBoxLayout;
  row->addWidget(fit, 3);
  row->addLayout(right, 2);
  auto* column = new QVBoxLayout(this);
  column->addLayout(row, 1);
  column->addWidget(trouble_);
  connect(this, &FitOptionsPage::edited, this, &FitOptionsPage::ShowTrouble);
}

/// Beside what is red, why.
void FitOptionsPage::ShowTrouble() {
  struct Field {
    QString name;
    const NumberEdit* edit;
  };
  const bool crossed = left_used_->isChecked() && right_used_->isChecked() && left_->Number() &&
                       right_->Number() && *left_->Number() > *right_->Number();
  const QString nothing_between = tr("It lies left of the left margin: no point is between them.");
  MarkWrong(*right_, crossed ? nothing_between : right_->Trouble());
  QStringList troubles;
  for (const Field& field :
       {Field{tr("Tolerance"), tolerance_}, Field{tr("Left Margin"), left_},
        Field{tr("Right Margin"), right_}, Field{tr("Loss scale"), loss_scale_}}) {
    const QString why = field.edit == right_ && crossed ? nothing_between : field.edit->Trouble();
    if (!why.isEmpty() && (field.edit->isEnabled() || field.edit == loss_scale_))
      troubles.append(field.name + ": " + why);
  }
  QPalette palette;
  palette.setColor(QPalette::WindowText, WrongTextColor());
  trouble_->setPalette(palette);
  trouble_->setText(troubles.join('\n'));
}

void FitOptionsPage::AddMargin(QFormLayout& form, const QString& caption, QCheckBox*& used,
                               NumberEdit*& margin) {
  used = new QCheckBox(caption, this);
  margin = new NumberEdit(NumberEdit::Accepts::AnyNumber, this);
  margin->setAccessibleName(QString(caption).remove('&'));
  form.addRow(used, margin);
  connect(used, &QCheckBox::toggled, margin, &QWidget::setEnabled);
  connect(used, &QCheckBox::toggled, this, &FitOptionsPage::edited);
  connect(margin, &QLineEdit::textChanged, this, &FitOptionsPage::edited);
}

void FitOptionsPage::AddFitFields(QFormLayout& form) {
  method_ = new QComboBox(this);
  method_->setObjectName("FitMethod");
  // In the order of FitProcType.
  method_->addItems({tr("Powell"), tr("Simplex"), tr("Conjugate gradient"), tr("Newton-type"),
                     tr("Simplex, then Powell")});
  tolerance_ = new NumberEdit(NumberEdit::Accepts::AboveZero, this);
  tolerance_->setObjectName("FitTolerance");
  iterations_ = Count(1, this);
  points_ = Count(1, this);
  points_->setObjectName("FitNPoints");
  points_->setToolTip(
      tr("Points of the drawn curve. A fit takes about as many of the data, unless "
         "all points are asked for."));
  all_points_ = new QCheckBox(tr("Use &all points, without thinning them"), this);
  finish_ = new QCheckBox(tr("Fi&nish with a Newton-type step"), this);
  form.addRow(tr("&Method"), method_);
  form.addRow(tr("&Tolerance"), tolerance_);
  form.addRow(tr("Max .# of &Iterations"), iterations_);
  form.addRow(tr("# of &Points"), points_);
  AddMargin(form, tr("Left Mar&gin"), left_used_, left_);
  AddMargin(form, tr("&Right Margin"), right_used_, right_);
  form.addRow(all_points_);
  form.addRow(finish_);
  connect(method_, &QComboBox::currentIndexChanged, this, [this](int index) {
    finish_->setEnabled(index != static_cast<int>(FitProcType::cfp_Newton));
    emit edited();
  });
  connect(tolerance_, &QLineEdit::textChanged, this, &FitOptionsPage::edited);
  connect(iterations_, &QSpinBox::valueChanged, this, &FitOptionsPage::edited);
  connect(points_, &QSpinBox::valueChanged, this, &FitOptionsPage::edited);
}

void FitOptionsPage::AddWeightFields(QFormLayout& form) {
  // Each in the order of its enumeration.
  weights_ = new QComboBox(this);
  weights_->setObjectName("FitWeights");
  weights_->addItems({tr("Errors of Y where there are some"), tr("None"), tr("Errors of Y"),
                      tr("Counts, by the model's value"), tr("Relative to the model's value")});
  errors_ = new QComboBox(this);
  errors_->setObjectName("FitErrors");
  errors_->addItems({tr("As the weights tell"), tr("Absolute"), tr("Scaled by the residuals")});
  loss_ = new QComboBox(this);
  loss_->setObjectName("FitLoss");
  loss_->addItems({tr("Linear"), tr("Soft L1"), tr("Huber"), tr("Cauchy")});
  loss_->setToolTip(tr("How much points far off count: by their square, or held for less"));
  loss_scale_ = new NumberEdit(NumberEdit::Accepts::FromZero, this);
  loss_scale_->setObjectName("FitLossScale");
  loss_scale_->setToolTip(
      tr("Residual, in units of the point's error, from which on the loss holds it for less; 0: "
         "told by the residuals' median"));
  form.addRow(tr("&Weights"), weights_);
  form.addRow(tr("&Errors"), errors_);
  form.addRow(tr("Loss"), loss_);
  form.addRow(tr("Loss scale"), loss_scale_);
  for (QComboBox* box : {weights_, errors_, loss_})
    connect(box, &QComboBox::currentIndexChanged, this, &FitOptionsPage::edited);
  connect(loss_, &QComboBox::currentIndexChanged, this,
          [this](int index) { loss_scale_->setEnabled(index > 0); });
  connect(loss_scale_, &QLineEdit::textChanged, this, &FitOptionsPage::edited);
}

void FitOptionsPage::AddCurveFields(QFormLayout& form) {
  shown_ = new QCheckBox(tr("S&hown"), this);
  color_button_ = new QPushButton(this);
  color_button_->setAutoDefault(false);
  color_button_->setAccessibleName(tr("Colour of the curve"));
  style_ = new QComboBox(this);
  // In the order of LineStyle.
  style_->addItems(
      {tr("Solid"), tr("Dash"), tr("Dot"), tr("Dash dot"), tr("Dash dot dot"), tr("None")});
  width_ = new QSpinBox(this);
  width_->setRange(1, 20);
  width_->setSuffix(tr(" px"));
  form.addRow(shown_);
  form.addRow(tr("&Colour"), color_button_);
  form.addRow(tr("St&yle"), style_);
  form.addRow(tr("Wi&dth"), width_);
  connect(shown_, &QCheckBox::toggled, this, &FitOptionsPage::edited);
  connect(style_, &QComboBox::currentIndexChanged, this, &FitOptionsPage::edited);
  connect(width_, &QSpinBox::valueChanged, this, &FitOptionsPage::edited);
  connect(color_button_, &QPushButton::clicked, this, [this] {
    const QColor chosen = QColorDialog::getColor(ToQColor(color_), this, tr("Colour of the curve"));
    if (!chosen.isValid()) return;
    color_ = Color::FromRgb(chosen.red(), chosen.green(), chosen.blue());
    ShowColor();
    emit edited();
  });
}

void FitOptionsPage::ShowColor() {
  QPixmap patch(40, 14);
  patch.fill(ToQColor(color_));
  color_button_->setIconSize(patch.size());
  color_button_->setIcon(patch);
}

void FitOptionsPage::Put(const FitSettings& model) {
  const QSignalBlocker quiet(this);
  method_->setCurrentIndex(static_cast<int>(model.ProcType));
  finish_->setEnabled(model.ProcType != FitProcType::cfp_Newton);
  weights_->setCurrentIndex(static_cast<int>(model.weighting.weights));
  errors_->setCurrentIndex(static_cast<int>(model.weighting.errors));
  loss_->setCurrentIndex(static_cast<int>(model.weighting.loss));
  loss_scale_->SetNumber(model.weighting.loss_scale);
  loss_scale_->setEnabled(model.weighting.loss != FitLoss::Linear);
  tolerance_->SetNumber(model.Tolerance);
  iterations_->setValue(model.IterMax);
  points_->setValue(model.NPoints);
  left_used_->setChecked(model.LeftMarginUsed);
  left_->SetNumber(model.LeftMargin);
  left_->setEnabled(model.LeftMarginUsed);
  right_used_->setChecked(model.RightMarginUsed);
  right_->SetNumber(model.RightMargin);
  right_->setEnabled(model.RightMarginUsed);
  shown_->setChecked(model.CurveShown);
  style_->setCurrentIndex(model.CurveStyle);
  width_->setValue(model.CurveWidth);
  color_ = model.CurveColor;
  ShowColor();
  ShowTrouble();
}

bool FitOptionsPage::Take(FitSettings& model) const {
  const std::optional<double> tolerance = tolerance_->Number();
  const std::optional<double> loss_scale = loss_scale_->Number();
  const std::optional<double> left = left_->Number();
  const std::optional<double> right = right_->Number();
  if (!tolerance || !loss_scale || (left_used_->isChecked() && !left) ||
      (right_used_->isChecked() && !right)) {
    return false;
  }
  if (method_->currentIndex() >= 0) {
    model.ProcType = static_cast<FitProcType>(method_->currentIndex());
  }
  model.weighting = {static_cast<FitWeights>(weights_->currentIndex()),
                     static_cast<FitErrors>(errors_->currentIndex()),
                     static_cast<FitLoss>(loss_->currentIndex()), *loss_scale};
  model.Tolerance = *tolerance;
  model.IterMax = iterations_->value();
  model.NPoints = points_->value();
  model.LeftMarginUsed = left_used_->isChecked();
  if (left) model.LeftMargin = *left;
  model.RightMarginUsed = right_used_->isChecked();
  if (right) model.RightMargin = *right;
  model.CurveShown = shown_->isChecked();
  model.CurveColor = color_;
  if (style_->currentIndex() >= 0) model.CurveStyle = style_->currentIndex();
  model.CurveWidth = width_->value();
  return true;
}

FitRunOptions FitOptionsPage::RunOptions() const {
  FitRunOptions options;
  if (all_points_->isChecked()) options.points = FitPointChoice::All;
  if (finish_->isChecked()) options.finish = FinishingStep::Yes;
  return options;
}

}  // namespace tarnwick
