#include "app/window/graph_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QVBoxLayout>

#include "app/canvas/graph_canvas.h"
#include "app/modes/rest_mode.h"
#include "app/window/live_bar.h"
#include "app/window/told_bar.h"
#include "desk/commands/workspace.h"
#include "desk/document/dropped_files.h"
#include "desk/document/view_thinning.h"
#include "desk/widgets/ink_icon.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

/// What is asked before the window closes, and why when no change explains it; `saved`: something was saved, but not all.
Question SaveQuestion(const Document& document, bool saved) {
  std::string text = "Save changes to " + document.Name() + " ?";
  if (!document.History().Changed()) {
    text += "\n\n" + document.Files().LossUnchanged();
    if (!document.Files().GraphFileChanged()) text += " A graph file (.tgr) keeps them.";
  } else if (saved) {
    text += "\n\nWhat was saved does not keep the whole graph. A graph file (.tgr) does.";
  }
  return {text, {Answer::Yes, Answer::No, Answer::Cancel}};
}

}  // namespace

TGraphWindow::TGraphWindow(std::unique_ptr<Document> document, const std::vector<BarMaker>& bars,
                           Workspace& workspace, Prompt& prompt, QWidget* parent)
    : QMdiSubWindow(parent),
      document_(std::move(document)),
      workspace_(workspace),
      prompt_(prompt),
      canvas_(new GraphCanvas(*document_, prompt, MakeMode<RestMode>, this)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setObjectName(ToQt(document_->Name()));
  setWindowIcon(InkIcon("tarnwick"));
  setAcceptDrops(true);
  auto* const content = new QWidget(this);
  auto* const column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* const told = new ToldBar(*document_, prompt, content);
  connect(told, &ToldBar::sourceWanted, this, &TGraphWindow::sourceWanted);
  connect(told, &ToldBar::tableWanted, this, &TGraphWindow::tableWanted);
  column->addWidget(told);
  column->addWidget(new LiveBar(*document_, prompt, content));
  for (const BarMaker make : bars) column->addWidget(make(*document_, prompt, content));
  column->addWidget(canvas_, 1);
  new ViewThinning(*document_, content);
  content->setFocusProxy(canvas_);
  setWidget(content);
  // The frame's own menu brings Ctrl+W along, which belongs to a command.
  if (QMenu* menu = systemMenu()) {
    for (QAction* action : menu->actions()) action->setShortcut({});
  }
  const auto show_caption = [this] { setWindowTitle(ToQt(document_->Files().Caption())); };
  show_caption();
  connect(document_.get(), &Document::captionChanged, this, show_caption);
}

TGraphWindow::~TGraphWindow() {
  // Canvas and bar look at the document until their end.
  delete widget();
}

bool TGraphWindow::MayClose() {
  for (bool saved = false; document_->Files().ClosingLoses(); saved = true) {
    if (isMinimized()) showNormal();
    raise();
    setFocus();
    switch (prompt_.Ask(SaveQuestion(*document_, saved))) {
      case Answer::Yes:
        if (!workspace_.Save(*document_)) return false;
        break;
      case Answer::No:
        return true;
      default:
        return false;
    }
  }
  return true;
}

void TGraphWindow::closeEvent(QCloseEvent* event) {
  if (!MayClose()) {
    event->ignore();
    emit closingRefused();
    return;
  }
  emit closing(this);
  QMdiSubWindow::closeEvent(event);
}

void TGraphWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!DroppedFiles(*event->mimeData()).empty()) event->acceptProposedAction();
}

void TGraphWindow::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  for (const auto& path : DroppedFiles(*event->mimeData())) {
    workspace_.LoadInto(*document_, path);
  }
}

}  // namespace tarnwick
