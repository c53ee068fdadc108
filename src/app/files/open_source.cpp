#include "app/files/open_source.h"

#include "app/files/open_source_dialog.h"
#include "base/error.h"
#include "desk/commands/command.h"
#include "desk/commands/workspace.h"
#include "desk/document/document.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

void OpenInWindow(const TDSInfo& place, Workspace& workspace) {
  workspace.NewGraph();
  Document& document = *workspace.Documents().back();
  const auto close = [&] {
    document.Files().GiveUp();
    workspace.Close(document);
  };
  try {
    if (!document.Files().ReadPlace(place)) close();
  } catch (const Error&) {
    close();
    throw;
  }
}

}  // namespace

void OpenSource(CommandContext& context) {
  OpenSourceDialog dialog(context.document != nullptr, context.dialog_parent);
  while (dialog.exec() == QDialog::Accepted) {
    try {
      const TDSInfo place = dialog.Place().value();  // else it could not have been accepted
      if (dialog.Into() == OpenedInto::PresentGraph) {
        context.document->Files().ReadPlace(place);
      } else {
        OpenInWindow(place, context.workspace);
      }
      return;
    } catch (const Error& error) {
      dialog.Refuse(ToQt(error.what()));
    }
  }
}

}  // namespace tarnwick
