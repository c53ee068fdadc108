// Rows and columns of a binary "@Unformatted" data file: a line of comma-separated names, a line that begins with
// "@Unformatted", then records of little-endian 4-byte IEEE floats, one per column.
#pragma once

#include <optional>

#include "base/mapped_file.h"
#include "data/data_supplier.h"

namespace tarnwick {

/// True when the second line begins with "@Unformatted", without regard to case.
bool IsUnformatted(std::string_view bytes);

class TFileSupplier final : public TDataSupplier {
 public:
  TFileSupplier(MappedFile file, std::string name);

  std::int32_t CurrentRow() const override;
  std::int32_t HeaderRowsPassed() const override { return 2; }
  bool AtEnd() const override { return row_ >= rows_; }
  bool NextRow() override;
  void FirstRow() override { row_ = 0; }
  void SkipRows(std::int32_t rows) override;
  std::optional<double> ReadValue(std::int32_t column, ColumnFormat format) override;
  bool HasValue(std::int32_t column) override;
  bool EndsIncomplete() const override;
  bool WasCutShort() const override { return file_.WasCutShort(); }
  std::int32_t RowCount() override;
  const std::vector<std::string>& ColumnNames() override { return names_; }
  bool HasNamesLine() override { return has_names_line_; }
  std::int64_t Size() const override { return rows_; }
  std::int64_t Position() const override { return row_; }
  const std::string& Describe() const override { return name_; }
  std::string Place() const override;
  std::int64_t Line() const override { return row_ + 1; }

  /// The sampling frequency that such a source sets when it is opened.
  std::int32_t SamplingFrequency() const;

 private:
  MappedFile file_;
  std::string name_;
  std::vector<std::string> names_;
  bool has_names_line_ = false;
  std::string_view records_;
  std::int64_t rows_ = 0;
  std::int64_t row_ = 0;  // from 0
};

}  // namespace tarnwick
