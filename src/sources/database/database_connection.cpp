#include "sources/database/database_connection.h"

#include <sqlite3.h>

#include <QSqlDriver>
#include <QStringList>
#include <QUrl>
#include <algorithm>
#include <atomic>
#include <optional>

#include "base/error.h"
#include "base/word_list.h"
#include "sources/database/key_store.h"
#include "sources/database/session_passwords.h"
#include "sources/database/sqlite_file.h"
#include "sources/database/statement_limit.h"
#include "sources/database/statement_watch.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostNames = 12;      // in a message
constexpr int kStepsBetweenLooks = 20'000;  // of the machine that runs statements: a millisecond
constexpr qlonglong kServerWaits = 5000;    // ms longer
/// What servers say, also through ODBC, to a password that is missing or wrong.
constexpr const char* kAboutPassword[] = {"fe_sendauth:", "password authentication failed",
                                          "(using password: ", "Login failed for user"};

void RequireDriver(const DatabaseDialect& dialect) {
  if (QSqlDatabase::drivers().contains(QLatin1String(dialect.driver))) return;
  throw Error(std::string("The driver for ") + dialect.scheme +
              " data bases is not installed: it is " + dialect.driver + " of Qt");
}

QString NewName() {
  static std::atomic<int> number = 0;
  return QStringLiteral("tarnwick-%1").arg(++number);
}

/// No driver numbers what went wrong in connecting. What the client's library says itself keeps its first word in every language.
bool IsAboutPassword(const QSqlError& error) {
  const QString text = error.databaseText() + error.driverText();
  return std::ranges::any_of(kAboutPassword,
                             [&](const char* part) { return text.contains(QLatin1String(part)); });
}

/// The one answer of a statement.
QString Answer(const QSqlDatabase& database, const char* statement) {
  QSqlQuery query(database);
  return query.exec(QLatin1String(statement)) && query.next() ? query.value(0).toString()
                                                              : QString();
}

/// The driver's connection, where the library that it uses is the one linked here.
void* InterruptibleHandle(const QSqlDatabase& database) {
  const QVariant handle = database.driver()->handle();
  if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0) return nullptr;
  if (Answer(database, "SELECT sqlite_source_id()") != QLatin1String(sqlite3_sourceid())) {
    return nullptr;
  }
  return *static_cast<sqlite3* const*>(handle.constData());
}

/// Without the piece of our statement that PostgreSQL shows with a mark below, and without the code that a lost connection has
/// none of.
QString InOneLine(const QString& told) {
  QStringList lines = told.split(QLatin1Char('\n'));
  const auto shows_statement = [](const QString& line) {
    return line.startsWith(QLatin1String("LINE ")) || line.trimmed() == QLatin1String("^") ||
           line.trimmed() == QLatin1String("()");
  };
  lines.removeIf(shows_statement);
  QString text;
  for (const QString& line : lines) {
    const QString part = line.simplified();
    if (part.isEmpty()) continue;
    const bool new_sentence =
        part.front().isUpper() && !text.isEmpty() && text.back().isLetterOrNumber();
    text += (new_sentence ? QStringLiteral(". ") : QStringLiteral(" ")) + part;
  }
  return text.trimmed();
}

}  // namespace

DatabaseConnection::DatabaseConnection(const DatabasePlace& place)
    : place_(place), dialect_(&DialectOf(place.scheme)), name_(NewName()) {
  if (place.scheme == "sqlite") RequireSqliteFile(place.address);
  RequireDriver(*dialect_);
  database_ = QSqlDatabase::addDatabase(QLatin1String(dialect_->driver), name_);
  database_.setConnectOptions(QLatin1String(dialect_->options));
  database_.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
  if (place.scheme == "sqlite") {
    database_.setDatabaseName(QString::fromStdString(place.address));
  } else {
    SetServer(place);
  }
  if (!database_.open() && !OpenByKeptPassword()) Refuse(database_.lastError());
  Prepare();
}

void DatabaseConnection::Prepare() {
  dialect_ = &DialectBehind(*dialect_, database_.driver()->dbmsType(),
                            [this](const char* question) { return Answer(database_, question); });
  for (const char* const statement : dialect_->first) {
    QSqlError error;
    {
      QSqlQuery query(database_);
      // The server's own limit comes after ours, which tells how to have it otherwise.
      const qlonglong limit = StatementLimit().count() + kServerWaits;
      if (!query.exec(QString(statement).replace("%1", QString::number(limit))))
        error = query.lastError();
    }
    if (error.isValid()) Refuse(error);
  }
  if (dialect_->session != nullptr) session_ = Answer(database_, dialect_->session);
  interruptible_ = InterruptibleHandle(database_);
}

