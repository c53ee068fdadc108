#include "sources/database/database_rows.h"

#include <sqlite3.h>

#include <QSqlResult>
#include <utility>

#include "base/error.h"
#include "sources/database/statement_limit.h"

namespace tarnwick {
namespace {

constexpr const char* kFetch = "FETCH 10000 FROM tarnwick_rows";
constexpr const char* kStream = "FETCH 100000 FROM tarnwick_rows";

}  // namespace

DatabaseRows::DatabaseRows(const DatabaseConnection& connection, std::string subject)
    : connection_(connection), subject_(std::move(subject)), query_(connection.Handle()) {
  // The parts of a cursor are kept whole, as other statements come between them.
  query_.setForwardOnly(connection.Dialect().transport != RowTransport::Cursor);
}

DatabaseRows::~DatabaseRows() {
  Close();
}

void DatabaseRows::Close() {
  arriving_.reset();
  query_.finish();
  const bool reachable = connection_.Handle().isOpen();
  if (way_ == Way::Parts && reachable)
    QSqlQuery(connection_.Handle()).exec(QStringLiteral("ROLLBACK"));
  way_ = Way::Closed;
}

void DatabaseRows::Require(bool done) {
  if (done) return;
  const QSqlError trouble = query_.lastError();
  const bool late = arriving_ && arriving_->TookTooLong();
  Close();
  if (late) throw Error(TookTooLong(subject_));
  throw DatabaseFailure{trouble};
}

bool DatabaseRows::Open(const QString& statement, Progress& progress) {
  Close();
  if (connection_.Dialect().transport != RowTransport::Cursor) {
    way_ = Way::Plain;
    if (!connection_.Execute(query_, statement, subject_, progress)) return false;
    Require(query_.isActive());
    return true;
  }
  streams_ = false;
  query_.setForwardOnly(false);
  // What a session is set to a query could change: a transaction that has begun it cannot.
  Require(query_.exec(QStringLiteral("BEGIN TRANSACTION READ ONLY")));
  way_ = Way::Parts;
  const QString cursor = "DECLARE tarnwick_rows NO SCROLL CURSOR FOR " + statement;
  if (!connection_.Execute(query_, cursor, subject_, progress)) return false;
  Require(!query_.lastError().isValid());
  if (!connection_.Execute(query_, QLatin1String(kFetch), subject_, progress)) return false;
  Require(query_.isActive());
  return true;
}

void DatabaseRows::OpenSteps(const QString& statement, const KeySteps& steps) {
  Close();
  Require(query_.prepare(statement));
  way_ = Way::Steps;
  steps_ = steps;
}

bool DatabaseRows::NextStep() {
  query_.bindValue(0, QVariant::fromValue<qlonglong>(steps_.first_key));
  query_.bindValue(1, QVariant::fromValue<qlonglong>(steps_.first_skip));
  Require(query_.exec());
  if (!query_.next()) return false;
  steps_.first_key = query_.value(0).toLongLong() + steps_.key_step;
  steps_.first_skip = steps_.skip;
  return true;
}

void DatabaseRows::MoveUnder(Progress* progress) {
  moving_ = progress;
  connection_.StopWith(progress);
}

void DatabaseRows::FetchPart() {
  query_.setForwardOnly(streams_);
  const QString fetch = QLatin1String(streams_ ? kStream : kFetch);
  if (moving_ == nullptr) {
    Require(query_.exec(fetch));
  } else if (streams_) {
    quiet_.emplace(*moving_, 0);
    arriving_.emplace(connection_, subject_, *quiet_);
    Require(query_.exec(fetch));
  } else {
    Require(connection_.Execute(query_, fetch, subject_, *moving_) && query_.isActive());
  }
}

bool DatabaseRows::Next() {
  if (way_ == Way::Closed) return false;
  if (way_ == Way::Steps) return NextStep();
  if (NextOfPart()) return true;
  if (way_ != Way::Parts) return false;
  FetchPart();
  return NextOfPart();
}

bool DatabaseRows::NextOfPart() {
  if (query_.next()) return true;
  Require(!query_.lastError().isValid());
  arriving_.reset();
  return false;
}

std::vector<std::string> DatabaseRows::ColumnNames() const {
  const QSqlRecord record = query_.record();
  const QVariant handle = query_.result()->handle();
  // The driver leaves out quotes in names, which then name nothing.
  const bool is_known =
      connection_.KnowsLibrary() && qstrcmp(handle.typeName(), "sqlite3_stmt*") == 0;
  sqlite3_stmt* const statement =
      is_known ? *static_cast<sqlite3_stmt* const*>(handle.constData()) : nullptr;
  std::vector<std::string> names;
  for (int i = 0; i < record.count(); ++i) {
    const char* const name = statement != nullptr ? sqlite3_column_name(statement, i) : nullptr;
    names.push_back(name != nullptr ? name : record.fieldName(i).toStdString());
  }
  return names;
}

std::int64_t DatabaseRows::Number(const QString& statement, Progress& progress) {
  if (!Open(statement, progress) || !Next()) return 0;
  const std::int64_t number = query_.value(0).toLongLong();
  Close();
  return number;
}

}  // namespace tarnwick
