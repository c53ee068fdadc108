// The window of help: contents, index and search beside the page they lead to. Knows pages by the ids in them; knows
// nothing of the program.
#pragma once

#include <QHelpEngine>
#include <QMainWindow>
#include <QTemporaryDir>
#include <filesystem>

class QTabWidget;

namespace tarnwick {

class HelpBrowser;

class HelpWindow final : public QMainWindow {
  Q_OBJECT

 public:
  /// Shows the gathered pages of `file`. Throws Error when it is missing or holds none.
  HelpWindow(const std::filesystem::path& file, QWidget* parent);

  /// The place in a page that has the first of these ids that any page has; else the first page.
  void ShowTopic(const QStringList& ids);
  void ShowIndex();

 private:
  QWidget* BuildIndex();
  QWidget* BuildSearch();
  void BuildTools();
  /// For words that the index does not have.
  void LookThroughPages(const QString& words);
  void Show(const QUrl& page);

  QTemporaryDir
      folder_;  // of what the engine notes down: its collection, and the words to search for
  QHelpEngine engine_;
  HelpBrowser* page_;
  QTabWidget* ways_;
  QWidget* index_ = nullptr;
  QWidget* search_ = nullptr;
};

}  // namespace tarnwick
