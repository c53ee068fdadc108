// What the main window has from the session before and leaves for the next: its windows, and the pictures of recent graphs.
#include <QMdiArea>
#include <QStatusBar>
#include <algorithm>
#include <system_error>

#include "app/window/graph_window.h"
#include "app/window/main_form.h"
#include "app/window/recent_pictures.h"
#include "app/window/start_page.h"
#include "data/import/import_file.h"
#include "desk/prompts/file_trouble.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kBesideMessage = 40;  // of the status bar, pixels

bool IsShown(const std::vector<Document*>& documents, const SessionWindow& kept) {
  return std::ranges::any_of(
      documents, [&](const Document* document) { return SessionFileOf(*document) == kept.file; });
}

bool IsThere(const std::filesystem::path& file) {
  std::error_code unreadable;  // means not there
  return std::filesystem::exists(file, unreadable);
}

}  // namespace

void T_MainForm::BeginSession() {
  OfferLeftGraphs();  // before anything is opened again: what was changed is opened as it was
  if (!parts_.paths.trouble.empty()) TellAside(ToQt(parts_.paths.trouble));
  if (const QString trouble = settings_.Trouble(); !trouble.isEmpty()) TellAside(trouble);
  if (settings_.Read(kReopenAtStart)) ReopenSession();
  KeepSession();  // what the command line opened
}

void T_MainForm::TellAside(const QString& text) {
  const int room = statusBar()->width() - kBesideMessage;
  statusBar()->showMessage(fontMetrics().elidedText(text, Qt::ElideMiddle, room));
  statusBar()->setToolTip(text);
}

int T_MainForm::WindowsToReopen() const {
  if (last_session_.empty()) return 0;
  const std::vector<Document*> documents = Documents();
  return static_cast<int>(std::ranges::count_if(
      last_session_, [&](const SessionWindow& kept) { return !IsShown(documents, kept); }));
}

void T_MainForm::ReopenSession() {
  // What was opened meanwhile stays in front.
  TGraphWindow* front = ActiveGraphWindow();
  const bool none_open = front == nullptr;
  std::vector<std::string> troubles;
  for (const SessionWindow& kept : last_session_) {
    if (IsShown(Documents(), kept)) continue;
    const Opening opening =
        IsThere(kept.file) ? TryToOpen(kept.file, {}) : Opening{nullptr, MissingText(kept.file)};
    if (!opening.trouble.empty()) {
      troubles.push_back(opening.trouble);
    } else if (opening.document == nullptr) {
      break;  // cancelled
    } else {
      TGraphWindow* const window = WindowOf(*opening.document);
      PlaceAsKept(*window, kept);
      if (none_open && kept.active) front = window;
    }
  }
  if (front != nullptr) area_->setActiveSubWindow(front);
  TellTroubles(troubles, *parts_.prompt);
}

std::vector<SessionWindow> T_MainForm::Session() const {
  std::vector<SessionWindow> session;
  for (const TGraphWindow* window : GraphWindows())
    session.push_back(SessionWindowOf(*window, ActiveGraphWindow()));
  return session;
}

void T_MainForm::KeepSession() {
  // Until the first showing the session before is the last one; while all close, theirs is kept when all have.
  if (shown_ && had_windows_ && !closing_all_) tarnwick::KeepSession(Session(), settings_);
}

/// As the user saw it last, unless that is in no file.
void T_MainForm::KeepPicture(const Document& document) {
  const std::filesystem::path file = SessionFileOf(document);
  const bool discarded = !document.Files().GraphFileName().empty() && document.History().Changed();
  const bool recent =
      std::ranges::find(recent_.Entries(), PathText(file)) != recent_.Entries().end();
  if (recent && !discarded) pictures_->Make(file, document.WholeGraph().State());
}

void T_MainForm::ShowStartPage() {
  StartPage::Files recent;
  for (const QString& file : recent_.Entries()) {
    if (!file.isEmpty()) recent.push_back(ToPath(file));
  }
  start_page_->ShowFiles(recent, parts_.paths.examples);
  start_page_->OfferSession(WindowsToReopen());
}

}  // namespace tarnwick
