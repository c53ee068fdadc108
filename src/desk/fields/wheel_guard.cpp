#include "desk/fields/wheel_guard.h"

#include <QEvent>
#include <QWidget>

namespace tarnwick {
namespace {

class WheelGuard final : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
    event->ignore();
    return true;
  }
};

}  // namespace

void LeaveWheelAlone(QWidget& control) {
  control.setFocusPolicy(Qt::StrongFocus);
  control.installEventFilter(new WheelGuard(&control));
}

}  // namespace tarnwick
