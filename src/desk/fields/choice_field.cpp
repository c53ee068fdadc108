#include "desk/fields/choice_field.h"

#include <QCheckBox>
#include <QPainter>
#include <QPixmap>
#include <QSignalBlocker>

#include "desk/fields/wheel_guard.h"
#include "desk/widgets/names_apart.h"
#include "desk/widgets/text.h"
#include "graph/paint/plot_pen.h"
#include "graph/paint/symbol_sprite.h"

namespace tarnwick {
namespace {

constexpr int kSampleWidth = 44;
constexpr int kSampleHeight = 16;
constexpr int kSymbolSize = 10;
constexpr int kFewestLetters = 8;  // long captions are cut rather than widen the page

QIcon Sample(const FieldRow& row, std::int32_t value, const QWidget& on) {
  const bool line = row.look.control.kind == ControlKind::LineStyle;
  const QSize size(line ? kSampleWidth : kSampleHeight, kSampleHeight);
  QPixmap picture(size * on.devicePixelRatioF());
  picture.setDevicePixelRatio(on.devicePixelRatioF());
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor ink = on.palette().color(QPalette::Text);
  const double middle = kSampleHeight / 2.0;
  if (line) {
    CrispPen(painter, PaintTarget::Screen)
        .Draw(QLineF(2, middle, kSampleWidth - 2, middle), ink, 2, static_cast<LineStyle>(value));
  } else {
    PaintSymbol(painter, QPointF(middle, middle),
                {static_cast<SymbolShape>(value), SymbolFill::Filled, ink, kSymbolSize});
  }
  return picture;
}

void Prepare(QComboBox& list) {
  list.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list.setMinimumContentsLength(kFewestLetters);
  list.setPlaceholderText(QObject::tr("various"));
  LeaveWheelAlone(list);
}

}  // namespace

CheckField::CheckField(const FieldRow& row, QWidget* parent)
    : FieldWidget(row, parent), box_(new QCheckBox(ToQt(row.look.caption), this)) {
  AddControl(box_);
  connect(box_, &QCheckBox::clicked, this, [this](bool on) {
    box_->setTristate(false);
    if (as_integer_) {
      Take(static_cast<std::int32_t>(on));
    } else {
      Take(on);
    }
  });
}

void CheckField::SetCaption(const QString& caption) {
  box_->setText(caption);
}

void CheckField::ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings&) {
  const QSignalBlocker blocker(box_);
  box_->setTristate(!value);
  if (!value) return box_->setCheckState(Qt::PartiallyChecked);
  const auto* integer = std::get_if<std::int32_t>(&*value);
  as_integer_ = integer != nullptr;
  box_->setChecked(integer ? *integer != 0 : std::get<bool>(*value));
}

ChoiceField::ChoiceField(const FieldRow& row, QWidget* parent)
    : FieldWidget(row, parent), list_(new NameBox(this)) {
  Prepare(*list_);
  const bool drawn = row.look.control.kind != ControlKind::Choice;
  if (row.look.control.kind == ControlKind::LineStyle) {
    list_->setIconSize({kSampleWidth, kSampleHeight});
  }
  for (const FieldChoice& choice : row.look.control.choices) {
    list_->addItem(drawn ? Sample(row, choice.value, *this) : QIcon(), ToQt(choice.caption),
                   choice.value);
  }
  AddControl(list_);
  connect(list_, &QComboBox::activated, this,
          [this] { Take(static_cast<std::int32_t>(list_->currentData().toInt())); });
}

void ChoiceField::ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings&) {
  const QSignalBlocker blocker(list_);
  list_->setCurrentIndex(value ? list_->findData(std::get<std::int32_t>(*value)) : -1);
}

DataSetField::DataSetField(const FieldRow& row, QWidget* parent)
    : FieldWidget(row, parent), list_(new NameBox(this)) {
  Prepare(*list_);
  AddControl(list_);
  connect(list_, &QComboBox::activated, this,
          [this](int index) { Take(static_cast<std::int32_t>(index) - 1); });
}

void DataSetField::ShowValue(const std::optional<FieldValue>& value,
                             const FieldSurroundings& around) {
  const QSignalBlocker blocker(list_);
  list_->clear();
  list_->addItem(tr("None"));
  for (const std::string& name : around.data_sets) list_->addItem(ToQt(name));
  list_->setCurrentIndex(value ? std::get<std::int32_t>(*value) + 1 : -1);
}

}  // namespace tarnwick
