#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "base/progress.h"
#include "data/columns/import_options.h"
#include "data/columns/import_source.h"
#include "database/made_database.h"
#include "sources/arrays/array_columns.h"
#include "sources/arrays/array_supplier.h"
#include "sources/database/database_source.h"
#include "sources/database/thinned_supplier.h"
#include "sources/links/link_supplier.h"
#include "support/supplier_walk.h"

namespace tarnwick {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

TEST(SourceWalk, ComesToTheSameOverArrays) {
  const std::vector<NamedArray> arrays = ParseArrayList(
      "array\trun/t\t\tnumbers\t5\t\nattribute\tunits\tdays since 2024-01-01\n"
      "array\trun/u\t\tnumbers\t5\t\narray\trun/table\t\tnumbers\t5\t\t2\t\n");
  const ArrayTable table = ChooseArrays(arrays, {}, "f.h5");
  int reads = 0;
  TArraySupplier supplier(table, "f.h5", [&](std::span<const ArrayColumn> asked, Progress&) {
    ++reads;
    std::vector<std::vector<double>> values;
    for (const ArrayColumn& column : asked) {
      const double first = static_cast<double>(column.full_path.size());
      values.push_back({first, first + 1, kNone, first + 3, first - 9});
    }
    return values;
  });
  const std::vector<testing::WalkedRow> rows = testing::ExpectWalks(supplier);
  ASSERT_EQ(rows.size(), 5u);
  EXPECT_EQ(reads, 4) << "each column once";
  EXPECT_EQ(rows[1].values, (std::vector<std::optional<double>>{45298, 6, 13, 13}));
  EXPECT_EQ(rows[1].texts[0], "2024-01-07");
  EXPECT_EQ(rows[2].values[1], std::nullopt);
  EXPECT_EQ(rows[4].place, "row 5");
  EXPECT_EQ(supplier.ColumnIndex("/run/u"), 1);
  EXPECT_EQ(supplier.ColumnIndex("run/u"), 1);
  EXPECT_EQ(supplier.ColumnIndex("un/u"), -1);
}

TEST(SourceWalk, ComesToTheSameOverLinks) {
  TLinkSupplier supplier("a|b!c, a|b!d; e|f!d");
  supplier.Put(0, "1.5 V");
  supplier.Put(2, "2024-03-07");
  supplier.SetClock(45000.5);
  const std::vector<testing::WalkedRow> rows = testing::ExpectWalks(supplier);
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].values, (std::vector<std::optional<double>>{1.5, std::nullopt, 45358}));
  EXPECT_EQ(supplier.ColumnNames(), (std::vector<std::string>{"c", "a|b!d", "e|f!d"}));
  EXPECT_EQ(supplier.ColumnIndex("a|b!c"), 0);
  EXPECT_EQ(supplier.ColumnIndex(kJoinedTimeName), kJoinedTimeColumn);
  EXPECT_EQ(supplier.ReadValue(kJoinedTimeColumn, ColumnFormat::Automatic), 45000.5);
  EXPECT_EQ(supplier.ReadValue(kRowNumberColumn, ColumnFormat::Automatic), 1);
  EXPECT_TRUE(supplier.HasValue(kJoinedTimeColumn));
  EXPECT_FALSE(supplier.HasValue(1));
  supplier.NextRow();
  EXPECT_FALSE(supplier.HasValue(kJoinedTimeColumn));
}

TEST(SourceWalk, ComesToTheSameOverATable) {
  const testing::MadeDatabase base({"CREATE TABLE t (x REAL, y REAL, n TEXT)",
                                    "INSERT INTO t VALUES (1, 5.5, 'a'), (2, NULL, '7'), (3, 4, "
                                    "''), (4, 8, NULL), (5, 1, 'b')"});
  for (const DatabasePlace& place : {base.Place("t"), base.Place("", "SELECT * FROM t")}) {
    NoProgress unseen;
    const ImportSource source = OpenDatabase(place, {}, unseen);
    const std::vector<testing::WalkedRow> rows = testing::ExpectWalks(*source.supplier);
    ASSERT_EQ(rows.size(), 5u);
    EXPECT_EQ(rows[1].values, (std::vector<std::optional<double>>{2, std::nullopt, 7}));
    EXPECT_EQ(rows[4].texts, (std::vector<std::string>{"5", "1", "b"}));
  }
}

TEST(SourceWalk, ComesToTheSameOverAThinnedTable) {
  const testing::MadeDatabase base(
      {"CREATE TABLE t (x REAL, y REAL, z REAL)",
       "INSERT INTO t VALUES (1, 5.5, 2), (2, NULL, 3), (3, 4, NULL), (4, 8, 1)"});
  NoProgress unseen;
  for (const FirstPicture picture : {FirstPicture::Whole, FirstPicture::Coarse}) {
    ThinnedSupplier supplier(OpenDatabase(base.Place("t"), {}, unseen).supplier, base.Place("t"),
                             picture);
    EXPECT_EQ(supplier.ReadValue(1, ColumnFormat::Automatic), 5.5)
        << "of the table, before columns are named";
    RowPlan plan;
    plan.x_column = 0;
    for (const std::int32_t column : {0, 1, 2})
      plan.columns.push_back({column, ColumnFormat::Automatic});
    ASSERT_TRUE(supplier.Expect(plan, unseen));
    const std::vector<testing::WalkedRow> rows = testing::ExpectWalks(supplier);
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[1].values, (std::vector<std::optional<double>>{2, std::nullopt, 3}));
    EXPECT_EQ(rows[3].values, (std::vector<std::optional<double>>{4, 8, 1}));
    EXPECT_EQ(supplier.Size(), 4);
    EXPECT_EQ(supplier.ReadValue(1, ColumnFormat::DateTime), std::nullopt) << "not so asked for";
  }
}

}  // namespace
}  // namespace tarnwick
