// Rows and columns of a data base's table, view or query, read one behind the other. Knows values; knows no DataSet.
#pragma once

#include <QMetaType>
#include <string>
#include <string_view>
#include <vector>

#include "data/data_supplier.h"
#include "sources/database/database_connection.h"
#include "sources/database/database_rows.h"
#include "sources/database/database_statement.h"

namespace tarnwick {

/// The rows of a table of SQLite stand as they are stored, those of a query that says ORDER BY as it says; all others by the
/// column of X once Expect() names it, and before as they come.
class TDBSupplier final : public TDataSupplier {
 public:
  /// Opens the place, which names a table or a query, and stands on its first row. Throws Error, and FileError as
  /// DatabaseConnection does; so does every move when the data base fails. Throws UnpackingCancelled when `progress` cancels.
  TDBSupplier(DatabasePlace place, Progress& progress);

  /// What answers there.
  const DatabaseDialect& Dialect() const { return connection_.Dialect(); }
  std::int32_t CurrentRow() const override;
  std::int32_t HeaderRowsPassed() const override { return 0; }
  bool AtEnd() const override;
  bool NextRow() override;
  void FirstRow() override;
  void SkipRows(std::int32_t rows) override;
  /// As StoredNumber().
  std::optional<double> ReadValue(std::int32_t column, ColumnFormat format) override;
  bool HasValue(std::int32_t column) override;
  /// The value as StoredText().
  std::string TextAt(std::int32_t column) override;
  std::int32_t RowCount() override;
  bool CountRows(Progress& progress) override;
  bool Expect(const RowPlan& plan, Progress& progress) override;
  void MoveUnder(Progress* progress) override;
  std::int64_t RowsBelow(std::int32_t column, ColumnFormat format, double bound,
                         Progress& progress) override;
  /// Settles what Size() answers where that takes long. Throws UnpackingCancelled.
  void GuessRows(Progress& progress);
  const std::vector<std::string>& ColumnNames() override { return names_; }
  bool HasNamesLine() override { return true; }
  /// The number of rows where they were counted; before, what the data base knows without counting, or the first number
  /// above kMostWholeRows where there are more.
  std::int64_t Size() const override;
  std::int64_t Position() const override { return row_; }
  const std::string& Describe() const override { return name_; }
  std::string Place() const override;
  std::int64_t Line() const override { return row_ + 1; }

 private:
  /// Rows that are open: which they are, and how far they were gone through.
  struct Opened {
    explicit Opened(const DatabaseConnection& connection, const std::string& subject)
        : rows(connection, subject) {}
    DatabaseRows rows;
    bool is_open = false;
    std::int64_t first = 1, every = 1;  // their numbers
    std::int64_t row = -1;              // the one that is gone to, from 0
    bool at_end = false;
    std::vector<int> fields;  // where a column stands in them; -1: nowhere
  };

  AskedRows Asked() const;
  QString RowKey() const;
  std::int64_t GuessSize(Progress& progress) const;
  bool Open(std::int64_t first, std::int64_t every, Progress& progress) const;
  bool OpenPlanned(std::int64_t first, std::int64_t every, Progress& progress) const;
  bool OpenPlain(Progress& progress) const;
  bool HasOrder() const;
  KeySteps StepsThrough(std::int64_t first, std::int64_t every) const;
  void Settle() const;
  void AskFor(std::int32_t column);
  [[noreturn]] void Fail(const QSqlError& error) const;
  QString ColumnName(std::int32_t column) const;
  bool Exists(std::int32_t column) const;
  bool IsColumn(std::int32_t column) const;
  QVariant Stored(std::int32_t column) const;

  DatabasePlace place_;
  std::string name_;
  DatabaseConnection connection_;
  AskedRows table_;  // all columns, no order
  std::vector<std::string> names_;
  std::vector<QMetaType> types_;
  std::vector<std::int32_t> columns_;  // that are asked for; empty: all
  std::int32_t order_ = -1;            // the column that orders the rows
  std::int64_t row_ = 0;               // from 0
  Progress* moving_ = nullptr;         // what ends moves
  std::optional<std::int64_t> counted_;
  mutable std::optional<std::int64_t> guessed_;
  // Opened when a row is first looked at: who only counts, or is told a plan first, asks no second time.
  mutable Opened opened_;
};

}  // namespace tarnwick
