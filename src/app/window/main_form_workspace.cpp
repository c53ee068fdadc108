// The main window as the workspace of its commands, the menu entries that stand for files and windows, and what is kept of
// graphs for a program that is ended.
#include <QDateTime>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMenu>
#include <QPointer>
#include <QStatusBar>
#include <QToolBar>
#include <algorithm>

#include "app/canvas/graph_canvas.h"
#include "app/files/load_place.h"
#include "app/files/save_as.h"
#include "app/recovery/offer_left_graphs.h"
#include "app/window/arrange_windows.h"
#include "app/window/graph_popup.h"
#include "app/window/graph_window.h"
#include "app/window/main_form.h"
#include "app/window/window_placement.h"
#include "base/error.h"
#include "data/import/import_file.h"
#include "desk/commands/command_actions.h"
#include "desk/document/document.h"
#include "desk/prompts/file_trouble.h"
#include "desk/recovery/recovery_keeper.h"
#include "desk/widgets/numbered_caption.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostTiled = 12;  // smaller tiles show nothing

/// "Graph_1 DATA, since 14:03"
QString SinceWhen(const Document& document) {
  const auto since = std::chrono::duration_cast<std::chrono::milliseconds>(
      document.Files().SessionStart().time_since_epoch());
  return QObject::tr("%1, since %2")
      .arg(ToQt(document.DataName()),
           QDateTime::fromMSecsSinceEpoch(since.count()).toString("HH:mm"));
}

}  // namespace

void T_MainForm::NewGraph() {
  OpenGraphWindow({});
}

bool T_MainForm::OpenFiles(const std::vector<std::filesystem::path>& paths) {
  std::vector<std::string> troubles;
  bool all = true;
  SeeTogether([&] {
    for (const auto& path : paths) all = OpenOrNote(path, troubles) && all;
  });
  TellUnopened(troubles, paths.size(), *parts_.prompt);
  return all;
}

bool T_MainForm::OpenOrNote(const std::filesystem::path& path, std::vector<std::string>& troubles) {
  std::error_code ignored;  // what cannot be looked at is not found
  if (!std::filesystem::exists(path, ignored)) {
    troubles.push_back(MissingText(path));
    return false;
  }
  if (const TakenFile* kind = TakerOf(parts_.features, path)) return TakeFile(*kind, path);
  Opening opening = TryToOpen(path, {});
  if (!opening.trouble.empty()) troubles.push_back(std::move(opening.trouble));
  return opening.document != nullptr;
}

Opening T_MainForm::TryToOpen(const std::filesystem::path& path, const ImportOptions& reading) {
  try {
    TGraphWindow* const window = OpenGraphWindow(path, &reading);
    return {window ? &window->GetDocument() : nullptr};
  } catch (const Error& error) {
    return {nullptr, FileErrorText(path, error.what())};
  }
}

void T_MainForm::SeeTogether(const std::function<void()>& opening) {
  const std::vector<TGraphWindow*> before = GraphWindows();
  opening();
  std::vector<TGraphWindow*> opened = GraphWindows();
  std::erase_if(opened, [&](TGraphWindow* window) {
    return std::ranges::find(before, window) != before.end();
  });
  if (opened.size() < 2) return;
  if (!shown_) {
    see_all_when_shown_ = true;  // the workspace has its size then
  } else {
    SeeAll(opened);
  }
}

/// Windows that keep places of their own stay there unless one fills the workspace.
void T_MainForm::SeeAll(const std::vector<TGraphWindow*>& opened) {
  if (GetFrames() == WindowFrames::Tabs || std::ranges::none_of(opened, &QWidget::isMaximized))
    return;
  Arrange(opened.size() <= kMostTiled ? WindowArrangement::Grid : WindowArrangement::Cascade);
}

bool T_MainForm::LoadInto(Document& document, const std::filesystem::path& path) {
  if (TellIfMissing(path, *parts_.prompt)) return false;
  const LoadPlace place = ChooseLoadPlace(document, path, *parts_.prompt);
  if (place == LoadPlace::OwnWindow) return OpenFile(path);
  if (place == LoadPlace::Nowhere) return false;
  try {
    const TakenFile* kind = TakerOf(parts_.features, path);
    if (!kind) return document.Files().LoadDataFromFile(path);
    kind->take(document, path);
    return true;
  } catch (const Error& error) {
    TellFileError(path, error.what(), *parts_.prompt);
    return false;
  }
}

bool T_MainForm::TakeFile(const TakenFile& kind, const std::filesystem::path& path) {
  if (const TGraphWindow* active = ActiveGraphWindow()) {
    return LoadInto(active->GetDocument(), path);
  }
  parts_.prompt->Tell("\"" + path.filename().string() + "\" " + std::string(kind.without_document));
  return false;
}

