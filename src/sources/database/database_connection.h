// One connection to a data base, for reading only. Knows the drivers; knows no DataSet. It is used in the thread that opened
// it, as drivers demand, and closed with its owner; whoever reads elsewhere opens another.
#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <string>
#include <vector>

#include "base/progress.h"
#include "sources/database/database_dialect.h"
#include "sources/database/database_place.h"

namespace tarnwick {

class DatabaseConnection {
 public:
  /// Loads the driver and connects. The server that the environment variable TARNWICK_DB_SERVER names is given the
  /// password of TARNWICK_DB_PASSWORD, any other one the one that the user gave (PasswordFor), and where that does not serve the
  /// one that the key store keeps.
  /// Throws FileError for files that are missing or no data bases, PasswordWanted where the password is missing or wrong, Error
  /// for drivers and servers that are not there.
  explicit DatabaseConnection(const DatabasePlace& place);
  ~DatabaseConnection();
  DatabaseConnection(const DatabaseConnection&) = delete;
  DatabaseConnection& operator=(const DatabaseConnection&) = delete;

  const QSqlDatabase& Handle() const { return database_; }
  const DatabaseDialect& Dialect() const { return *dialect_; }
  /// Runs a statement, or the one that `query` was prepared for where that is empty; its error is the query's. False:
  /// cancelled, which reaches the server. What takes long begins the progress, under `subject`. Throws Error when the
  /// statement took longer than StatementLimit().
  bool Execute(QSqlQuery& query, const QString& statement, const std::string& subject,
               Progress& progress) const;
  /// Stops what the connection runs, from any thread; the statement ends with an error. Nothing where that cannot be done.
  void Stop() const;
  /// Until told null, what the connection runs ends with an error once `progress` is cancelled, in whatever call it is; nothing
  /// where the driver's library is not the one that is linked here.
  void StopWith(const Progress* progress) const;
  /// True where the driver's own objects are of the library that is linked here.
  bool KnowsLibrary() const { return interruptible_ != nullptr; }
  /// False when the server has gone.
  bool IsAlive() const;
  /// Tables and behind them views, in the data base's order.
  std::vector<std::string> Tables() const;
  /// The name as a query writes it, whatever letters it has.
  QString Quoted(const std::string& table) const;
  QString QuotedColumn(const std::string& column) const;
  /// What the data base says, without the password.
  std::string TextOf(const QSqlError& error) const;
  /// Throws FileError for what could not be read: that there is no such table, else what the data base says.
  [[noreturn]] void RefuseReading(const DatabasePlace& place, const QSqlError& error) const;

 private:
  void SetServer(const DatabasePlace& place);
  bool OpenByKeptPassword();
  void Prepare();
  [[noreturn]] void Refuse(const QSqlError& error);

  DatabasePlace place_;
  const DatabaseDialect* dialect_;
  QString name_;
  QString password_;
  QSqlDatabase database_;
  QString session_;                // its number at the server
  void* interruptible_ = nullptr;  // the SQLite connection that this library may interrupt
};

}  // namespace tarnwick
