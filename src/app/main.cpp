// The desktop program's entry.
#include <QApplication>
#include <QLocale>
#include <QMessageBox>
#include <chrono>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "app/instance/plain_answers.h"
#include "app/instance/single_instance.h"
#include "app/window/main_form.h"
#include "base/whole_file.h"
#include "desk/widgets/house_style.h"
#include "desk/widgets/ink_icon.h"
#include "desk/widgets/subdued_text.h"
#include "graph/gif/gif_format.h"

namespace {

using tarnwick::SingleInstance;

/// How long another instance may take to begin.
constexpr std::chrono::seconds kPatience{10};

QByteArray ActivationToken() {
  const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
  return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

/// Asking needs no window system, which takes ten times as long to begin.
SingleInstance::Start AskOthers(SingleInstance& instance, const std::vector<std::string>& words,
                                int argc, char** argv) {
  const QCoreApplication asking(argc, argv);
  return instance.Begin(words, ActivationToken(), kPatience);
}

int TellBlocked() {
  QMessageBox::critical(nullptr, "Tarnwick",
                        "Can not start: previous instance of Tarnwick is initializing");
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (const auto answer = tarnwick::PlainAnswer(words)) {
    std::cout << *answer << std::flush;
    return std::cout ? 0 : 1;
  }
  if (const auto unknown = tarnwick::UnknownOption(words)) {
    std::cerr << "tarnwick: there is no option " << *unknown << " (--help tells more)\n";
    return 2;
  }
  SingleInstance instance(tarnwick::NamesOfInstance());
  const SingleInstance::Start start = AskOthers(instance, words, argc, argv);
  if (start == SingleInstance::Start::HandedOver) return 0;

  QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
      Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
  // One rule for every number that is shown or typed, which is that of the files.
  QLocale::setDefault(QLocale::c());
  std::optional<tarnwick::ExplainedStart> explained(std::in_place);
  const QApplication application(argc, argv);
  explained.reset();
  QApplication::setStyle(new tarnwick::HouseStyle);  // the application's from here
  tarnwick::RefuseTooLargeFiles();
  tarnwick::RegisterGifFormat();
  QApplication::setApplicationName("Tarnwick");
  QGuiApplication::setDesktopFileName("tarnwick");
  tarnwick::SubdueByTextColor();
  QApplication::setWindowIcon(tarnwick::InkIcon("tarnwick"));
  if (start == SingleInstance::Start::Blocked) return TellBlocked();

  tarnwick::ShellParts parts;
  parts.paths = tarnwick::FindProgramPaths(tarnwick::PlacesOfProgram());
  tarnwick::T_MainForm main_form(std::move(parts));
  QObject::connect(&instance, &SingleInstance::activated, &main_form,
                   &tarnwick::T_MainForm::BringToFront);
  QObject::connect(&instance, &SingleInstance::wordsTaken, &main_form,
                   &tarnwick::T_MainForm::TakeWords);
  instance.Listen();
  // What Qt understood is taken off by now.
  main_form.ProcessWords(std::vector<std::string>(argv + 1, argv + argc));
  if (main_form.StartFailed()) return 1;
  main_form.show();
  return QApplication::exec();
}