bool T_MainForm::Save(Document& document) {
  const std::filesystem::path file = document.Files().GraphFileName();
  if (file.empty()) return SaveAs(document);
  if (document.Files().GraphFileChanged() && !MayReplaceChanged(file, *parts_.prompt)) return false;
  StorePlacement(*WindowOf(document));
  try {
    document.Files().SaveGraphFile(file);
    return true;
  } catch (const Error& error) {
    parts_.prompt->Tell(error.what());
    return false;
  }
}

bool T_MainForm::SaveAs(Document& document) {
  StorePlacement(*WindowOf(document));
  try {
    const SaveOutcome outcome =
        SaveDocumentAs(document, Documents(), *parts_.chooser, *parts_.prompt);
    if (!outcome.recent.empty()) recent_.Add(outcome.recent);
    if (!outcome.left_out.empty()) statusBar()->showMessage(ToQt(outcome.left_out));
    return outcome.saved;
  } catch (const Error& error) {
    parts_.prompt->Tell(error.what());
    return false;
  }
}

std::vector<Document*> T_MainForm::Documents() const {
  std::vector<Document*> documents;
  for (const TGraphWindow* window : GraphWindows()) documents.push_back(&window->GetDocument());
  return documents;
}

bool T_MainForm::Close(Document& document) {
  TGraphWindow* window = WindowOf(document);
  return window && window->close();
}

void T_MainForm::ShowPopup(TGraphWindow& window, QPoint place) {
  if (QGuiApplication::mouseButtons() & Qt::LeftButton) return;  // something is being dragged
  area_->setActiveSubWindow(&window);
  QMenu menu;
  FillGraphPopup(menu, Context(), *actions_);
  menu.exec(window.Canvas().mapToGlobal(place));
}

void T_MainForm::Arrange(WindowArrangement arrangement) {
  arrangement_->Arrange(arrangement);
}

void T_MainForm::ExitProgram() {
  close();
}

void T_MainForm::SetFrames(WindowFrames frames) {
  const bool tabs = frames == WindowFrames::Tabs;
  area_->setViewMode(tabs ? QMdiArea::TabbedView : QMdiArea::SubWindowView);
  area_->setDocumentMode(tabs);
  area_->setTabsClosable(true);
  area_->setTabsMovable(true);
}

WindowFrames T_MainForm::GetFrames() const {
  return area_->viewMode() == QMdiArea::TabbedView ? WindowFrames::Tabs : WindowFrames::Frames;
}

void T_MainForm::SetButtonCaptions(ButtonCaptions captions) {
  actions_->ToolBar().setToolButtonStyle(
      captions == ButtonCaptions::Shown ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly);
}

ButtonCaptions T_MainForm::GetButtonCaptions() const {
  const bool shown = actions_->ToolBar().toolButtonStyle() == Qt::ToolButtonTextUnderIcon;
  return shown ? ButtonCaptions::Shown : ButtonCaptions::Hidden;
}

std::vector<MenuItem> T_MainForm::RecentItems(const QFontMetrics& metrics) {
  std::vector<MenuItem> items;
  for (const QString& path : recent_.Entries()) {
    if (path.isEmpty()) continue;
    items.push_back({.caption = NumberedCaption(items.size() + 1, path, metrics),
                     .hint = path,
                     .run = [this, path](CommandContext&) { OpenFile(ToPath(path)); }});
  }
  return items;
}

std::vector<MenuItem> T_MainForm::WindowItems(const QFontMetrics& metrics) {
  std::vector<MenuItem> items;
  for (TGraphWindow* window : GraphWindows()) {
    const QString caption = ToQt(window->GetDocument().Files().Caption());
    items.push_back({.caption = NumberedCaption(items.size() + 1, caption, metrics),
                     .hint = SinceWhen(window->GetDocument()),
                     .checked = window == ActiveGraphWindow(),
                     .run = [this, shown = QPointer(window)](CommandContext&) {
                       if (shown) area_->setActiveSubWindow(shown);
                     }});
  }
  return items;
}

void T_MainForm::KeepCopies() {
  if (parts_.paths.recovery.empty()) return;
  keeper_ = std::make_unique<RecoveryKeeper>(parts_.paths.recovery);
  connect(keeper_.get(), &RecoveryKeeper::failed, this, [this](const QString& why) {
    TellAside(tr("Changes are not kept for a program that is ended: %1").arg(why));
  });
}

void T_MainForm::OfferLeftGraphs() {
  if (!keeper_) return;
  tarnwick::OfferLeftGraphs(parts_.paths.recovery, *parts_.prompt,
                            [this](const LeftGraph& left) { OpenLeftGraph(left); });
}

void T_MainForm::OpenLeftGraph(const LeftGraph& left) {
  const std::string name = IsFreeName(left.note.name) ? left.note.name : LowestFreeName();
  auto document = std::make_unique<Document>(name, *parts_.work, *parts_.prompt);
  document->Files().Recover(left.copy, left.note.graph_file, left.note.data_file);
  keeper_->TakeOver(ShowGraphWindow(std::move(document))->GetDocument(), left);
}

}  // namespace tarnwick
