// One connection to a data base, for reading only. Knows the drivers; knows no DataSet. It is used in the thread that opened
// it, as drivers demand, and closed with its owner; whoever reads elsewhere opens another.
#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>
#include <string>
#include <vector>

#include "sources/database_place.h"

namespace tarnwick {

class DatabaseConnection {
 public:
  /// Loads the driver and connects. The server that the environment variable TARNWICK_DB_SERVER names is given the
  /// password of TARNWICK_DB_PASSWORD, no other one any.
  /// Throws FileError for files that are missing or no data bases, Error for drivers and servers that are not there.
  explicit DatabaseConnection(const DatabasePlace& place);
  ~DatabaseConnection();
  DatabaseConnection(const DatabaseConnection&) = delete;
  DatabaseConnection& operator=(const DatabaseConnection&) = delete;

  const QSqlDatabase& Handle() const { return database_; }
  /// Tables and behind them views, in the data base's order.
  std::vector<std::string> Tables() const;
  /// The name as a query writes it, whatever letters it has.
  QString Quoted(const std::string& table) const;
  /// What the data base says, without the password.
  std::string TextOf(const QSqlError& error) const;

 private:
  void OpenServer(const DatabasePlace& place);

  QString name_;
  QString password_;
  QSqlDatabase database_;
};

}  // namespace tarnwick
