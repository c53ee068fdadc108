// The bar over a graph that tells what was decided or left out in reading its data, until it is closed, and offers what can
// be done about it. Follows its document; knows no file.
#pragma once

#include <filesystem>

#include "desk/widgets/note_bar.h"

class QPushButton;

namespace tarnwick {

class Document;
class Prompt;
class TextLines;

class ToldBar final : public NoteBar {
  Q_OBJECT

 public:
  /// `document` and `prompt` outlive the bar.
  ToldBar(Document& document, Prompt& prompt, QWidget* parent);

 signals:
  /// The user wants to see and change how the data are read.
  void sourceWanted();
  /// The user wants to see the other table of this file, which is read with so many header lines.
  void tableWanted(const std::filesystem::path& file, int headers);

 private:
  void Follow();
  void ReadOtherTable();
  void LoadAllRows();
  void LeaveErrorsOut();
  void DrawErrors();

  Document& document_;
  Prompt& prompt_;
  TextLines* text_;
  QPushButton* guessed_;
  QPushButton* other_table_;
  QPushButton* all_rows_;
  QPushButton* no_errors_;
  QPushButton* draw_errors_;
};

}  // namespace tarnwick
