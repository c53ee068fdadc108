#include "app/window/main_form.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QLayout>
#include <QMdiArea>
#include <QMimeData>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <algorithm>
#include <map>
#include <system_error>
#include <utility>
#include <variant>

#include "app/canvas/graph_canvas.h"
#include "app/window/arrange_windows.h"
#include "app/window/features.h"
#include "app/window/focus_walk.h"
#include "app/window/graph_window.h"
#include "app/window/recent_pictures.h"
#include "app/window/start_page.h"
#include "app/window/window_placement.h"
#include "app/window/window_settings.h"
#include "base/error.h"
#include "base/word_list.h"
#include "data/columns/import_options.h"
#include "desk/commands/command_actions.h"
#include "desk/document/document.h"
#include "desk/document/dropped_files.h"
#include "desk/document/graph_mime_data.h"
#include "desk/document/paste.h"
#include "desk/document/refresh_documents.h"
#include "desk/panels/panel_docks.h"
#include "desk/prompts/file_trouble.h"
#include "desk/prompts/message_box_prompt.h"
#include "desk/recovery/recovery_keeper.h"
#include "desk/widgets/elided_label.h"
#include "desk/widgets/subdued_text.h"
#include "desk/widgets/text.h"
#include "desk/work/threaded_work.h"
#include "graph/files/file_kinds.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostNamed = 3;  // of words that name nothing
constexpr int kWaitForRest = 100;      // ms

ShellParts Complete(ShellParts parts, QWidget* window) {
  if (!parts.prompt) parts.prompt = std::make_unique<MessageBoxPrompt>(window);
  if (!parts.chooser) parts.chooser = std::make_unique<DialogFileChooser>(window);
  if (!parts.work) parts.work = std::make_unique<ThreadedWork>(window);
  if (!parts.settings) parts.settings = std::make_unique<QSettings>("Software", "Tarnwick");
  if (parts.features.empty()) parts.features = Features();
  return parts;
}

}  // namespace

T_MainForm::T_MainForm(ShellParts parts)
    : parts_(Complete(std::move(parts), this)),
      settings_(std::move(parts_.settings)),
      recent_(settings_),
      pictures_(std::make_unique<RecentPictures>(parts_.paths.pictures)),
      last_session_(KeptSession(settings_)) {
  setObjectName("T_MainForm");
  setWindowTitle("Tarnwick: Control Panel");
  setAcceptDrops(true);
  BuildCentre();
  BuildStatusBar();
  BuildCommands();
  BuildPanels();
  for (const Feature& feature : parts_.features) {
    if (feature.begin != nullptr) feature.begin(*this, [this] { return Context(); });
  }
  KeepCopies();
  RestoreWindow(*this, settings_);
  SetFrames(settings_.Read(kGraphsInTabs) ? WindowFrames::Tabs : WindowFrames::Frames);
  SetButtonCaptions(settings_.Read(kButtonCaptions) ? ButtonCaptions::Shown
                                                    : ButtonCaptions::Hidden);
  updateMenu();
}

T_MainForm::~T_MainForm() {
  if (shown_) panels_->Store(settings_);
  StoreWindow(*this, settings_);
  recent_.Write();
  // Windows tell this window of their end, so they go while it is whole.
  disconnect(area_, nullptr, this, nullptr);
  panels_->disconnect();
  delete area_;
  panels_.reset();
}

void T_MainForm::BuildCommands() {
  actions_ = new CommandActions(*this, CommandsOf(parts_.features), [this] { return Context(); });
  actions_->AddList({Menu::File, [this](const CommandContext&, const QFontMetrics& metrics) {
                       return RecentItems(metrics);
                     }});
  actions_->AddList({Menu::Window, [this](const CommandContext&, const QFontMetrics& metrics) {
                       return WindowItems(metrics);
                     }});
  for (const Feature& feature : parts_.features) {
    for (const MenuList& list : feature.lists) actions_->AddList(list);
  }
}

