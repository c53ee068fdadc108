// What is asked of a data base for the rows of a place: the texts of statements. Knows a dialect's words; runs nothing.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <string_view>

#include "sources/database/database_dialect.h"

namespace tarnwick {

/// A table, view or query as statements need it, its names quoted.
struct AskedRows {
  QString from;  ///< a table's name, or a query
  bool is_query = false;
  QString row_key;      ///< of a table of SQLite, by which its rows stand; empty: it has none
  QStringList columns;  ///< that are asked for; empty: all
  QString order;        ///< the column that the rows are ordered by; empty: none
};

/// True for a query that says itself how its rows are ordered.
bool OrdersItself(std::string_view query);

/// All rows in their order.
QString AllRowsOf(const AskedRows& asked);

/// Of the rows in their order, the one of that number from 1 and from there on one of so many, picked by the data base.
QString SomeRowsOf(const AskedRows& asked, std::int64_t first, std::int64_t every);

/// Of a table with a row key: the row so many behind a key, its key first; both are values of the statement.
QString RowBehindKey(const AskedRows& asked);

/// How many rows there are.
QString CountOf(const AskedRows& asked);

/// The same, but no more than `most`, of a data base that understands LIMIT.
QString CountUpTo(const AskedRows& asked, std::int64_t most);

/// About how many rows a table has, by what the data base knows without counting; empty where it does not. `from`: its quoted
/// name.
QString GuessOfRows(const DatabaseDialect& dialect, QString from);

/// How many rows at the beginning surely hold no number of at least `bound` in the column, which orders them or stands in a
/// table with a row key. Empty where the data base cannot be asked for that.
QString CountBelow(const AskedRows& asked, const DatabaseDialect& dialect, const QString& column,
                   double bound);

}  // namespace tarnwick