void DatabaseConnection::Refuse(const QSqlError& error) {
  const std::string text = TextOf(error);
  database_ = QSqlDatabase();
  QSqlDatabase::removeDatabase(name_);
  const std::string told = "The data base cannot be opened: " + place_.Name() + ", " + text;
  if (IsAboutPassword(error)) throw PasswordWanted(told, place_.Server(), place_.Name());
  throw Error(told);
}

bool DatabaseConnection::Execute(QSqlQuery& query, const QString& statement,
                                 const std::string& subject, Progress& progress) const {
  StatementWatch watch(*this, subject, progress);
  if (statement.isEmpty()) {
    query.exec();
  } else {
    query.exec(statement);
  }
  if (watch.TookTooLong() && !query.isActive()) throw Error(TookTooLong(place_.Name()));
  return !progress.Cancelled();
}

void DatabaseConnection::Stop() const {
  if (interruptible_ != nullptr) sqlite3_interrupt(static_cast<sqlite3*>(interruptible_));
  if (dialect_->stop == nullptr || session_.isEmpty()) return;
  try {
    const DatabaseConnection other(place_);
    QSqlQuery(other.Handle()).exec(QString::fromLatin1(dialect_->stop).arg(session_));
  } catch (const Error&) {
    // A server that takes no second connection cannot be told: the statement ends by its time-out.
  }
}

void DatabaseConnection::StopWith(const Progress* progress) const {
  if (interruptible_ == nullptr) return;
  const auto is_cancelled = [](void* of) {
    return static_cast<const Progress*>(of)->Cancelled() ? 1 : 0;
  };
  sqlite3_progress_handler(static_cast<sqlite3*>(interruptible_), kStepsBetweenLooks,
                           progress == nullptr ? nullptr : +is_cancelled,
                           const_cast<Progress*>(progress));
}

bool DatabaseConnection::IsAlive() const {
  return database_.isOpen() && QSqlQuery(database_).exec(QStringLiteral("SELECT 1"));
}

/// The key store is asked only when a server wants what nobody has given yet.
bool DatabaseConnection::OpenByKeptPassword() {
  if (!IsAboutPassword(database_.lastError())) return false;
  const std::optional<QString> kept = KeptPassword(place_.Server());
  if (!kept || *kept == password_) return false;
  password_ = *kept;
  database_.setPassword(password_);
  if (!database_.open()) return false;
  RememberPassword(place_.Server(), password_);
  return true;
}

void DatabaseConnection::SetServer(const DatabasePlace& place) {
  password_ = PasswordFor(place.Server());
  database_.setPassword(password_);
  if (place.scheme == "odbc") {
    database_.setDatabaseName(QString::fromStdString(place.address));
    return;
  }
  const QUrl url(QString::fromStdString(place.scheme + ':' + place.address));
  const QString socket = url.host().isEmpty() ? SocketOf(url) : QString();
  if (!socket.isEmpty() && dialect_->socket != nullptr) {
    const QString option = QString(dialect_->socket).replace("%1", socket);
    database_.setConnectOptions(database_.connectOptions() + ';' + option);
  } else {
    database_.setHostName(socket.isEmpty() ? url.host() : socket);
  }
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
  // The driver would take a dot in it for one between a schema and a table, which SQLite has not.
  if (dialect_->transport == RowTransport::InProcess) return QuotedColumn(table);
  return database_.driver()->escapeIdentifier(QString::fromStdString(table), QSqlDriver::TableName);
}

QString DatabaseConnection::QuotedColumn(const std::string& column) const {
  QString name = QString::fromStdString(column);
  const QChar quote = QLatin1Char(dialect_->quote);
  if (dialect_->quote != 0) return quote + name.replace(quote, QString(2, quote)) + quote;
  return database_.driver()->escapeIdentifier(name, QSqlDriver::FieldName);
}

std::string DatabaseConnection::TextOf(const QSqlError& error) const {
  QString text = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
  if (!password_.isEmpty()) text.replace(password_, QLatin1String("***"));
  return InOneLine(text).toStdString();
}

void DatabaseConnection::RefuseReading(const DatabasePlace& place, const QSqlError& error) const {
  const bool alive = IsAlive();
  const std::vector<std::string> tables = alive ? Tables() : std::vector<std::string>();
  if (alive && place.query.empty() && std::ranges::find(tables, place.table) == tables.end()) {
    const std::string known =
        tables.empty() ? "it has none" : "tables: " + Listed(tables, kMostNames);
    DatabasePlace base = place;
    base.table.clear();
    throw FileError("There is no table \"" + place.table + '"', base.Name(), known);
  }
  throw FileError("The data base cannot be read", place.Name(), TextOf(error));
}

}  // namespace tarnwick
