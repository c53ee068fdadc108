#include "desk/widgets/house_style.h"

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
    default:
      return QProxyStyle::standardIcon(which, option, widget);
  }
}

}  // namespace tarnwick