void T_MainForm::BuildPanels() {
  panels_ = std::make_unique<PanelDocks>(*this, PanelsOf(parts_.features),
                                         PanelParts{*actions_, settings_, *this});
  connect(panels_.get(), &PanelDocks::shownChanged, actions_, &CommandActions::Update);
}

CommandContext T_MainForm::Context() {
  const TGraphWindow* active = ActiveGraphWindow();
  return {.workspace = *this,
          .prompt = *parts_.prompt,
          .chooser = *parts_.chooser,
          .panels = *panels_,
          .settings = settings_,
          .kept = kept_,
          .paths = parts_.paths,
          .dialog_parent = this,
          .document = active ? &active->GetDocument() : nullptr,
          .modes = active ? &active->Canvas() : nullptr};
}

void T_MainForm::BuildCentre() {
  start_page_ = new StartPage(*pictures_, this);
  connect(start_page_, &StartPage::newWanted, this, [this] { NewGraph(); });
  connect(start_page_, &StartPage::openWanted, this,
          [this] { actions_->ActionOf("FileOpen1")->trigger(); });
  connect(start_page_, &StartPage::sessionWanted, this, &T_MainForm::ReopenSession);
  connect(start_page_, &StartPage::fileChosen, this,
          [this](const QString& path) { OpenFile(ToPath(path)); });
  // Hidden behind graphs it must not keep the window wide.
  start_scroll_ = new QScrollArea(this);
  start_scroll_->setFrameShape(QFrame::NoFrame);
  start_scroll_->setWidgetResizable(true);
  start_scroll_->setFocusPolicy(Qt::NoFocus);
  start_scroll_->setWidget(start_page_);

  area_ = new QMdiArea(this);
  arrangement_ = new KeptArrangement(*area_);
  area_->setBackground(palette().brush(QPalette::Dark));
  // Behind a closed window lies the one worked on before it.
  area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
  area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  connect(area_, &QMdiArea::subWindowActivated, this, &T_MainForm::updateMenu);

  centre_ = new QStackedWidget(this);
  centre_->addWidget(start_scroll_);
  centre_->addWidget(area_);
  setCentralWidget(centre_);
}

void T_MainForm::BuildStatusBar() {
  read_out_ = new ElidedLabel(Qt::AlignLeft, this);
  note_ = new ElidedLabel(Qt::AlignRight, this);
  read_out_->setObjectName("ReadOut");
  note_->setObjectName("Note");
  read_out_->setContentsMargins(6, 0, 0, 0);
  note_->setContentsMargins(16, 0, 6, 0);
  // The read-out gets the room it needs, the note what is left.
  read_out_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
  statusBar()->addWidget(read_out_);
  statusBar()->addPermanentWidget(note_, 1);
  // A hint is shown in the room beside it, where there would be none.
  connect(statusBar(), &QStatusBar::messageChanged, note_,
          [this](const QString& hint) { note_->setVisible(hint.isEmpty()); });
}

TGraphWindow* T_MainForm::ActiveGraphWindow() const {
  // The current one stays so while another program has the focus.
  return qobject_cast<TGraphWindow*>(area_->currentSubWindow());
}

std::vector<TGraphWindow*> T_MainForm::GraphWindows() const {
  std::vector<TGraphWindow*> windows;
  for (QMdiSubWindow* window : area_->subWindowList()) {
    if (auto* graph_window = qobject_cast<TGraphWindow*>(window)) windows.push_back(graph_window);
  }
  return windows;
}

TGraphWindow* T_MainForm::WindowOf(const Document& document) const {
  for (TGraphWindow* window : GraphWindows()) {
    if (&window->GetDocument() == &document) return window;
  }
  return nullptr;
}

bool T_MainForm::IsFreeName(const std::string& name) const {
  return std::ranges::none_of(Documents(),
                              [&](const Document* document) { return document->Name() == name; });
}

std::string T_MainForm::LowestFreeName() const {
  for (int number = 1;; ++number) {
    std::string name = "Graph_" + std::to_string(number);
    if (IsFreeName(name)) return name;
  }
}

