#include "support/run_statements.h"

#include <gtest/gtest.h>

#include <QSqlError>
#include <QSqlQuery>

namespace tarnwick::testing {

void RunStatements(const char* driver, const std::function<void(QSqlDatabase& base)>& name,
                   const std::vector<std::string>& statements) {
  {
    QSqlDatabase base = QSqlDatabase::addDatabase(driver, "made");
    name(base);
    ASSERT_TRUE(base.open()) << base.lastError().text().toStdString();
    for (const std::string& statement : statements) {
      QSqlQuery query(base);
      EXPECT_TRUE(query.exec(QString::fromStdString(statement)))
          << query.lastError().text().toStdString();
    }
  }
  QSqlDatabase::removeDatabase("made");
}

void RunStatements(const std::filesystem::path& file, const std::vector<std::string>& statements) {
  const auto name = [&file](QSqlDatabase& base) {
    base.setDatabaseName(QString::fromStdString(file.string()));
  };
  RunStatements("QSQLITE", name, statements);
}

}  // namespace tarnwick::testing
