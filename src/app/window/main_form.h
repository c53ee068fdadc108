// The main window: assembles features, workspace, status bar and start page, and is the workspace that commands see. Knows
// windows and files; what commands do stands in the rows of their features, what documents do in Document.
#pragma once

#include <QMainWindow>
#include <functional>
#include <memory>

#include "app/window/command_line.h"
#include "app/window/recent_files.h"
#include "app/window/undo_keys.h"
#include "app/window/window_session.h"
#include "base/prompt.h"
#include "desk/commands/kept_state.h"
#include "desk/commands/workspace.h"
#include "desk/feature/feature.h"
#include "desk/prompts/file_chooser.h"
#include "desk/settings/dialog_sizes.h"
#include "desk/settings/program_paths.h"
#include "desk/settings/settings.h"
#include "desk/work/long_work.h"

class QMdiArea;
class QScrollArea;
class QStackedWidget;

namespace tarnwick {

class CommandActions;
class ElidedLabel;
class KeptArrangement;
class PanelDocks;
class RecentPictures;
class RecoveryKeeper;
class StartPage;
class TGraphWindow;
struct LeftGraph;

/// What the main window asks, chooses and works with: dialogs on the desktop, scripts in tests.
struct ShellParts {
  std::unique_ptr<Prompt> prompt;
  std::unique_ptr<FileChooser> chooser;
  std::unique_ptr<LongWork> work;
  std::unique_ptr<QSettings> settings;
  ProgramPaths paths;
  std::vector<Feature> features = {};
};

class T_MainForm final : public QMainWindow, private Workspace {
  Q_OBJECT

 public:
  /// Parts left out are the desktop's own.
  explicit T_MainForm(ShellParts parts = {});
  ~T_MainForm() override;

  /// The words of a joined command line, as ProcessWords.
  void ProcessCommandLine(const std::string& joined);
  /// Opens what the words name. Options take effect at the first showing, so only those that come before it do.
  void ProcessWords(const std::vector<std::string>& words);
  /// The same for the words of another start, once the program is at rest.
  void TakeWords(const std::vector<std::string>& words);
  /// Comes to the front, by the token of the start that asked for it, if it has one.
  void BringToFront(const QByteArray& activation_token);
  /// True once a start found nothing it could show: its only file could not be read.
  bool StartFailed() const { return start_failed_; }
  TGraphWindow* ActiveGraphWindow() const;
  std::vector<TGraphWindow*> GraphWindows() const;
  CommandActions& Actions() { return *actions_; }

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  /// Never brings another graph to the front; what had the focus and was hidden gives it to the graph worked on.
  bool focusNextPrevChild(bool next) override;

 private:
  // Workspace
  void NewGraph() override;
  bool OpenFile(const std::filesystem::path& path) override { return OpenFiles({path}); }
  bool OpenFiles(const std::vector<std::filesystem::path>& paths) override;
  Opening TryToOpen(const std::filesystem::path& path, const ImportOptions& reading) override;
  void SeeTogether(const std::function<void()>& opening) override;
  bool LoadInto(Document& document, const std::filesystem::path& path) override;
  bool Save(Document& document) override;
  bool SaveAs(Document& document) override;
  std::vector<Document*> Documents() const override;
  bool Close(Document& document) override;
  void Arrange(WindowArrangement arrangement) override;
  void ExitProgram() override;
  void ReopenSession() override;
  int WindowsToReopen() const override;
  void SetFrames(WindowFrames frames) override;
  WindowFrames GetFrames() const override;
  void SetButtonCaptions(ButtonCaptions captions) override;
  ButtonCaptions GetButtonCaptions() const override;

  bool Open(const std::filesystem::path& file, std::vector<std::string>& troubles);
  bool Open(FromClipboard from, std::vector<std::string>& troubles);
  void ApplyCommandOptions();
  void SeeAll(const std::vector<TGraphWindow*>& opened);
  void ProcessWaitingWords();
  void BuildCentre();
  void BuildStatusBar();
  void BuildCommands();
  void BuildPanels();
  CommandContext Context();
  std::vector<MenuItem> RecentItems(const QFontMetrics& metrics);
  std::vector<MenuItem> WindowItems(const QFontMetrics& metrics);
  /// A window for these files; null, with the reason told, when they cannot be read.
  TGraphWindow* OpenGraphWindow(const std::filesystem::path& file,
                                const ImportOptions* reading = nullptr);
  /// The table of a text file that is read with so many header lines.
  void OpenOtherTable(const std::filesystem::path& file, int headers);
  TGraphWindow* ShowGraphWindow(std::unique_ptr<Document> document);
  void KeepCopies();
  void OfferLeftGraphs();
  void BeginSession();
  /// In the status bar: what went wrong beside the work, and stops nobody. The middle of a long text stands in the tool tip.
  void TellAside(const QString& text);
  std::vector<SessionWindow> Session() const;
  void KeepSession();
  void KeepPicture(const Document& document);
  void ShowStartPage();
  void OpenLeftGraph(const LeftGraph& left);
  std::string LowestFreeName() const;
  TGraphWindow* WindowOf(const Document& document) const;
  bool IsFreeName(const std::string& name) const;
  bool TakeFile(const TakenFile& kind, const std::filesystem::path& path);
  bool OpenOrNote(const std::filesystem::path& path, std::vector<std::string>& troubles);
  void ShowPopup(TGraphWindow& window, QPoint place);
  void updateMenu();
  void refreshMenu(PanelChange change);
  void ShowNote(const TGraphWindow* active);
  void closingGraphWindow(TGraphWindow* window);

  ShellParts parts_;
  Settings settings_;
  DialogSizes dialog_sizes_{settings_};
  UndoKeys undo_keys_;
  RecentFiles recent_;
  KeptState kept_;
  CommandActions* actions_ = nullptr;
  QStackedWidget* centre_ = nullptr;
  QScrollArea* start_scroll_ = nullptr;
  StartPage* start_page_ = nullptr;
  QMdiArea* area_ = nullptr;
  KeptArrangement* arrangement_ = nullptr;
  ElidedLabel* read_out_ = nullptr;
  ElidedLabel* note_ = nullptr;
  std::unique_ptr<PanelDocks> panels_;
  std::unique_ptr<RecentPictures> pictures_;
  std::unique_ptr<RecoveryKeeper> keeper_;  // null: no copies are kept
  std::vector<std::string> pending_options_;
  std::vector<std::vector<std::string>> waiting_words_;
  const std::vector<SessionWindow> last_session_;
  std::function<void()> tell_when_shown_;  // what of the start could not be opened
  bool shown_ = false;
  bool see_all_when_shown_ = false;
  bool start_failed_ = false;
  bool closing_allowed_ = true;
  bool closing_all_ = false;
  bool had_windows_ = false;  // else the session before is still the last one
};

}  // namespace tarnwick
