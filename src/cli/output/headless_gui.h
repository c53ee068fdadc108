// What drawing needs of the graphics library where there is no display: fonts and images, no windows.
#pragma once

#include <QGuiApplication>

namespace tarnwick::cli {

/// While one lives, pictures can be drawn. At most one at a time.
class HeadlessGui {
 public:
  HeadlessGui();

 private:
  int argument_count_;
  char name_[16];
  char* arguments_[2];
  QGuiApplication application_;
};

}  // namespace tarnwick::cli
