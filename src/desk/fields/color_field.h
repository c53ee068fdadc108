// The control of a colour: a button with the colour, which offers a palette and any other colour.
#pragma once

#include <functional>
#include <optional>

#include "desk/fields/field_widget.h"

class QToolButton;

namespace tarnwick {

/// A button that shows a colour; chosen from a palette that opens below it.
class ColorField final : public FieldWidget {
  Q_OBJECT

 public:
  ColorField(const FieldRow& row, QWidget* parent);

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;
  void Choose(Color color);

  QToolButton* button_;
  Color color_;
};

/// Gives a button the menu of colours and calls `chosen` with what is taken from it.
void OfferColors(QToolButton& button, const std::function<Color()>& present,
                 const std::function<void(Color)>& chosen);
/// Shows the colour on the button, with its name; without one the button says that several differ.
void ShowColor(QToolButton& button, const std::optional<Color>& color);

}  // namespace tarnwick