TGraphWindow* T_MainForm::OpenGraphWindow(const std::filesystem::path& file,
                                          const ImportOptions* reading) {
  const TGraphWindow* active = ActiveGraphWindow();
  const std::filesystem::path folder = active ? active->GetDocument().Files().DataFolder() : "";
  const FileKind& kind = KindToRead(file);
  StartFiles files;
  files.default_template = TemplateOfNewGraphs(parts_.paths);
  files.reading = reading;
  if (kind.holds == FileHolds::Graph || kind.holds == FileHolds::Template) {
    files.graph_or_template = file;
  } else {
    (kind.holds == FileHolds::DataSet ? files.data_set : files.data) = file;
  }
  auto document = std::make_unique<Document>(LowestFreeName(), *parts_.work, *parts_.prompt);
  if (!document->Files().Begin(files)) return nullptr;
  if (file.empty()) {
    if (!folder.empty()) document->Files().SetDataFolder(folder);
  } else if (file != files.default_template && kind.remembered != Remembered::Never) {
    recent_.Add(file);
  }
  return ShowGraphWindow(std::move(document));
}

void T_MainForm::OpenOtherTable(const std::filesystem::path& file, int headers) {
  ImportOptions reading;
  reading.headers = headers;
  try {
    OpenGraphWindow(file, &reading);
  } catch (const Error& error) {
    parts_.prompt->Tell(error.what());
  }
}

TGraphWindow* T_MainForm::ShowGraphWindow(std::unique_ptr<Document> document) {
  const TGraphWindow* active = ActiveGraphWindow();
  const bool fills = !active || active->isMaximized();
  auto* window =
      new TGraphWindow(std::move(document), BarsOf(parts_.features), *this, *parts_.prompt);
  connect(window, &TGraphWindow::closing, this, &T_MainForm::closingGraphWindow);
  connect(window, &TGraphWindow::closingRefused, this, [this] { closing_allowed_ = false; });
  using What = PanelChange::What;
  const auto view_changed = [this] { refreshMenu({What::View}); };
  connect(&window->GetDocument(), &Document::graphChanged, this, [this](GraphChange change) {
    refreshMenu({What::Graph, change});
  });
  connect(&window->GetDocument(), &Document::stateChanged, this,
          [this] { refreshMenu({What::State}); });
  connect(&window->Canvas(), &GraphCanvas::readOutChanged, this,
          [this](const QString& text) { read_out_->ShowText(text); });
  connect(&window->Canvas(), &GraphCanvas::mouseReleased, this, view_changed);
  connect(&window->Canvas(), &GraphCanvas::modeChanged, this, view_changed);
  connect(&window->Canvas(), &GraphCanvas::editWanted, this, [this] {
    if (QAction* edit = actions_->ActionOf("EditGraph1")) edit->trigger();
  });
  connect(window, &TGraphWindow::sourceWanted, this, [this, window] {
    if (QAction* edit = actions_->ActionOf("EditData1")) edit->trigger();
    emit window->GetDocument().sourceWanted();
  });
  connect(window, &TGraphWindow::tableWanted, this, &T_MainForm::OpenOtherTable);
  connect(&window->Canvas(), &GraphCanvas::customContextMenuRequested, this,
          [this, window](QPoint place) { ShowPopup(*window, place); });
  if (keeper_) keeper_->Follow(window->GetDocument());
  area_->addSubWindow(window);
  centre_->setCurrentWidget(area_);
  // Before the first showing the workspace has no size yet that shares could be taken of.
  if (!shown_) layout()->activate();
  ShowPlaced(*window, fills || GetFrames() == WindowFrames::Tabs ? Otherwise::FillWorkspace
                                                                 : Otherwise::OwnPlace);
  window->Canvas().setFocus();
  had_windows_ = true;
  KeepSession();
  updateMenu();
  return window;
}

