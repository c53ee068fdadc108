#include "app/help/help_viewer.h"

#include <QApplication>
#include <QLibrary>
#include <QMenu>
#include <QPointer>
#include <QWidget>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/error.h"
#include "base/version.h"
#include "desk/commands/command.h"
#include "desk/commands/kept_state.h"
#include "desk/editors/editor_library.h"
#include "desk/help/help_table.h"
#include "desk/settings/program_paths.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr std::string_view kLibrary = "thelp";

/// Kept until the program ends: the library's code is in use as long as its windows are.
struct KeptHelp {
  ShowHelpFunction show = nullptr;
  QPointer<QWidget> window;
};

ShowHelpFunction LoadViewer(const ProgramPaths& paths) {
  const std::filesystem::path file = FindLibrary(kLibrary, paths.libraries);
  if (file.empty())
    throw Error("The help's viewer \"" + EditorLibraryFile(kLibrary) + "\" is missing.");
  QLibrary library(PathText(file));
  const QFunctionPointer show = library.resolve("ShowHelp");
  if (show == nullptr)
    throw Error("The help cannot be shown: " + library.errorString().toStdString());
  return reinterpret_cast<ShowHelpFunction>(show);
}

void Show(CommandContext& context, const char* topics) {
  auto& kept = context.kept.Of<KeptHelp>();
  if (kept.show == nullptr) kept.show = LoadViewer(context.paths);
  if (context.paths.help.empty()) throw Error("The pages of the help are missing.");
  // A modal dialog lets nothing be used but its own windows.
  QWidget* const modal = QApplication::activeModalWidget();
  const std::string file = context.paths.help.string();
  HelpRequest request;
  request.program = kVersion.data();
  request.file = file.c_str();
  request.topics = topics;
  request.window = modal != nullptr ? nullptr : kept.window.data();
  request.parent = modal != nullptr ? modal : context.dialog_parent;
  QWidget* const window = kept.show(&request);
  if (window == nullptr) throw Error(request.trouble.data());
  window->setAttribute(Qt::WA_DeleteOnClose, modal != nullptr);
  if (modal == nullptr) kept.window = window;
}

}  // namespace

void ShowHelpOn(CommandContext& context, const QStringList& topics) {
  Show(context, topics.join('\n').toUtf8().constData());
}

void ShowHelpIndex(CommandContext& context) {
  Show(context, nullptr);
}

QStringList TopicsOf(const QWidget* widget) {
  QStringList topics;
  const auto* menu = qobject_cast<const QMenu*>(widget);
  if (menu != nullptr && menu->activeAction() != nullptr) {
    topics.append(menu->activeAction()->objectName());
  }
  for (; widget != nullptr; widget = widget->parentWidget()) {
    if (!widget->objectName().isEmpty()) topics.append(widget->objectName());
  }
  return topics;
}

}  // namespace tarnwick
