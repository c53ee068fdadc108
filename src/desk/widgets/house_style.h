// The desktop's style with the program's own drawings: buttons of dialogs without pictures, signs of messages in the ink of the
// palette, title bars that are read on a dark desktop. Knows styles; no dialog.
#pragma once

#include <QProxyStyle>

namespace tarnwick {

class HouseStyle final : public QProxyStyle {
  Q_OBJECT

 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* more) const override;
  QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                     const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;
};

}  // namespace tarnwick
