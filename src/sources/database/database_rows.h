// The rows of one statement, one behind the other, however they cross the wire. Knows the connection; knows no plan.
#pragma once

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QString>
#include <QVariant>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/progress.h"
#include "sources/database/database_connection.h"
#include "sources/database/statement_watch.h"

namespace tarnwick {

/// A statement failed: what the data base said of it.
struct DatabaseFailure {
  QSqlError error;
};

/// How rows are found by whole numbers that rise from row to row.
struct KeySteps {
  std::int64_t first_key = 0, first_skip = 0;  ///< of the first row
  std::int64_t key_step = 1, skip = 0;         ///< of the next, from the key that was found
};

class DatabaseRows {
 public:
  /// `subject` is for progress windows. The connection outlives the rows and runs one of them at a time.
  DatabaseRows(const DatabaseConnection& connection, std::string subject);
  ~DatabaseRows();
  DatabaseRows(const DatabaseRows&) = delete;
  DatabaseRows& operator=(const DatabaseRows&) = delete;

  /// Stands before the first row then; what was open before is closed. False: cancelled. Throws DatabaseFailure.
  bool Open(const QString& statement, Progress& progress);
  /// Opens rows of which each is found by itself: `statement` has two places for values, the key from which on it looks
  /// and how many rows it passes from there, and answers the key first.
  void OpenSteps(const QString& statement, const KeySteps& steps);
  /// The parts of a cursor that come from now on arrive while they are gone through, until the next Open(): no other statement
  /// runs on the connection then.
  void StreamParts() { streams_ = true; }
  /// Until told null, Next() fails once `progress` is cancelled, which reaches the data base.
  void MoveUnder(Progress* progress);
  /// Goes to the next row; false behind the last. Throws DatabaseFailure.
  bool Next();
  QVariant Value(int column) const { return query_.value(column); }
  /// Of the rows that are open, every letter of them.
  std::vector<std::string> ColumnNames() const;
  /// Of the rows that are open.
  QSqlRecord Record() const { return query_.record(); }
  /// The one number that the statement answers. Throws DatabaseFailure; when cancelled it is 0.
  std::int64_t Number(const QString& statement, Progress& progress);
  void Close();

 private:
  bool NextStep();
  bool NextOfPart();
  void FetchPart();
  void Require(bool done);

  enum class Way : std::uint8_t { Closed, Plain, Parts, Steps };

  const DatabaseConnection& connection_;
  std::string subject_;
  QSqlQuery query_;
  Way way_ = Way::Closed;
  Progress* moving_ = nullptr;
  bool streams_ = false;
  std::optional<QuietProgress> quiet_;      // a part that arrives shows nothing of its own
  std::optional<StatementWatch> arriving_;  // of that part
  KeySteps steps_;                          // from the row that comes next
};

}  // namespace tarnwick
