#include "desk/sources/lines_edit.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

namespace tarnwick {
namespace {

TEST(LinesEdit, TabReachesTheWayThatLinesComeByBeforeTheAddress) {
  QWidget window;
  QVBoxLayout column(&window);
  auto* const before = new QLineEdit(&window);
  auto* const edit = new LinesEdit(&window);
  column.addWidget(before);
  column.addWidget(edit);
  window.show();
  before->setFocus();
  for (const char* const name : {"LinesWay", "LinesAddress", "LinesX"}) {
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget()->objectName(), name);
  }
}

}  // namespace
}  // namespace tarnwick