void T_MainForm::updateMenu() {
  const TGraphWindow* active = ActiveGraphWindow();
  if (GraphWindows().empty() && centre_->currentWidget() != start_scroll_) {
    centre_->setCurrentWidget(start_scroll_);
  }
  if (centre_->currentWidget() == start_scroll_) ShowStartPage();
  read_out_->ShowText(active ? active->Canvas().ReadOutAtRest() : QString());
  refreshMenu({PanelChange::What::ActiveDocument});
}

void T_MainForm::refreshMenu(PanelChange change) {
  const TGraphWindow* active = ActiveGraphWindow();
  ShowNote(active);
  panels_->Follow(active ? &active->GetDocument() : nullptr, change);
  actions_->Update();
}

/// A remark on the last loading, and what the mouse does.
void T_MainForm::ShowNote(const TGraphWindow* active) {
  QString note;
  if (active) {
    const GraphCanvas& canvas = active->Canvas();
    const QString hint = ToQt(canvas.Mode().Hint());
    note = ToQt(active->GetDocument().Files().Note());
    const bool both = canvas.AtRest() && !note.isEmpty();
    note = both ? note + QStringLiteral("  \u2022  ") + hint : hint;
  }
  note_->ShowText(note);
}

void T_MainForm::closingGraphWindow(TGraphWindow* window) {
  const bool filled = window->isMaximized();
  KeepPicture(window->GetDocument());
  area_->removeSubWindow(window);
  window->deleteLater();
  // What lay behind it is seen as it was.
  if (TGraphWindow* next = ActiveGraphWindow(); next && filled) next->showMaximized();
  KeepSession();
  updateMenu();
}

void T_MainForm::ProcessCommandLine(const std::string& joined) {
  ProcessWords(SplitWords(joined));
}

void T_MainForm::ProcessWords(const std::vector<std::string>& words) {
  CommandLine line = ParseWords(words);
  bool failed = false;
  std::vector<std::string> troubles;
  SeeTogether([&] {
    for (const auto& opening : line.openings) {
      const bool opened =
          std::visit([&](const auto& what) { return Open(what, troubles); }, opening);
      failed = failed || !opened;
    }
  });
  if (!shown_) pending_options_ = std::move(line.options);
  start_failed_ = !shown_ && failed && GraphWindows().empty();
  std::ranges::reverse(troubles);  // as the words stand
  for (const std::string& word : line.no_files) troubles.push_back(NoFileText(word));
  std::size_t named = line.openings.size() + line.no_files.size();
  if (start_failed_) {  // there will be no status bar
    for (const std::string& word : line.unknown) troubles.push_back(MissingText(word));
    named += std::exchange(line.unknown, {}).size();
  }
  const auto tell = [this, troubles, named] { TellUnopened(troubles, named, *parts_.prompt); };
  if (shown_ || start_failed_) {
    tell();
  } else {
    tell_when_shown_ = tell;  // nobody knows what a box on an empty desktop belongs to
  }
  std::vector<std::string> quoted;
  for (const std::string& word : line.unknown) quoted.push_back('"' + word + '"');
  if (quoted.empty()) return;
  // Once the window stands: what it is shown in place of must be there.
  QMetaObject::invokeMethod(
      this,
      [this, text = tr("There is no file %1").arg(ToQt(Listed(quoted, kMostNamed)))] {
        statusBar()->showMessage(text);
      },
      Qt::QueuedConnection);
}

void T_MainForm::TakeWords(const std::vector<std::string>& words) {
  waiting_words_.push_back(words);
  ProcessWaitingWords();
}

void T_MainForm::ProcessWaitingWords() {
  // A window that opens in the middle of loading another, or behind a question, would get in the way of both.
  if (parts_.work->IsRunning() || QApplication::activeModalWidget() != nullptr) {
    QTimer::singleShot(kWaitForRest, this, &T_MainForm::ProcessWaitingWords);
    return;
  }
  for (const auto& words : std::exchange(waiting_words_, {})) ProcessWords(words);
}

bool T_MainForm::Open(const std::filesystem::path& file, std::vector<std::string>& troubles) {
  // Named from a folder that nobody may know later.
  std::error_code folder_is_gone;
  const std::filesystem::path whole = std::filesystem::absolute(file, folder_is_gone);
  return OpenOrNote(folder_is_gone ? file : whole, troubles);
}

