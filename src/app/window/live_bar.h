// The bar over a graph whose data come by themselves: how they come, and start, pause and stop. Shown while a DataSet has such a
// source. Follows its document; knows no stream.
#pragma once

#include "desk/widgets/note_bar.h"

class QToolButton;

namespace tarnwick {

class Document;
class Prompt;
class TextLines;

class LiveBar final : public NoteBar {
  Q_OBJECT

 public:
  /// `document` and `prompt` outlive the bar.
  LiveBar(Document& document, Prompt& prompt, QWidget* parent);

 private:
  void Follow();
  void Start();

  Document& document_;
  Prompt& prompt_;
  TextLines* text_;
  QToolButton* start_;
  QToolButton* pause_;
  QToolButton* stop_;
};

}  // namespace tarnwick
