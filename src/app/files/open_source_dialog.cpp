#include "app/files/open_source_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPalette>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "desk/sources/place_edit.h"
#include "desk/sources/place_edits.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/reading_order.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kWidth = 560;

}  // namespace

OpenSourceDialog::OpenSourceDialog(bool present, QWidget* parent)
    : QDialog(parent),
      kind_(new QComboBox(this)),
      places_(new QStackedWidget(this)),
      present_(new QCheckBox(tr("&Add to the present graph"), this)),
      told_(new QLabel(this)) {
  setObjectName("OpenSource");
  setWindowTitle(tr("Open Source"));
  kind_->setObjectName("SourceKind");
  present_->setObjectName("PresentGraph");
  present_->setEnabled(present);
  told_->setObjectName("SourceTrouble");
  told_->setWordWrap(true);
  told_->setMinimumHeight(2 * fontMetrics().lineSpacing());
  told_->setAlignment(Qt::AlignTop);
  QPalette palette = told_->palette();
  palette.setColor(QPalette::WindowText, WrongTextColor());
  told_->setPalette(palette);
  auto* const buttons =
      new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Cancel, this);
  open_ = buttons->button(QDialogButtonBox::Open);
  auto* const column = new QVBoxLayout(this);
  auto* const form = new QFormLayout;
  form->addRow(tr("&Kind:"), kind_);
  column->addLayout(form);
  column->addWidget(places_, 1);
  column->addWidget(present_);
  column->addWidget(told_);
  column->addWidget(buttons);
  for (const PlaceEditRow& row : PlaceEdits()) {
    if (!row.opens_new) continue;
    PlaceEdit* const edit = row.make(places_);
    TDSInfo nowhere;
    nowhere.DataSource = row.kind;
    edit->Show(nowhere);
    places_->addWidget(edit);
    kind_->addItem(ToQt(row.caption), static_cast<int>(row.kind));
    connect(edit, &PlaceEdit::edited, this, &OpenSourceDialog::Judge);
  }
  TabInReadingOrder(*this);
  setMinimumWidth(kWidth);
  connect(kind_, &QComboBox::currentIndexChanged, places_, &QStackedWidget::setCurrentIndex);
  connect(kind_, &QComboBox::currentIndexChanged, this, &OpenSourceDialog::Judge);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  places_->currentWidget()->setFocus();
  Judge();
}

std::optional<TDSInfo> OpenSourceDialog::Place() const {
  TDSInfo place;
  place.DataSource = static_cast<DataSourceKind>(kind_->currentData().toInt());
  // Only place edits were put there.
  const auto& edit = *static_cast<const PlaceEdit*>(places_->currentWidget());
  if (edit.Take(place)) return std::nullopt;
  return place;
}

OpenedInto OpenSourceDialog::Into() const {
  return present_->isChecked() ? OpenedInto::PresentGraph : OpenedInto::NewWindow;
}

void OpenSourceDialog::Refuse(const QString& why) {
  told_->setText(why);
}

void OpenSourceDialog::Judge() {
  TDSInfo place;
  const auto& edit = *static_cast<const PlaceEdit*>(places_->currentWidget());
  const std::optional<QString> trouble = edit.Take(place);
  open_->setEnabled(!trouble);
  open_->setToolTip(trouble.value_or(QString()));
  told_->clear();
}

}  // namespace tarnwick
