// The limit that the desktop's start is held against: a Qt widget program that shows one empty window.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QWidget window;
  window.resize(790, 500);
  window.show();
  return QApplication::exec();
}
