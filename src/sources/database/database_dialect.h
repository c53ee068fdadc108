// What kinds of data base have their own way of: one row for each. Knows the drivers; opens nothing.
#pragma once

#include <QSqlDriver>
#include <functional>
#include <span>
#include <string>

namespace tarnwick {

/// How what is asked of a data base is cut into pieces that cross the wire.
enum class RowTransport {
  InProcess,  ///< there is no wire: a row that is not wanted costs nothing
  Cursor,     ///< a cursor of the server, in a transaction for reading only, so many rows at once
  Stream      ///< the driver keeps or streams the rows
};

/// How a kind of data base is reached, kept from being written to, and stopped.
struct DatabaseDialect {
  const char* scheme;
  const char* driver;   ///< of Qt
  const char* options;  ///< of a connection, time-outs among them
  /// The first statements of a connection: for reading only, limits of time, "%1" in milliseconds.
  std::span<const char* const> first;
  RowTransport transport = RowTransport::Stream;
  char quote = 0;  ///< around the name of a column, doubled inside; 0: the driver knows
  const char* session = nullptr;  ///< asks for the number of a connection; null: it needs none
  const char* stop = nullptr;  ///< what another connection says to stop what that number runs: %1
  /// Asks for about how many rows a table has, without counting; "%1" is its name in a text, quoted. Null: nobody knows.
  const char* guess = nullptr;
  bool nulls_first = false;  ///< in a rising order
  /// "%1" is a column: its value as a number of double precision; null where a value may be of any type.
  const char* number = nullptr;
  /// Of a connection, with the folder or file of a local socket as "%1"; null: it stands for a host.
  const char* socket = nullptr;
  bool limits = false;       ///< understands LIMIT
  bool keeps_order = false;  ///< of a query, within another one
};

/// The row of a scheme. Throws Error for a scheme that there is not.
const DatabaseDialect& DialectOf(const std::string& scheme);

/// The row of what answers behind a driver that reaches many kinds, by that driver's own word for it or by what it answers to the
/// questions of several kinds for their version (empty: it does not know them); `driver` where no other is known.
const DatabaseDialect& DialectBehind(const DatabaseDialect& driver, QSqlDriver::DbmsType kind,
                                     const std::function<QString(const char* question)>& ask);

}  // namespace tarnwick
