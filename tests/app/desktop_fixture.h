// The whole desktop as a user has it, with a script in place of message boxes and file dialogs and settings of its own.
#pragma once

#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QCoreApplication>
#include <QImage>
#include <QMenu>
#include <QString>

#include <gtest/gtest.h>

#include "app/canvas/graph_canvas.h"
#include "app/window/graph_window.h"
#include "app/window/main_form.h"
#include "desk/prompts/file_chooser.h"
#include "support/scripted_prompt.h"
#include "support/temporary_folder.h"

namespace tarnwick::testing {

/// Answers with the names it was given, in turn.
class ScriptedChooser final : public FileChooser {
 public:
  std::vector<std::filesystem::path> FilesToOpen(const std::filesystem::path&) override;
  std::optional<FolderChoice> FolderToOpen(const std::filesystem::path&) override {
    return folder_to_open;
  }
  std::optional<std::filesystem::path> FileToSave(const SaveProposal& proposal) override;
  std::optional<std::filesystem::path> FileToPrint(const SaveProposal& proposal) override {
    return FileToSave(proposal);
  }
  std::optional<std::filesystem::path> FunctionToLoad(
      const std::filesystem::path& folder) override {
    proposed.folder = folder;
    return to_open.empty() ? std::nullopt : std::optional(std::exchange(to_open, {}).front());
  }
  std::optional<std::filesystem::path> FunctionToSave(
      const std::filesystem::path& proposal) override {
    return FileToSave({proposal.parent_path(), proposal.filename(), {}, {}});
  }
  std::optional<std::filesystem::path> TableToSave(const std::filesystem::path& proposal) override {
    return FunctionToSave(proposal);
  }

  std::deque<std::filesystem::path> to_open;
  std::deque<std::filesystem::path> to_save;
  std::optional<FolderChoice> folder_to_open;
  SaveProposal proposed;
};

/// Plays a script for questions and collects what is told.
class CollectingPrompt final : public Prompt {
 public:
  Answer Ask(const Question& question) override {
    QCoreApplication::processEvents();  // as a box does
    return script.Ask(question);
  }
  void Tell(std::string_view text) override { told.emplace_back(text); }

  ScriptedPrompt script;
  std::vector<std::string> told;
};

class DesktopTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;
  /// Where the program under test finds what belongs to it.
  virtual ProgramPaths Paths();
  /// What its window is made from.
  virtual std::vector<Feature> UsedFeatures();

  static std::filesystem::path Example(const char* name);
  /// Shows the window with these files on its command line.
  void Start(const std::vector<std::filesystem::path>& files);
  void Run(const char* command);
  /// A menu as it is once it was opened.
  QMenu& Opened(Menu menu);
  Document& ActiveDocument();
  GraphCanvas& ActiveCanvas();
  QString StatusText(const char* label);
  /// Gives a control of the window the keyboard's focus, as a click does.
  void TakeFocus(QWidget& control);
  /// The next question and its answer.
  void Expect(const std::string& text, Answer answer) { prompt_->script.Expect(text, answer); }
  /// What was told since the last call; telling what no test takes is a failure.
  std::vector<std::string> TakeTold() { return std::exchange(prompt_->told, {}); }
  /// Moves the mouse to a place of the active canvas.
  void MoveMouse(QPointF place, Qt::MouseButtons held = Qt::NoButton);
  /// Turns the wheel over a place of the active canvas.
  void Wheel(QPointF place, int notches, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// Drops files on a widget as a file manager does.
  void Drop(QWidget& target, const std::vector<std::filesystem::path>& files);

  TemporaryFolder folder_;
  CollectingPrompt* prompt_ = nullptr;
  ScriptedChooser* chooser_ = nullptr;
  std::unique_ptr<T_MainForm> form_;
};

/// Pixels of a picture that are nearly of this colour.
int PixelsOf(const QImage& picture, const QColor& color);

}  // namespace tarnwick::testing
