#include "desk/fields/font_field.h"

#include <QFontDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>

#include "desk/fields/color_field.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kShortest = 90;  // pixels

QFont DialogFont(const Font& font) {
  QFont made(ToQt(font.name), std::max(font.size, 1));
  made.setBold(font.bold);
  made.setItalic(font.italic);
  made.setUnderline(font.underline);
  made.setStrikeOut(font.strikeOut);
  return made;
}

/// "Arial 10 bold"
QString NameOf(const Font& font) {
  QString name = ToQt(font.name) + " " + QString::number(font.size);
  if (font.bold) name += QObject::tr(" bold");
  if (font.italic) name += QObject::tr(" italic");
  return name.replace("&", "&&");
}

}  // namespace

FontField::FontField(const FieldRow& row, QWidget* parent) : FieldWidget(row, parent) {
  auto* holder = new QWidget(this);
  auto* line = new QHBoxLayout(holder);
  line->setContentsMargins(0, 0, 0, 0);
  button_ = new QPushButton(holder);
  button_->setMinimumWidth(kShortest);
  button_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  color_ = new QToolButton(holder);
  OfferColors(
      *color_, [this] { return font_.color; },
      [this](Color color) {
        font_.color = color;
        Choose();
      });
  color_->setToolButtonStyle(Qt::ToolButtonIconOnly);
  line->addWidget(button_, 1);
  line->addWidget(color_);
  AddControl(holder, button_);
  color_->setAccessibleName(tr("Color of %1").arg(ToQt(row.look.caption)));
  color_->setToolTip(color_->accessibleName());
  connect(button_, &QPushButton::clicked, this, &FontField::ChooseFont);
}

void FontField::ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings&) {
  if (value) font_ = std::get<Font>(*value);
  ShowFont(!value);
}

void FontField::ShowFont(bool various) {
  button_->setText(various ? tr("various") : NameOf(font_));
  ShowColor(*color_, various ? std::nullopt : std::optional(font_.color));
}

void FontField::ChooseFont() {
  bool chosen = false;
  const QFont font = QFontDialog::getFont(&chosen, DialogFont(font_), window(), tr("Font"));
  if (!chosen) return;
  font_.name = font.family().toStdString();
  font_.size = std::max(font.pointSize(), 1);
  font_.bold = font.bold();
  font_.italic = font.italic();
  font_.underline = font.underline();
  font_.strikeOut = font.strikeOut();
  Choose();
}

void FontField::Choose() {
  ShowFont(false);
  Take(font_);
}

}  // namespace tarnwick
