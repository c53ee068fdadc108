// A file of SQLite read by the library's own interface, for reading only, stopped when a progress is cancelled. Knows statements
// and values; knows no view.
#pragma once

#include <sqlite3.h>

#include <chrono>
#include <functional>
#include <memory>
#include <span>
#include <string>

#include "base/progress.h"
#include "data/ds_info.h"
#include "sources/database/database_place.h"
#include "sources/database/statement_limit.h"

namespace tarnwick {

/// A name, and a text or number, as a statement writes it.
std::string SqliteName(const std::string& name);
std::string SqliteLiteral(const std::string& value);
std::string SqliteLiteral(double value);

class SqliteFile {
 public:
  /// Of the place's address. Throws FileError for what cannot be opened. What it runs ends once `progress`, which outlives it, is
  /// cancelled or the limit of time is passed.
  SqliteFile(const DatabasePlace& place, Progress& progress);
  SqliteFile(const SqliteFile&) = delete;
  SqliteFile& operator=(const SqliteFile&) = delete;

  sqlite3* Base() const { return base_.get(); }
  /// Throws, unless done: UnpackingCancelled, Error for what took too long, FileError for what the library says.
  void Require(bool done) const;

 private:
  struct Close {
    void operator()(sqlite3* base) const { sqlite3_close(base); }
  };
  bool IsLate() const { return std::chrono::steady_clock::now() > end_; }
  bool HasToStop() const { return progress_.Cancelled() || IsLate(); }

  std::string name_;
  Progress& progress_;
  std::chrono::steady_clock::time_point end_ = std::chrono::steady_clock::now() + StatementLimit();
  std::unique_ptr<sqlite3, Close> base_;
};

/// Throws as SqliteFile::Require().
class SqliteStatement {
 public:
  SqliteStatement(const SqliteFile& file, const std::string& text);
  /// Goes to the next row; false behind the last.
  bool Next() const;
  /// Begins again with other values.
  void Restart() const { sqlite3_reset(statement_.get()); }
  sqlite3_stmt* Get() const { return statement_.get(); }
  int Type(int column) const { return sqlite3_column_type(Get(), column); }

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  const SqliteFile& file_;
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

/// As StoredNumber(), NaN for none.
double SqliteNumber(sqlite3_value* value, ColumnFormat format);

using SqliteRowTaker = std::function<void(std::span<sqlite3_value* const> row)>;

/// Calls `take` for the columns of all rows: as a function of the data base, which spares it the way out and in again with each
/// row, nearly half of the time.
void HandSqliteRows(const SqliteFile& file, const std::string& columns, const std::string& from,
                    const SqliteRowTaker& take);

}  // namespace tarnwick
