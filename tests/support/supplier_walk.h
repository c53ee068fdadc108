// What every supplier owes its readers, whatever it reads: a walk over its rows by each of its operations, compared.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "data/block_source.h"
#include "data/data_supplier.h"
#include "data/pseudo_columns.h"

namespace tarnwick::testing {

/// A row as a supplier shows it.
struct WalkedRow {
  std::int32_t number = 0;
  std::int64_t line = 0;
  std::string place;
  std::vector<std::optional<double>> values;
  std::vector<std::string> texts;
  bool operator==(const WalkedRow&) const = default;
};

inline WalkedRow RowAt(TDataSupplier& supplier) {
  const auto columns = static_cast<std::int32_t>(supplier.ColumnNames().size());
  WalkedRow row{supplier.CurrentRow(), supplier.Line(), supplier.Place(), {}, {}};
  for (std::int32_t column = 0; column < columns; ++column) {
    row.values.push_back(supplier.ReadValue(column, ColumnFormat::Automatic));
    row.texts.push_back(supplier.TextAt(column));
    if (row.values.back()) {
      EXPECT_TRUE(supplier.HasValue(column)) << supplier.Place();
    }
  }
  for (const std::int32_t none : {-1, columns, columns + 1}) {
    EXPECT_EQ(supplier.ReadValue(none, ColumnFormat::Automatic), std::nullopt) << none;
  }
  EXPECT_FALSE(supplier.HasValue(-1));
  EXPECT_EQ(supplier.TextAt(-1), "");
  EXPECT_EQ(supplier.HasValue(kRowNumberColumn),
            supplier.ReadValue(kRowNumberColumn, ColumnFormat::Automatic).has_value());
  return row;
}

inline void ExpectEnd(TDataSupplier& supplier) {
  EXPECT_TRUE(supplier.AtEnd());
  EXPECT_EQ(supplier.CurrentRow(), supplier.RowCount() + 1);
  EXPECT_TRUE(supplier.NextRow()) << "there is nothing behind the end";
  EXPECT_EQ(supplier.CurrentRow(), supplier.RowCount() + 1);
  for (const std::int32_t column : {0, kRowNumberColumn}) {
    EXPECT_EQ(supplier.ReadValue(column, ColumnFormat::Automatic), std::nullopt);
    EXPECT_FALSE(supplier.HasValue(column));
  }
}

/// Every column is found by what it may be called.
inline void ExpectColumnsFound(TDataSupplier& supplier) {
  const std::vector<std::string> names = supplier.ColumnNames();
  for (std::size_t i = 0; i < names.size(); ++i) {
    const auto place = static_cast<std::int32_t>(i);
    EXPECT_EQ(supplier.ColumnIndex(names[i]), place) << names[i];
    EXPECT_EQ(supplier.ColumnIndex("#" + std::to_string(i)), place);
  }
  EXPECT_LT(supplier.ColumnIndex("no such column"), 0);
  EXPECT_LT(supplier.ColumnIndex("#" + std::to_string(names.size())), 0);
  EXPECT_LT(supplier.ColumnIndex("#-1"), 0);
  EXPECT_EQ(supplier.ColumnIndex(kRowNumberName), kRowNumberColumn);
}

/// Blocks hold the values of the rows, on however many threads they are read.
inline void ExpectSameBlocks(TDataSupplier& supplier, const std::vector<WalkedRow>& rows) {
  const BlockSource* const blocks = supplier.Blocks();
  if (blocks == nullptr || rows.empty()) return;
  const auto behind = static_cast<std::size_t>(blocks->HeaderRows());
  std::vector<ColumnRequest> requests;
  for (std::size_t i = 0; i < rows.front().values.size(); ++i) {
    requests.push_back({static_cast<std::int32_t>(i), ColumnFormat::Automatic});
  }
  for (const int threads : {1, 2, 0}) {
    std::size_t row = 0;
    blocks->ReadBlocks(requests, threads, [&](const RowBlock& block) {
      EXPECT_EQ(block.first_row, static_cast<std::int64_t>(row) + 1);
      for (std::int64_t at = 0; at < block.rows; ++at, ++row) {
        if (row + behind >= rows.size()) return false;
        const WalkedRow& walked = rows[row + behind];
        EXPECT_EQ(blocks->LineOf(block, at), walked.line) << row;
        for (std::size_t i = 0; i < requests.size(); ++i) {
          const double value = block.Column(i)[static_cast<std::size_t>(at)];
          const auto read = std::isnan(value) ? std::nullopt : std::optional(value);
          EXPECT_EQ(read, walked.values[i]) << row << ", column " << i;
          if (block.complete[i] != 0) {
            EXPECT_FALSE(std::isnan(value));
          }
        }
      }
      return true;
    });
    EXPECT_EQ(row + behind, rows.size()) << threads;
  }
}

/// All rows, one by one; then by leaps of every length, from the first row, and in blocks.
inline std::vector<WalkedRow> ExpectWalks(TDataSupplier& supplier) {
  std::vector<WalkedRow> rows;
  for (supplier.FirstRow(); !supplier.AtEnd(); supplier.NextRow()) rows.push_back(RowAt(supplier));
  ExpectEnd(supplier);
  const auto count = static_cast<std::int32_t>(rows.size());
  EXPECT_EQ(supplier.RowCount(), count);
  for (const std::int32_t leap : {-1, 0, 1, 2, count / 2, count - 1, count, count + 1, count + 9}) {
    supplier.FirstRow();
    supplier.SkipRows(leap);
    const std::int32_t at = std::max(leap, 0);
    if (at < count) {
      EXPECT_EQ(RowAt(supplier), rows[static_cast<std::size_t>(at)]) << "behind " << leap;
      EXPECT_FALSE(supplier.AtEnd());
    } else {
      ExpectEnd(supplier);
    }
    if (at + 1 >= count) continue;
    EXPECT_FALSE(supplier.NextRow());
    EXPECT_EQ(RowAt(supplier), rows[static_cast<std::size_t>(at) + 1]);
  }
  for (std::size_t i = 1; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].number, rows[i - 1].number + 1);
    EXPECT_GT(rows[i].line, rows[i - 1].line);
  }
  ExpectColumnsFound(supplier);
  supplier.FirstRow();
  ExpectSameBlocks(supplier, rows);
  return rows;
}

}  // namespace tarnwick::testing
