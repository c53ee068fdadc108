// The main window on a dark desktop, as a picture for docs/gallery. gallery_desktop PICTURE FILE...: opens the files in a
// window each and writes what is seen. Needs a display; settings are kept nowhere.
#include <QApplication>
#include <QSettings>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "app/window/command_line.h"
#include "app/window/main_form.h"
#include "desk/widgets/house_style.h"

namespace {

using namespace tarnwick;

QPalette DarkPalette() {
  QPalette palette(QColor(0x2E, 0x32, 0x38), QColor(0x24, 0x27, 0x2C));
  palette.setColor(QPalette::Base, QColor(0x1B, 0x1E, 0x22));
  palette.setColor(QPalette::AlternateBase, QColor(0x24, 0x27, 0x2C));
  palette.setColor(QPalette::ToolTipBase, QColor(0x2E, 0x32, 0x38));
  palette.setColor(QPalette::Highlight, QColor(0x2F, 0x6F, 0xB0));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(0x6F, 0xB4, 0xF0));
  return palette;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  auto* const style = new HouseStyle;
  style->setBaseStyle(QStyleFactory::create("Fusion"));
  QApplication::setStyle(style);  // the application's from here
  QApplication::setPalette(DarkPalette());
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 3) {
    std::fputs("usage: gallery_desktop PICTURE FILE...\n", stderr);
    return 2;
  }
  const QTemporaryDir settings;
  ShellParts parts;
  parts.settings =
      std::make_unique<QSettings>(settings.filePath("settings.ini"), QSettings::IniFormat);
  T_MainForm form(std::move(parts));
  std::vector<std::string> words;
  for (const QString& file : arguments.mid(2)) words.push_back(file.toStdString());
  form.resize(1120, 760);
  form.show();
  form.ProcessCommandLine(JoinWords(words));
  // Children are placed once the window stands.
  constexpr int kSettled = 1500;  // milliseconds
  bool written = false;
  QTimer::singleShot(kSettled, [&] {
    written = form.grab().save(arguments[1], "png", 0);
    QApplication::exit();  // quit() would ask about unsaved graphs
  });
  QApplication::exec();
  if (!written)
    std::fprintf(stderr, "gallery_desktop: can not write %s\n", qPrintable(arguments[1]));
  return written ? 0 : 1;
}
