#include "sources/database/database_dialect.h"

#include <gtest/gtest.h>

#include <QString>
#include <string>
#include <vector>

#include "support/refusal.h"

namespace tarnwick {
namespace {

/// What the rows of a dialect are read by: how they come, how columns are quoted, what it can.
std::string Described(const DatabaseDialect& dialect) {
  constexpr const char* kTransports[] = {"in process", "cursor", "stream"};
  std::string text =
      std::string(dialect.driver) + ", " + kTransports[static_cast<std::size_t>(dialect.transport)];
  if (dialect.quote != 0) text += std::string(", quotes ") + dialect.quote;
  if (dialect.nulls_first) text += ", nulls first";
  if (dialect.limits) text += ", limits";
  if (dialect.keeps_order) text += ", keeps order";
  if (dialect.stop != nullptr) text += ", stops";
  if (dialect.guess != nullptr) text += ", guesses";
  return text + ", " + std::to_string(dialect.first.size()) + " first";
}

TEST(DatabaseDialects, AreThoseOfTheirServers) {
  EXPECT_EQ(Described(DialectOf("sqlite")),
            "QSQLITE, in process, quotes \", limits, keeps order, 1 first");
  EXPECT_EQ(Described(DialectOf("postgresql")),
            "QPSQL, cursor, quotes \", limits, keeps order, stops, guesses, 3 first");
  EXPECT_EQ(Described(DialectOf("mysql")),
            "QMYSQL, stream, quotes `, nulls first, limits, stops, 1 first");
  EXPECT_EQ(Described(DialectOf("odbc")), "QODBC, stream, 0 first");
  EXPECT_EQ(testing::Refusal([] { DialectOf("oracle"); }),
            "There is no kind of data base \"oracle\"");
}

TEST(DatabaseDialects, BehindOdbcAreAskedFor) {
  std::vector<std::string> asked;
  QString version, sqlite;
  const auto ask = [&](const char* question) {
    asked.emplace_back(question);
    return asked.back() == "SELECT version()" ? version : sqlite;
  };
  const auto behind = [&](const char* driver, QSqlDriver::DbmsType kind) {
    asked.clear();
    return Described(DialectBehind(DialectOf(driver), kind, ask));
  };
  const std::string postgres =
      "QPSQL, stream, quotes \", limits, keeps order, stops, guesses, 3 first";
  const std::string mysql = "QMYSQL, stream, quotes `, nulls first, limits, stops, 1 first";
  EXPECT_EQ(behind("sqlite", QSqlDriver::PostgreSQL), Described(DialectOf("sqlite")));
  EXPECT_EQ(behind("odbc", QSqlDriver::PostgreSQL), postgres);
  EXPECT_EQ(behind("odbc", QSqlDriver::MySqlServer), mysql);
  EXPECT_EQ(behind("odbc", QSqlDriver::Oracle), Described(DialectOf("odbc")));
  EXPECT_TRUE(asked.empty()) << "the driver knows";
  EXPECT_EQ(behind("odbc", QSqlDriver::UnknownDbms), Described(DialectOf("odbc")));
  EXPECT_EQ(asked.size(), 2u);
  version = "10.11.6-MariaDB-0";
  EXPECT_EQ(behind("odbc", QSqlDriver::UnknownDbms), mysql);
  version.clear();
  sqlite = "3.40.1";
  EXPECT_EQ(behind("odbc", QSqlDriver::UnknownDbms),
            "QSQLITE, stream, quotes \", limits, keeps order, 1 first");
  EXPECT_EQ(std::string(DialectBehind(DialectOf("odbc"), QSqlDriver::UnknownDbms, ask).first[0]),
            "PRAGMA query_only = 1")
      << "no option of that driver opens for reading only";
}

}  // namespace
}  // namespace tarnwick
