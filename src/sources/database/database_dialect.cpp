#include "sources/database/database_dialect.h"

#include <algorithm>

#include "base/error.h"

namespace tarnwick {
namespace {

/// Opening reads nothing of the file: this finds out whether it can be read.
constexpr const char* kSqliteFirst[] = {"SELECT count(*) FROM sqlite_master"};
/// No option of that driver opens for reading only.
constexpr const char* kSqliteBehindFirst[] = {"PRAGMA query_only = 1"};
constexpr const char* kPostgresFirst[] = {"SET SESSION CHARACTERISTICS AS TRANSACTION READ ONLY",
                                          "SET statement_timeout = %1",
                                          "SET idle_in_transaction_session_timeout = '1h'"};
constexpr const char* kMysqlFirst[] = {"SET SESSION TRANSACTION READ ONLY"};

const DatabaseDialect kDialects[] = {
    {.scheme = "sqlite",
     .driver = "QSQLITE",
     .options = "QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=5000",
     .first = kSqliteFirst,
     .transport = RowTransport::InProcess,
     .quote = '"',
     .limits = true,
     .keeps_order = true},
    {.scheme = "postgresql",
     .driver = "QPSQL",
     .options = "connect_timeout=10;keepalives_idle=20;keepalives_interval=5;keepalives_count=3;"
                "tcp_user_timeout=30000",
     .first = kPostgresFirst,
     .transport = RowTransport::Cursor,
     .quote = '"',
     .session = "SELECT pg_backend_pid()",
     .stop = "SELECT pg_cancel_backend(%1)",
     .guess = "SELECT reltuples FROM pg_class WHERE oid = to_regclass('%1')",
     .number = "CAST(%1 AS double precision)",
     .limits = true,
     .keeps_order = true},
    {.scheme = "mysql",
     .driver = "QMYSQL",
     .options = "MYSQL_OPT_CONNECT_TIMEOUT=10;MYSQL_OPT_READ_TIMEOUT=600",
     .first = kMysqlFirst,
     .quote = '`',
     .session = "SELECT CONNECTION_ID()",
     .stop = "KILL QUERY %1",
     .nulls_first = true,
     .number = "(%1 + 0e0)",
     .socket = "UNIX_SOCKET=%1",
     .limits = true},
    {.scheme = "odbc",
     .driver = "QODBC",
     .options = "SQL_ATTR_ACCESS_MODE=SQL_MODE_READ_ONLY;SQL_ATTR_LOGIN_TIMEOUT=10;"
                "SQL_ATTR_CONNECTION_TIMEOUT=600",
     .first = {}},
};

/// Spoken through ODBC, whose driver keeps the rows.
DatabaseDialect ThroughOdbc(const std::string& scheme) {
  DatabaseDialect row = DialectOf(scheme);
  row.transport = RowTransport::Stream;
  return row;
}

}  // namespace

const DatabaseDialect& DialectOf(const std::string& scheme) {
  const auto* const found = std::ranges::find_if(
      kDialects, [&](const DatabaseDialect& row) { return scheme == row.scheme; });
  if (found == std::end(kDialects)) {
    throw Error("There is no kind of data base \"" + scheme + "\"");
  }
  return *found;
}

const DatabaseDialect& DialectBehind(const DatabaseDialect& driver, QSqlDriver::DbmsType kind,
                                     const std::function<QString(const char* question)>& ask) {
  static const DatabaseDialect postgres = ThroughOdbc("postgresql");
  static const DatabaseDialect mysql = ThroughOdbc("mysql");
  static const DatabaseDialect sqlite = [] {
    DatabaseDialect row = ThroughOdbc("sqlite");
    row.first = kSqliteBehindFirst;
    return row;
  }();
  if (&driver != &DialectOf("odbc")) return driver;
  if (kind == QSqlDriver::PostgreSQL) return postgres;
  if (kind == QSqlDriver::MySqlServer) return mysql;
  if (kind != QSqlDriver::UnknownDbms) return driver;
  // The driver knows MariaDB and SQLite by no name.
  if (ask("SELECT version()").contains(QLatin1String("MariaDB"))) return mysql;
  return ask("SELECT sqlite_version()").isEmpty() ? driver : sqlite;
}

}  // namespace tarnwick
