#include "desk/sources/database_edit.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "support/run_statements.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

class DatabaseEdits : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::RunStatements(file_, {"CREATE TABLE runs (t REAL, u REAL)",
                                   "CREATE VIEW twice AS SELECT t, 2 * u AS v FROM runs"});
    edit_.Show({});
  }
  template <class Widget>
  Widget& Part(const char* name) {
    return *edit_.findChild<Widget*>(name);
  }
  std::string Test() {
    Part<QPushButton>("DatabaseTest").click();
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return Part<QLabel>("DatabaseTold").text() != "asking…"; }, 20000));
    return Part<QLabel>("DatabaseTold").text().toStdString();
  }
  std::string Taken() const {
    TDSInfo info;
    const std::optional<QString> trouble = edit_.Take(info);
    return trouble ? "! " + trouble->toStdString() : info.DatasourceInfo;
  }

  testing::TemporaryFolder folder_;
  std::string file_ = folder_.File("runs.db").string();
  DatabaseEdit edit_{nullptr};
};

TEST_F(DatabaseEdits, TablesAreListedAndWhatIsReadIsTried) {
  auto& address = Part<QLineEdit>("DatabaseAddress");
  auto& table = Part<QComboBox>("DatabaseTables");
  auto& query = Part<QPlainTextEdit>("DatabaseQuery");
  address.setText(QString::fromStdString("sqlite:" + file_));
  EXPECT_EQ(Test(), "Connected: 2 tables.");
  EXPECT_EQ(table.itemText(0) + ' ' + table.itemText(1), "runs twice");
  EXPECT_EQ(Taken(), "sqlite:" + file_);
  table.setEditText("twice");
  EXPECT_EQ(Test(), "Connected: 2 tables; the table has the columns t and v.");
  EXPECT_EQ(Taken(), "sqlite:" + file_ + "?table=twice");
  table.setEditText("none");
  EXPECT_NE(Test().find("There is no table \"none\""), std::string::npos);
  query.setPlainText("DROP TABLE runs");
  EXPECT_EQ(Part<QLabel>("DatabaseTold").text(),
            "A data base is only read: the query must begin with SELECT, WITH or VALUES");
  EXPECT_FALSE(table.isEnabled());
  query.setPlainText("SELECT t FROM runs");
  EXPECT_EQ(Test(), "Connected: 2 tables; the query gives t.");
  EXPECT_EQ(Taken(), "sqlite:" + file_ + "?query=SELECT t FROM runs");
  query.clear();
  table.setEditText("");
  address.setText(QString::fromStdString(file_));
  EXPECT_EQ(Taken(), "sqlite:" + file_);
  address.setText(QString::fromStdString("sqlite:" + file_ + ".not"));
  EXPECT_NE(Test().find("missing"), std::string::npos);
}

TEST_F(DatabaseEdits, APasswordIsAskedForServersOnlyAndKeptOutOfThePlace) {
  auto& password = Part<QLineEdit>("DatabasePassword");
  EXPECT_FALSE(password.isEnabled());
  auto& address = Part<QLineEdit>("DatabaseAddress");
  QTest::keyClicks(&address, "postgresql://me@host/base");
  EXPECT_TRUE(password.isEnabled());
  QTest::keyClicks(&password, "secret");
  EXPECT_EQ(Taken(), "postgresql://me@host/base");
}

}  // namespace
}  // namespace tarnwick
