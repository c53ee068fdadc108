// A bar over a graph, in a colour of its own. Knows how such a bar looks, not what it says.
#pragma once

#include <QFrame>

class QLabel;
class QToolButton;

namespace tarnwick {

/// The picture that a note begins with.
QLabel* NoteIcon(QWidget* parent);
/// What closes a note, at its end.
QToolButton* CloseButton(QWidget* parent);

class NoteBar : public QFrame {
  Q_OBJECT

 public:
  using QFrame::QFrame;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tarnwick
