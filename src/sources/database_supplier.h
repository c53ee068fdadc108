// Rows and columns of a data base's table, view or query, read one behind the other. Knows values; knows no DataSet.
#pragma once

#include <QSqlQuery>
#include <QVariant>
#include <string>
#include <string_view>
#include <vector>

#include "data/data_supplier.h"
#include "sources/database_connection.h"

namespace tarnwick {

class TDBSupplier final : public TDataSupplier {
 public:
  /// Opens the place, which names a table or a query, and stands on its first row. Throws Error, and FileError as
  /// DatabaseConnection does; so does every move when the data base fails.
  explicit TDBSupplier(DatabasePlace place);

  std::int32_t CurrentRow() const override;
  std::int32_t HeaderRowsPassed() const override { return 0; }
  bool AtEnd() const override { return at_end_; }
  bool NextRow() override;
  void FirstRow() override;
  void SkipRows(std::int32_t rows) override;
  /// Numbers as they stand (truth is 1, else 0), dates and times as day numbers, texts as the format reads them.
  std::optional<double> ReadValue(std::int32_t column, ColumnFormat format) override;
  bool HasValue(std::int32_t column) override;
  /// A text that FieldValue reads.
  std::string TextAt(std::int32_t column) override;
  std::int32_t RowCount() override;
  const std::vector<std::string>& ColumnNames() override { return names_; }
  bool HasNamesLine() override { return true; }
  std::int64_t Size() const override { return rows_; }
  std::int64_t Position() const override { return row_; }
  const std::string& Describe() const override { return name_; }
  std::string Place() const override;
  std::int64_t Line() const override { return row_ + 1; }

 private:
  QString Statement() const;
  void Fetch();
  [[noreturn]] void Fail(const QSqlError& error) const;
  bool IsColumn(std::int32_t column) const;

  DatabasePlace place_;
  std::string name_;
  DatabaseConnection connection_;
  QSqlQuery query_;  // closed before its connection
  std::vector<std::string> names_;
  std::int64_t rows_ = 0;
  std::int64_t row_ = 0;  // from 0
  bool at_end_ = false;
};

}  // namespace tarnwick
