// Controls on a page that is scrolled: the wheel turns the page, not a number under the mouse.
#pragma once

class QWidget;

namespace tarnwick {

/// The control takes the wheel only while the keyboard is on it.
void LeaveWheelAlone(QWidget& control);

}  // namespace tarnwick
