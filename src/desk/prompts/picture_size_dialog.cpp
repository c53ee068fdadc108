#include "desk/prompts/picture_size_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "base/error.h"
#include "desk/widgets/number_box.h"

namespace tarnwick {
namespace {

constexpr double kInchMillimetres = 25.4;
constexpr double kLargestShown = 99999;

NumberBox* MakeSide(const char* name, QWidget* parent) {
  auto* const side = new NumberBox(parent);
  side->setObjectName(QString::fromLatin1(name));
  side->setRange(0, kLargestShown);
  return side;
}

}  // namespace

PictureSizeDialog::PictureSizeDialog(const PictureOptions& proposal, QWidget* parent)
    : QDialog(parent),
      width_(MakeSide("width", this)),
      height_(MakeSide("height", this)),
      unit_(new QComboBox(this)),
      resolution_(new QSpinBox(this)),
      lock_(new QCheckBox(tr("&Keep proportions"), this)),
      outcome_(new QLabel(this)),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)),
      millimetres_(QSizeF(proposal.width, proposal.height) * kInchMillimetres / proposal.dpi),
      ratio_(millimetres_.width() / millimetres_.height()) {
  setObjectName("PictureSize");
  setWindowTitle(tr("Size of the Picture"));
  unit_->setObjectName("unit");
  unit_->addItems({tr("pixels"), tr("millimetres")});
  lock_->setObjectName("lock");
  lock_->setChecked(true);
  resolution_->setObjectName("resolution");
  resolution_->setRange(PictureOptions::kLowestDpi, PictureOptions::kHighestDpi);
  resolution_->setValue(proposal.dpi);
  resolution_->setSuffix(tr(" dots per inch"));
  outcome_->setObjectName("outcome");
  outcome_->setWordWrap(true);

  auto* const form = new QFormLayout;
  form->addRow(tr("&Width:"), width_);
  form->addRow(tr("&Height:"), height_);
  form->addRow(tr("&Unit:"), unit_);
  form->addRow(tr("&Resolution:"), resolution_);
  form->addRow(QString(), lock_);
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(outcome_);
  layout->addStretch();
  layout->addWidget(buttons_);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  outcome_->setMinimumWidth(outcome_->fontMetrics().horizontalAdvance(QString(44, u'0')));

  connect(width_, &QDoubleSpinBox::valueChanged, this, &PictureSizeDialog::ChangeWidth);
  connect(height_, &QDoubleSpinBox::valueChanged, this, &PictureSizeDialog::ChangeHeight);
  connect(unit_, &QComboBox::currentIndexChanged, this, &PictureSizeDialog::ShowSize);
  connect(resolution_, &QSpinBox::valueChanged, this, &PictureSizeDialog::ShowSize);
  connect(lock_, &QCheckBox::toggled, this, [this] {
    if (!millimetres_.isEmpty()) ratio_ = millimetres_.width() / millimetres_.height();
  });
  connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
  ShowSize();
  width_->selectAll();
}

PictureSizeDialog::Unit PictureSizeDialog::ShownUnit() const {
  return unit_->currentIndex() == 0 ? Unit::Pixels : Unit::Millimetres;
}

double PictureSizeDialog::InUnit(double millimetres) const {
  return ShownUnit() == Unit::Pixels ? WholePixels(millimetres, resolution_->value()) : millimetres;
}

double PictureSizeDialog::FromUnit(double shown) const {
  return ShownUnit() == Unit::Pixels ? shown * kInchMillimetres / resolution_->value() : shown;
}

void PictureSizeDialog::ChangeWidth(double shown) {
  millimetres_.setWidth(FromUnit(shown));
  if (lock_->isChecked()) {
    millimetres_.setHeight(millimetres_.width() / ratio_);
    const QSignalBlocker quiet(height_);
    height_->setValue(InUnit(millimetres_.height()));
  }
  ShowOutcome();
}

void PictureSizeDialog::ChangeHeight(double shown) {
  millimetres_.setHeight(FromUnit(shown));
  if (lock_->isChecked()) {
    millimetres_.setWidth(millimetres_.height() * ratio_);
    const QSignalBlocker quiet(width_);
    width_->setValue(InUnit(millimetres_.width()));
  }
  ShowOutcome();
}

void PictureSizeDialog::ShowSize() {
  for (QDoubleSpinBox* side : {width_, height_}) {
    const QSignalBlocker quiet(side);
    side->setDecimals(ShownUnit() == Unit::Pixels ? 0 : 1);
    side->setValue(InUnit(side == width_ ? millimetres_.width() : millimetres_.height()));
  }
  ShowOutcome();
}

/// The size in the other unit too, or why there is no such picture.
void PictureSizeDialog::ShowOutcome() {
  const PictureOptions options = Options();
  QString wrong;
  try {
    options.Validate();
  } catch (const Error& error) {
    wrong = QString::fromStdString(error.what());
  }
  const QLocale plain = QLocale::c();
  outcome_->setText(!wrong.isEmpty()
                        ? wrong
                        : QStringLiteral("%1 × %2 pixels, %3 × %4 mm")
                              .arg(QString::number(options.width), QString::number(options.height),
                                   plain.toString(millimetres_.width(), 'f', 1),
                                   plain.toString(millimetres_.height(), 'f', 1)));
  buttons_->button(QDialogButtonBox::Ok)->setEnabled(wrong.isEmpty());
}

PictureOptions PictureSizeDialog::Options() const {
  PictureOptions options;
  options.dpi = resolution_->value();
  options.width = WholePixels(millimetres_.width(), options.dpi);
  options.height = WholePixels(millimetres_.height(), options.dpi);
  if (ShownUnit() == Unit::Millimetres) options.millimetres = millimetres_;
  return options;
}

}  // namespace tarnwick
