#include "app/print/page_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPageSize>
#include <QPushButton>
#include <QVBoxLayout>

#include "desk/widgets/checked_field.h"
#include "desk/widgets/number_box.h"
#include "desk/widgets/reading_order.h"

namespace tarnwick {
namespace {

constexpr QPageSize::PageSizeId kSizes[] = {
    QPageSize::A4,     QPageSize::A5,    QPageSize::A3,      QPageSize::A2,       QPageSize::B5,
    QPageSize::Letter, QPageSize::Legal, QPageSize::Tabloid, QPageSize::Executive};
constexpr double kSmallestRoom = 20;    // millimetres either way
constexpr double kLargestMargin = 500;  // millimetres

struct MarginField {
  const char* name;
  const char* label;
};

constexpr std::array<MarginField, 4> kMargins = {
    {{"MarginLeft", QT_TRANSLATE_NOOP("PageDialog", "&Left")},
     {"MarginTop", QT_TRANSLATE_NOOP("PageDialog", "&Top")},
     {"MarginRight", QT_TRANSLATE_NOOP("PageDialog", "&Right")},
     {"MarginBottom", QT_TRANSLATE_NOOP("PageDialog", "&Bottom")}}};

bool LeavesRoom(QSizeF paper, const QMarginsF& margins) {
  return paper.width() - margins.left() - margins.right() >= kSmallestRoom &&
         paper.height() - margins.top() - margins.bottom() >= kSmallestRoom;
}

}  // namespace

PageDialog::PageDialog(const QPageLayout& page, QWidget* parent)
    : QDialog(parent), page_(page), own_size_(page.pageSize()) {
  setObjectName("PageSetup");
  setWindowTitle(tr("Page Setup"));
  size_ = new QComboBox(this);
  size_->setObjectName("PaperSize");
  for (const QPageSize::PageSizeId id : kSizes) {
    size_->addItem(QPageSize::name(id), QVariant::fromValue(static_cast<int>(id)));
  }
  const int known = size_->findData(static_cast<int>(page.pageSize().id()));
  if (known < 0) size_->addItem(page.pageSize().name());  // the printer's or the user's own
  size_->setCurrentIndex(known < 0 ? size_->count() - 1 : known);
  orientation_ = new QComboBox(this);
  orientation_->setObjectName("PaperOrientation");
  orientation_->addItems({tr("Portrait"), tr("Landscape")});
  orientation_->setCurrentIndex(page.orientation() == QPageLayout::Portrait ? 0 : 1);
  auto* form = new QFormLayout;
  form->addRow(tr("Paper si&ze"), size_);
  form->addRow(tr("&Orientation"), orientation_);
  why_not_ = new QLabel(this);
  why_not_->setObjectName("WhyNot");
  buttons_ = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* column = new QVBoxLayout(this);
  column->addLayout(form);
  column->addWidget(MakeMargins());
  column->addWidget(why_not_);
  column->addWidget(buttons_);
  for (QComboBox* box : {size_, orientation_}) {
    connect(box, &QComboBox::currentIndexChanged, this, &PageDialog::Take);
  }
  TabInReadingOrder(*this);
}

QWidget* PageDialog::MakeMargins() {
  auto* group = new QGroupBox(tr("Margins"), this);
  auto* grid = new QGridLayout(group);
  const QMarginsF now = page_.margins(QPageLayout::Millimeter);
  const std::array<double, 4> sides = {now.left(), now.top(), now.right(), now.bottom()};
  for (std::size_t i = 0; i < margins_.size(); ++i) {
    auto* field = new NumberBox(group);
    field->setObjectName(kMargins[i].name);
    field->setRange(0, kLargestMargin);
    field->setDecimals(1);
    field->setSuffix(tr(" mm"));
    field->setValue(sides[i]);
    auto* label = new QLabel(tr(kMargins[i].label), group);
    label->setBuddy(field);
    const int row = static_cast<int>(i % 2);
    const int column = static_cast<int>(i / 2) * 2;
    grid->addWidget(label, row, column);
    grid->addWidget(field, row, column + 1);
    connect(field, &QDoubleSpinBox::valueChanged, this, &PageDialog::Take);
    margins_[i] = field;
  }
  return group;
}

void PageDialog::Take() {
  const QVariant id = size_->currentData();
  const QPageSize size =
      id.isValid() ? QPageSize(static_cast<QPageSize::PageSizeId>(id.toInt())) : own_size_;
  const bool portrait = orientation_->currentIndex() == 0;
  const QMarginsF margins(margins_[0]->value(), margins_[1]->value(), margins_[2]->value(),
                          margins_[3]->value());
  const QSizeF upright = size.size(QPageSize::Millimeter);
  const bool usable = LeavesRoom(portrait ? upright : upright.transposed(), margins);
  if (usable) {
    page_ = QPageLayout(size, portrait ? QPageLayout::Portrait : QPageLayout::Landscape, margins,
                        QPageLayout::Millimeter);
  }
  const QString why = usable ? QString() : tr("The margins leave no room for a graph.");
  for (QDoubleSpinBox* field : margins_) MarkWrong(*field, why);
  why_not_->setText(why);
  buttons_->button(QDialogButtonBox::Ok)->setEnabled(usable);
}

}  // namespace tarnwick