bool T_MainForm::Open(FromClipboard, std::vector<std::string>& troubles) {
  const QMimeData* const held = QGuiApplication::clipboard()->mimeData();
  if (held == nullptr || !held->hasFormat(kGraphFormat)) return true;  // passed over
  try {
    TGraphWindow* const window = OpenGraphWindow({});
    return window != nullptr && Paste(window->GetDocument(), *held);
  } catch (const Error& error) {
    troubles.emplace_back(error.what());
    return false;
  }
}

void T_MainForm::ApplyCommandOptions() {
  if (std::exchange(see_all_when_shown_, false)) SeeAll(GraphWindows());
  for (const std::string& option : std::exchange(pending_options_, {})) {
    if (option == "maximize") showMaximized();
    if (option == "tile") Arrange(WindowArrangement::TileHorizontally);
    const std::vector<Document*> documents = Documents();
    if (option == "refresh" && !documents.empty()) RefreshDocuments(documents);
  }
  if (const auto tell = std::exchange(tell_when_shown_, {})) tell();
}

void T_MainForm::BringToFront(const QByteArray& activation_token) {
  if (!activation_token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", activation_token);
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

void T_MainForm::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (std::exchange(shown_, true)) return;
  panels_->Restore(settings_);
  layout()->activate();
  // Those that opened before had the panels' room, too.
  for (TGraphWindow* window : GraphWindows()) {
    if (!window->isMaximized()) ShowPlaced(*window, Otherwise::OwnPlace);
  }
  // Once the window stands: refreshing shows its progress.
  QMetaObject::invokeMethod(this, &T_MainForm::ApplyCommandOptions, Qt::QueuedConnection);
  QMetaObject::invokeMethod(this, &T_MainForm::BeginSession, Qt::QueuedConnection);
}

void T_MainForm::closeEvent(QCloseEvent* event) {
  closing_allowed_ = true;
  std::vector<TGraphWindow*> windows = GraphWindows();
  const std::vector<TGraphWindow*> order = windows;
  std::vector<SessionWindow> session = Session();
  // What asks comes first, changes before the rest: the others are still there when the program stays.
  std::stable_partition(windows.begin(), windows.end(), [](const TGraphWindow* window) {
    return window->GetDocument().Files().ClosingLoses();
  });
  std::stable_partition(windows.begin(), windows.end(), [](const TGraphWindow* window) {
    return window->GetDocument().History().Changed();
  });
  closing_all_ = true;
  std::map<const TGraphWindow*, std::filesystem::path> files;
  for (TGraphWindow* window : windows) {
    window->close();
    if (!closing_allowed_) break;
    files[window] = SessionFileOf(window->GetDocument());  // closing may have named it
  }
  closing_all_ = false;
  if (!closing_allowed_) {
    KeepSession();
    event->ignore();
    return;
  }
  for (std::size_t i = 0; i < order.size(); ++i) session[i].file = files[order[i]];
  if (had_windows_) tarnwick::KeepSession(session, settings_);
  event->accept();
}

void T_MainForm::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange) SubdueByTextColor();
  QMainWindow::changeEvent(event);
}

bool T_MainForm::focusNextPrevChild(bool next) {
  TGraphWindow* const active = ActiveGraphWindow();
  const QWidget* const from = focusWidget();
  const bool hidden = from && !from->isVisible();
  QWidget* const to =
      hidden && active
          ? &active->Canvas()
          : NextControl(*this, active, next ? WalkDirection::Forward : WalkDirection::Backward);
  if (to) to->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  return to != nullptr;
}

void T_MainForm::dragEnterEvent(QDragEnterEvent* event) {
  if (!DroppedFiles(*event->mimeData()).empty()) event->acceptProposedAction();
}

void T_MainForm::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  OpenFiles(DroppedFiles(*event->mimeData()));
}

}  // namespace tarnwick
