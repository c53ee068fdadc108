#include "sources/database_connection.h"

#include <QSqlDriver>
#include <QSqlQuery>
#include <QStringList>
#include <QUrl>
#include <algorithm>
#include <array>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "base/error.h"

namespace tarnwick {
namespace {

/// How a kind of data base is reached, and kept from being written to.
struct DriverRow {
  const char* scheme;
  const char* driver;
  const char* options;
  const char* read_only;  ///< the first statement of a connection; null: the options are enough
};

constexpr DriverRow kDrivers[] = {
    {"sqlite", "QSQLITE", "QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=5000", nullptr},
    {"postgresql", "QPSQL", "connect_timeout=10",
     "SET SESSION CHARACTERISTICS AS TRANSACTION READ ONLY"},
    {"mysql", "QMYSQL", "MYSQL_OPT_CONNECT_TIMEOUT=10", "SET SESSION TRANSACTION READ ONLY"},
    {"odbc", "QODBC",
     "SQL_ATTR_ACCESS_MODE=SQL_MODE_READ_ONLY;SQL_ATTR_LOGIN_TIMEOUT=10;"
     "SQL_ATTR_CONNECTION_TIMEOUT=60",
     nullptr},
};

const DriverRow& RowOf(const std::string& scheme) {
  const auto* const found =
      std::ranges::find_if(kDrivers, [&](const DriverRow& row) { return scheme == row.scheme; });
  if (found == std::end(kDrivers)) throw Error("There is no kind of data base \"" + scheme + "\"");
  return *found;
}

void RequireDriver(const DriverRow& row) {
  if (QSqlDatabase::drivers().contains(QLatin1String(row.driver))) return;
  throw Error(std::string("The driver for ") + row.scheme + " data bases is not installed: it is " +
              row.driver + " of Qt");
}

QString NewName() {
  static std::atomic<int> number = 0;
  return QStringLiteral("tarnwick-%1").arg(++number);
}

/// Drivers would answer all of this with "cannot be opened".
void RequireSqliteFile(const std::string& file) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file, ignored)) {
    throw FileError("The file of the data base is missing", file, "");
  }
  std::array<char, 16> head{};
  std::ifstream bytes(file, std::ios::binary);
  if (!bytes) throw FileError("The file of the data base cannot be read", file, "");
  bytes.read(head.data(), head.size());
  if (std::string_view(head.data(), head.size()) != std::string_view("SQLite format 3\0", 16)) {
    throw FileError("The file is no SQLite data base; one that is packed must be unpacked first",
                    file, "");
  }
}

}  // namespace

DatabaseConnection::DatabaseConnection(const DatabasePlace& place) : name_(NewName()) {
  const DriverRow& row = RowOf(place.scheme);
  if (place.scheme == "sqlite") RequireSqliteFile(place.address);
  RequireDriver(row);
  database_ = QSqlDatabase::addDatabase(QLatin1String(row.driver), name_);
  database_.setConnectOptions(QLatin1String(row.options));
  database_.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
  if (place.scheme == "sqlite") {
    database_.setDatabaseName(QString::fromStdString(place.address));
  } else {
    OpenServer(place);
  }
  const auto refuse = [&](const QSqlError& error) {
    const std::string text = TextOf(error);
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(name_);
    throw Error("The data base cannot be opened: " + place.Name() + ", " + text);
  };
  if (!database_.open()) refuse(database_.lastError());
  if (row.read_only == nullptr) return;
  QSqlError error;
  {
    QSqlQuery query(database_);
    if (!query.exec(QLatin1String(row.read_only))) error = query.lastError();
  }
  if (error.isValid()) refuse(error);
}

void DatabaseConnection::OpenServer(const DatabasePlace& place) {
  // A graph from elsewhere may name any server: the password is for one.
  if (qEnvironmentVariable("TARNWICK_DB_SERVER").toStdString() == place.Server()) {
    password_ = qEnvironmentVariable("TARNWICK_DB_PASSWORD");
  }
  database_.setPassword(password_);
  if (place.scheme == "odbc") {
    database_.setDatabaseName(QString::fromStdString(place.address));
    return;
  }
  const QUrl url(QString::fromStdString(place.scheme + ':' + place.address));
  database_.setHostName(url.host());
  if (url.port() > 0) database_.setPort(url.port());
  database_.setUserName(url.userName());
  database_.setDatabaseName(url.path().mid(1));
}

DatabaseConnection::~DatabaseConnection() {
  database_ = QSqlDatabase();
  QSqlDatabase::removeDatabase(name_);
}

std::vector<std::string> DatabaseConnection::Tables() const {
  std::vector<std::string> names;
  for (const QSql::TableType type : {QSql::Tables, QSql::Views}) {
    for (const QString& name : database_.tables(type)) names.push_back(name.toStdString());
  }
  return names;
}

QString DatabaseConnection::Quoted(const std::string& table) const {
  QString name = QString::fromStdString(table);
  // The driver would take a dot in it for one between a schema and a table, which SQLite has not.
  if (database_.driverName() == QLatin1String("QSQLITE")) {
    return '"' + name.replace('"', QLatin1String("\"\"")) + '"';
  }
  return database_.driver()->escapeIdentifier(name, QSqlDriver::TableName);
}

std::string DatabaseConnection::TextOf(const QSqlError& error) const {
  QString text = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
  if (!password_.isEmpty()) text.replace(password_, QLatin1String("***"));
  return text.simplified().toStdString();
}

}  // namespace tarnwick
