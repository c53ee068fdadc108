// The one function that the program finds in this library.
#include <cstring>
#include <exception>
#include <string>
#include <string_view>

#include "base/error.h"
#include "base/version.h"
#include "desk/help/help_table.h"
#include "help/help_window.h"

namespace tarnwick {
namespace {

HelpWindow* Shown(const HelpRequest& request) {
  if (kVersion != request.program) throw Error("The help belongs to another version of Tarnwick.");
  auto* window = static_cast<HelpWindow*>(request.window);
  if (window == nullptr) window = new HelpWindow(request.file, request.parent);
  if (request.topics == nullptr) {
    window->ShowIndex();
  } else {
    window->ShowTopic(QString::fromUtf8(request.topics).split('\n'));
  }
  window->show();
  window->raise();
  window->activateWindow();
  return window;
}

void Note(const char* text, HelpRequest& request) {
  const std::string_view kept = std::string_view(text).substr(0, request.trouble.size() - 1);
  std::memcpy(request.trouble.data(), kept.data(), kept.size());
}

}  // namespace

extern "C" Q_DECL_EXPORT QWidget* ShowHelp(HelpRequest* request) {
  try {
    return Shown(*request);
  } catch (const std::exception& error) {
    Note(error.what(), *request);
  }
  return nullptr;
}

}  // namespace tarnwick
