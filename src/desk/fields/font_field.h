// The control of a font: a button that names it and opens the choice of fonts, and its colour beside.
#pragma once

#include "desk/fields/field_widget.h"

class QPushButton;
class QToolButton;

namespace tarnwick {

class FontField final : public FieldWidget {
  Q_OBJECT

 public:
  FontField(const FieldRow& row, QWidget* parent);

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;
  void ShowFont(bool various);
  void ChooseFont();
  void Choose();

  QPushButton* button_;
  QToolButton* color_;
  Font font_;
};

}  // namespace tarnwick
