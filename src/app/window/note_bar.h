// A bar over a graph, in a colour of its own. Knows how such a bar looks, not what it says.
#pragma once

#include <QFrame>

namespace tarnwick {

class NoteBar : public QFrame {
  Q_OBJECT

 public:
  using QFrame::QFrame;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tarnwick
