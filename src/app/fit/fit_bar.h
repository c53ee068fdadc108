// The bar over a graph that tells what it shows of a fit of the current DataSet that holds no more, until it is closed or made
// anew. Follows its document; runs the fit by fit_work.
#pragma once

#include <QString>

#include "desk/widgets/note_bar.h"

class QPushButton;

namespace tarnwick {

class Document;
class Prompt;
class TextLines;

class FitBar final : public NoteBar {
  Q_OBJECT

 public:
  /// `document` and `prompt` outlive the bar.
  FitBar(Document& document, Prompt& prompt, QWidget* parent);

 private:
  void Follow();
  void Again();

  Document& document_;
  Prompt& prompt_;
  TextLines* text_;
  QPushButton* again_;
  QString closed_;  // what was read and closed
};

}  // namespace tarnwick
