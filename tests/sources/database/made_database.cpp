#include "made_database.h"

#include <gtest/gtest.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace tarnwick::testing {

void MadeDatabase::Run(const std::vector<std::string>& statements) const {
  {
    QSqlDatabase base = QSqlDatabase::addDatabase("QSQLITE", "made");
    base.setDatabaseName(QString::fromStdString(file_));
    ASSERT_TRUE(base.open());
    for (const std::string& statement : statements) {
      QSqlQuery query(base);
      EXPECT_TRUE(query.exec(QString::fromStdString(statement)))
          << query.lastError().text().toStdString();
    }
  }
  QSqlDatabase::removeDatabase("made");
}

}  // namespace tarnwick::testing
