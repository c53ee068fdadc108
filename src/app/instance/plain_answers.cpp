#include "app/instance/plain_answers.h"

#include <QString>
#include <QtGlobal>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "base/version.h"

namespace tarnwick {
namespace {

constexpr const char* kUsage =
    "Usage: tarnwick [OPTION...] [FILE...] [@clipboard]\n"
    "\n"
    "Opens graphs, data and fitting functions, or the graph on the clipboard, in one window; a\n"
    "program that runs already takes them.\n"
    "\n"
    "  -maximize  fill the screen\n"
    "  -tile      arrange the graphs side by side\n"
    "  -refresh   read the data of all graphs again\n"
    "  -no        heed none of these\n"
    "  --help     print this and end\n"
    "  --version  print the version and end\n"
    "\n"
    "tarnwick-cli does the same work without a window.\n";

/// Those that QApplication takes off the words, with one dash or two; a value may stand behind "=".
constexpr std::array kQtOptions = {"platform",        "platformpluginpath",
                                   "platformtheme",   "plugin",
                                   "qwindowgeometry", "geometry",
                                   "qwindowicon",     "icon",
                                   "qwindowtitle",    "title",
                                   "reverse",         "session",
                                   "display",         "style",
                                   "stylesheet",      "fontengine",
                                   "fullscreen",      "dialogs",
                                   "nograb",          "qmljsdebugger"};

void EndWithSentence(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (type != QtFatalMsg) {
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
    return;
  }
  std::fprintf(
      stderr,
      "tarnwick: no window can be opened, there is no display to be reached. tarnwick-cli works "
      "without one.\n");
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

std::optional<std::string> PlainAnswer(const std::vector<std::string>& words) {
  const auto named = [&](const char* word) {
    return std::ranges::find(words, word) != words.end();
  };
  if (named("--help") || named("-h")) return kUsage;
  if (named("--version")) return "Tarnwick " + std::string(kVersion) + '\n';
  return std::nullopt;
}

std::optional<std::string> UnknownOption(const std::vector<std::string>& words) {
  for (const std::string& word : words) {
    if (!word.starts_with("--")) continue;
    const std::string name = word.substr(2, word.find('=') - 2);
    if (std::ranges::find(kQtOptions, name) == kQtOptions.end()) return word;
  }
  return std::nullopt;
}

ExplainedStart::ExplainedStart() : before_(qInstallMessageHandler(&EndWithSentence)) {}

ExplainedStart::~ExplainedStart() {
  qInstallMessageHandler(before_);
}

}  // namespace tarnwick
