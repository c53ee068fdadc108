#include "desk/widgets/house_style.h"

#include <QStyleOptionTitleBar>

#include "desk/widgets/ink_icon.h"

namespace tarnwick {

int HouseStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* more) const {
  if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
  return QProxyStyle::styleHint(hint, option, widget, more);
}

QIcon HouseStyle::standardIcon(StandardPixmap which, const QStyleOption* option,
                               const QWidget* widget) const {
  switch (which) {
    case SP_MessageBoxQuestion:
      return InkIcon("message-question");
    case SP_MessageBoxInformation:
      return InkIcon("message-information");
    case SP_MessageBoxWarning:
      return InkIcon("message-warning");
    case SP_MessageBoxCritical:
      return InkIcon("message-critical");
    // Of panels, and of a graph that fills the workspace: the toolkit's are dark on every desktop.
    case SP_TitleBarCloseButton:
      return InkIcon("title-close");
    case SP_TitleBarMinButton:
      return InkIcon("title-minimize");
    case SP_TitleBarNormalButton:
      return InkIcon("title-normal");
    default:
      return QProxyStyle::standardIcon(which, option, widget);
  }
}

/// The buttons of a window that is not worked in are black in the toolkit's styles, on dark desktops too; those of the one worked
/// in are white.
void HouseStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
  const auto* bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
  const auto worked_in = static_cast<int>(State_Active);
  if (control != CC_TitleBar || !bar || (bar->titleBarState & worked_in) != 0 ||
      bar->palette.color(QPalette::Window).lightness() >= 128)
    return QProxyStyle::drawComplexControl(control, option, painter, widget);
  QStyleOptionTitleBar lit(*bar);
  lit.titleBarState |= worked_in;
  lit.palette.setColor(QPalette::Highlight, bar->palette.color(QPalette::Button));
  QProxyStyle::drawComplexControl(control, &lit, painter, widget);
}

}  // namespace tarnwick
