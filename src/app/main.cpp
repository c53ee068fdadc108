// The desktop program's entry.
#include <QApplication>
#include <string>
#include <vector>

#include "app/window/command_line.h"
#include "app/window/main_form.h"
#include "base/whole_file.h"
#include "desk/widgets/ink_icon.h"
#include "graph/gif/gif_format.h"

int main(int argc, char** argv) {
  QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
      Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
  const QApplication application(argc, argv);
  tarnwick::RefuseTooLargeFiles();
  tarnwick::RegisterGifFormat();
  QApplication::setApplicationName("Tarnwick");
  QGuiApplication::setDesktopFileName("tarnwick");
  QApplication::setWindowIcon(tarnwick::InkIcon("tarnwick"));

  const QStringList arguments = QApplication::arguments();
  std::vector<std::string> words;
  for (const QString& argument : arguments.mid(1)) words.push_back(argument.toStdString());

  tarnwick::ShellParts parts;
  parts.paths = tarnwick::FindProgramPaths();
  tarnwick::T_MainForm main_form(std::move(parts));
  main_form.ProcessCommandLine(tarnwick::JoinWords(words));
  if (main_form.StartFailed()) return 1;
  main_form.show();
  return QApplication::exec();
}
