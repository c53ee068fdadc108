#include "desk/sources/link_edit.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>

#include "link_publisher.h"

namespace tarnwick {
namespace {

/// The list, driven as a user does.
class LinkEdits : public ::testing::Test {
 protected:
  void Press(const char* button) { edit_.findChild<QPushButton*>(button)->click(); }
  bool CanPress(const char* button) const {
    return edit_.findChild<QPushButton*>(button)->isEnabled();
  }
  void Type(int row, const char* link) { links_.item(row, 0)->setText(link); }
  void Go(int row) { links_.setCurrentCell(row, 0); }
  std::string Value(int row) const { return links_.item(row, 1)->text().toStdString(); }
  std::string Taken() const {
    TDSInfo info;
    const std::optional<QString> trouble = edit_.Take(info);
    return trouble ? "! " + trouble->toStdString() : info.DatasourceInfo;
  }

  LinkEdit edit_{nullptr};
  QTableWidget& links_ = *edit_.findChild<QTableWidget*>("Links");
};

TEST_F(LinkEdits, LinksAreTypedAddedMovedAndRemoved) {
  edit_.Show({});
  EXPECT_EQ(Taken(), "! No link is named: a link is written service|topic!item");
  EXPECT_FALSE(CanPress("LinkUp") || CanPress("LinkDown"));
  const QSignalSpy edited(&edit_, &PlaceEdit::edited);
  Type(0, " a|b!c ");
  Press("AddLink");
  Type(1, "a|b!d, a|b!e;a|b!f");
  EXPECT_EQ(links_.rowCount(), 4) << "a list that is typed becomes rows";
  Press("AddLink");
  EXPECT_EQ(Taken(), "a|b!c,a|b!d,a|b!e,a|b!f") << "rows with nothing in them are none";
  Press("RemoveLink");
  Go(0);
  Press("LinkDown");
  Press("LinkDown");
  Go(3);
  EXPECT_FALSE(CanPress("LinkDown"));
  Press("LinkUp");
  EXPECT_EQ(Taken(), "a|b!d,a|b!e,a|b!f,a|b!c");
  Press("RemoveLink");
  EXPECT_EQ(Taken(), "a|b!d,a|b!e,a|b!c");
  Type(1, "a|b");
  EXPECT_EQ(Taken(), "! A link is written service|topic!item: \"a|b\"");
  EXPECT_EQ(edited.count(), 8);
}

TEST_F(LinkEdits, TestingShowsEachValueOrWhyThereIsNone) {
  tarnwick_links::LinkPublisher lab("edited", "oven");
  ASSERT_TRUE(lab.IsPublishing()) << lab.Why().toStdString();
  lab.Publish("temperature", QStringLiteral("296.4 K"));
  TDSInfo info;
  info.DatasourceInfo = "gone|oven!t,edited|oven!temperature,edited|oven!none";
  edit_.Show(info);
  Press("TestLinks");
  EXPECT_TRUE(QTest::qWaitFor([&] { return Value(2).starts_with("The link"); }, 10000));
  EXPECT_TRUE(Value(0).starts_with("\"gone|oven!t\" : can not open link")) << Value(0);
  EXPECT_EQ(Value(1), "296.4 K");
  Type(1, "edited|oven!none");
  EXPECT_EQ(Value(1), "") << "the value of another link";
}

}  // namespace
}  // namespace tarnwick
