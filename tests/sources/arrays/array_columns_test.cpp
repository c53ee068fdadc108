#include "sources/arrays/array_columns.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/day_number.h"
#include "data/block_source.h"
#include "data/fields/field_value.h"
#include "data/import/loader.h"
#include "data/packed/unpack.h"
#include "data/series/data_series.h"
#include "sources/arrays/array_part.h"
#include "sources/arrays/array_supplier.h"
#include "sources/arrays/time_units.h"
#include "support/cancelling_progress.h"
#include "support/refusal.h"

namespace tarnwick {
namespace {

using testing::Refusal;

const std::vector<NamedArray> kFile = ParseArrayList(
    "array\trun/b\t\tnumbers\t4\t\nattribute\tunits\tV\nattribute\tlong_name\tVoltage\n"
    "array\trun/table\t\tnumbers\t4\t\t2\t\n"
    "array\tother/b\t\tnumbers\t4\t\nattribute\tlong_name\tVoltage\nattribute\tunits\tV\n"
    "array\tlong\t\tnumbers\t9\t\n"
    "array\twide\t\tnumbers\t4\t\t65\t\n"
    "array\tcube\t\tnumbers\t4\t\t4\t\t4\t\n"
    "array\twords\t\tother\t4\t\n"
    "array\tone\t\tnumbers\t1\t\n"
    "array\tabsurd\t\tnumbers\t99999999999999999999\t\n");

std::string NamesOf(const ArrayTable& table) {
  std::string names;
  for (const ArrayColumn& column : table.columns) names += column.name + ' ';
  return names + std::to_string(table.rows);
}

TEST(ArrayColumns, MostOfOneLengthAreTheTable) {
  const ArrayTable table = ChooseArrays(kFile, {}, "f.h5");
  EXPECT_EQ(NamesOf(table), "run/b table[0] table[1] other/b 4");
  ASSERT_EQ(table.notes.size(), 2U);
  EXPECT_EQ(
      table.notes[0],
      R"(the arrays of 4 values, "run/b", "run/table" and "other/b", are shown, beside them is )"
      R"("long" (--array names others))");
  EXPECT_EQ(
      table.notes[1],
      "not read, with more than two axes or 64 columns: \"wide\" (4 × 65) and \"cube\" (4 × 4 × 4) "
      "(--array \"wide[:,0]\" reads a line of it)");
  EXPECT_EQ(ParseArrays(ArraysText(table.read)), table.read);
}

TEST(ArrayColumns, PathsGroupsAndLastPartsAreAskedFor) {
  const auto asked = [](const char* text) {
    return NamesOf(ChooseArrays(kFile, ParseArrays(text), "f.h5"));
  };
  EXPECT_EQ(asked("long"), "long 9");
  EXPECT_EQ(asked("/run/"), "Voltage [V] table[0] table[1] 4");
  EXPECT_EQ(asked("table; other/b"), "table[0] table[1] Voltage [V] 4");
  EXPECT_EQ(asked("one"), "one 1");
  EXPECT_TRUE(asked("wide").ends_with("wide[64] 4"));
  const auto refused = [&](const char* text) { return Refusal([&] { asked(text); }); };
  EXPECT_EQ(refused("none").substr(0, 38), "There is no array \"none\": f.h5, arrays");
  EXPECT_EQ(refused("cube"),
            "The array is no column of numbers and no table of columns: f.h5, \"cube\" (4 × 4 × 4) "
            "(--array \"cube[0,0,:]\" reads a line of it)");
  EXPECT_EQ(refused("long;run/b"),
            "The arrays are not of one length: f.h5, \"long\" (9) and \"run/b\" (4)");
  EXPECT_EQ(Refusal([] { ChooseArrays(std::span(kFile).subspan(5, 2), {}, "f.h5"); }),
            "No array of the file is a column of numbers: f.h5, it holds \"cube\" (4 × 4 × 4) and "
            "\"words\" (4, no numbers)");
  const std::string too_long =
      "A column of numbers is too long: up to 209715200 values of one are read: f.h5, ";
  EXPECT_EQ(refused("absurd").substr(0, too_long.size()), too_long);
  EXPECT_EQ(Refusal([] {
              ChooseArrays(std::span(kFile).subspan(8), {}, "f.h5");
            }).substr(0, too_long.size()),
            too_long);
}

TEST(ArrayColumns, TheAxisGoesFirstAndComesAlong) {
  const std::vector<NamedArray> file = ParseArrayList(
      "array\tT\t\tnumbers\t3\ttime\t2\tz\n"
      "array\tz\t\tnumbers\t2\tz\narray\ttime\t\tnumbers\t3\ttime\n");
  EXPECT_EQ(NamesOf(ChooseArrays(file, {}, "f.nc")), "time T[0] T[1] 3");
  EXPECT_TRUE(ChooseArrays(file, {}, "f.nc").notes.empty()) << "z only numbers the columns of T";
  EXPECT_EQ(NamesOf(ChooseArrays(file, ParseArrays("T"), "f.nc")), "time T[0] T[1] 3");
}

TEST(ArrayColumns, OfAGridNoAxisIsTakenForTheData) {
  const std::vector<NamedArray> grid = ParseArrayList(
      "array\tlon\t\tnumbers\t144\tlon\narray\tlat\t\tnumbers\t73\tlat\n"
      "array\tHGT\t\tnumbers\t21\t\t73\tlat\t144\tlon\n");
  EXPECT_EQ(Refusal([&] { ChooseArrays(grid, {}, "hgt.nc"); }),
            "What the file holds has more than two axes or 64 columns, which is no table: hgt.nc, "
            "\"HGT\" (21 × 73 × 144) (--array \"HGT[0,0,:]\" reads a line of it)");
  EXPECT_EQ(NamesOf(ChooseArrays(grid, ParseArrays("lon"), "hgt.nc")), "lon 144");
}

TEST(ArrayColumns, ALineThroughABlockHasItsAxis) {
  const std::vector<NamedArray> grid = ParseArrayList(
      "array\tlon\t\tnumbers\t4\tlon\narray\tlat\t\tnumbers\t3\tlat\n"
      "array\trun/HGT\t\tnumbers\t2\t\t3\tlat\t4\tlon\nattribute\tlong_name\tHeight\n"
      "attribute\tunits\tm\n");
  const auto asked = [&](const char* text) {
    return ChooseArrays(grid, ParseArrays(text), "hgt.nc");
  };
  const ArrayTable table = asked("HGT[ 1, 2,:]; run/HGT[0,2,:]");
  EXPECT_EQ(NamesOf(table), "lon Height[1,2,:] [m] Height[0,2,:] [m] 4");
  EXPECT_EQ(table.columns[1].line, "1,2,:");
  EXPECT_EQ(NamesOf(asked(ArraysText(table.read).c_str())), NamesOf(table))
      << "kept and read again";
  EXPECT_EQ(NamesOf(asked("HGT[1,:,0]")), "lat Height[1,:,0] [m] 3");
  for (const char* const wrong : {"HGT[2,0,:]", "HGT[0,:]", "HGT[0,:,:]", "HGT[0,0,0]", "HGT[]",
                                  "HGT[-1,0,:]", "HGT[a,0,:]"}) {
    EXPECT_EQ(Refusal([&] { asked(wrong); }),
              "A line names a place on each axis, counted from 0, and \":\" on that of the rows: "
              "hgt.nc, \"run/HGT\" (2 × 3 × 4)")
        << wrong;
  }
}

/// Of stations in time, as the conventions have them.
TEST(ArrayColumns, RowsRunAlongTheTime) {
  const std::string stations =
      "array\tnum\t\tnumbers\t2\tstation\n"
      "array\ttime\t\tnumbers\t3\ttime\nattribute\tunits\tdays since 1970-01-01\n"
      "attribute\tbounds\ttime_bnds\n"
      "array\ttime_bnds\t\tnumbers\t3\ttime\t2\tnv\n"
      "array\tpr\t\tnumbers\t2\tstation\t3\ttime\nattribute\tcoordinates\tlat lon num\n"
      "array\tlat\t\tnumbers\t2\tstation\narray\tlon\t\tnumbers\t2\tstation\n";
  const std::vector<NamedArray> file = ParseArrayList(stations);
  const ArrayTable table = ChooseArrays(file, {}, "f.nc");
  EXPECT_EQ(NamesOf(table), "time pr[0] pr[1] 3");
  EXPECT_EQ(table.columns[2].line, "1,:");
  ASSERT_EQ(table.notes.size(), 1U);
  EXPECT_EQ(table.notes[0],
            "the arrays of 3 values, \"time\" and \"pr\", are shown, beside them are \"num\", "
            "\"lat\" and \"lon\" (--array names others)");
  EXPECT_EQ(NamesOf(ChooseArrays(file, table.read, "f.nc")), NamesOf(table));
  EXPECT_EQ(NamesOf(ChooseArrays(file, ParseArrays("time_bnds"), "f.nc")),
            "time time_bnds[0] time_bnds[1] 3")
      << "bounds are read when they are asked for";
}

TEST(ArrayColumns, BoundsOfACoordinateAreNoData) {
  const std::vector<NamedArray> cut = ParseArrayList(
      "array\ttime\t\tnumbers\t1\ttime\nattribute\tbounds\ttime_bounds\n"
      "array\ttime_bounds\t\tnumbers\t2\tnv\n"
      "array\train\t\tnumbers\t118\ty\t87\tx\n");
  EXPECT_EQ(Refusal([&] { ChooseArrays(cut, {}, "f.nc"); }),
            "What the file holds has more than two axes or 64 columns, which is no table: f.nc, "
            "\"rain\" (118 × 87) (--array \"rain[:,0]\" reads a line of it)");
}

TEST(ArrayColumns, AttributesSayWhatNumbersMean) {
  const std::vector<NamedArray> file = ParseArrayList(
      "array\tt\t\tnumbers\t3\t\nattribute\tunits\thours since 2024-03-04 12:00:00\n"
      "array\tT\t\tnumbers\t3\t\nattribute\t_FillValue\t-9\nattribute\tmissing_value\t-8 NaN\n"
      "attribute\tscale_factor\t0.5\nattribute\tadd_offset\t100\n"
      "array\tu\t\tnumbers\t3\t\nattribute\tunits\tdays since "
      "2024-03-04\nattribute\tcalendar\tnoleap\n");
  const ArrayTable table = ChooseArrays(file, {}, "f.nc");
  EXPECT_EQ(NamesOf(table), "t T u [days since 2024-03-04] 3");
  EXPECT_TRUE(table.columns[0].meaning.is_date);
  EXPECT_EQ(MomentText(table.columns[0].meaning.ValueOf(36)), "2024-03-06");
  const StoredMeaning& scaled = table.columns[1].meaning;
  EXPECT_EQ(scaled.ValueOf(6), 103);
  for (const double missing : {-9.0, -8.0, std::nan(""), 9.969209968386869e36}) {
    EXPECT_TRUE(IsMissingValue(scaled.ValueOf(missing))) << missing;
  }
  EXPECT_FALSE(IsMissingValue(scaled.ValueOf(INFINITY)));
  EXPECT_TRUE(std::isnan(scaled.ValueOf(INFINITY)));
  EXPECT_EQ(table.columns[2].meaning.ValueOf(5), 5);
  EXPECT_EQ(table.notes.back(), "\"u\" counts in the calendar \"noleap\" and is left as it stands");
}

TEST(TimeUnits, AreReadAsTheyAreWritten) {
  struct Row {
    const char* units;
    double days;
    const char* moment;
  };
  for (const Row& row :
       {Row{"days since 1970-01-01", 1, "1970-01-01"},
        Row{"Hours since 2000-01-01 06:00:00", 1.0 / 24, "2000-01-01 06:00:00"},
        Row{"seconds since 1970-01-01T00:00:00Z", 1.0 / 86400, "1970-01-01"},
        Row{"ms since 2024-03-04 12:00:00 +01:00", 1 / 86400e3, "2024-03-04 11:00:00"},
        Row{"days since 1-1-1 0:0:0.5", 1, "0001-01-01 00:00:00.500"}}) {
    const auto time = ParseCountedTime(row.units);
    ASSERT_TRUE(time.has_value()) << row.units;
    EXPECT_DOUBLE_EQ(time->days, row.days) << row.units;
    EXPECT_EQ(MomentText(time->day), row.moment) << row.units;
  }
  for (const char* const none :
       {"days", "months since 2000-01-01", "degrees", "days since spring", ""}) {
    EXPECT_FALSE(ParseCountedTime(none).has_value()) << none;
  }
}

TEST(ArraySupplier, RowsAndBlocksSayTheSame) {
  ArrayTable table = ChooseArrays(kFile, ParseArrays("run"), "f.h5");
  table.columns[0].meaning.missing = {2};
  int reads = 0;
  TArraySupplier supplier(table, "f.h5", [&](std::span<const ArrayColumn> columns, Progress&) {
    reads += static_cast<int>(columns.size());
    return std::vector<std::vector<double>>(columns.size(), {1, 2, NAN, 4});
  });
  EXPECT_EQ(supplier.ColumnIndex("run/table[1]"), 2);
  EXPECT_EQ(supplier.ColumnIndex("b"), 0);
  const ColumnRequest requests[] = {{0, {}}, {0, ColumnFormat::UnixSeconds}};
  std::vector<double> seen;
  supplier.Blocks()->ReadBlocks(requests, 1, [&](const RowBlock& block) {
    seen.assign(block.Column(0).begin(), block.Column(0).end());
    EXPECT_EQ(block.Column(1)[3], *ValueOfField("4", ColumnFormat::UnixSeconds));
    EXPECT_EQ(block.complete[0], 0);
    return true;
  });
  EXPECT_EQ(reads, 1) << "a column is read once";
  ASSERT_EQ(seen.size(), 4U);
  for (std::size_t row = 0; row < seen.size(); ++row, supplier.NextRow()) {
    const std::optional<double> value = supplier.ReadValue(0, ColumnFormat::Automatic);
    EXPECT_EQ(value.has_value(), !std::isnan(seen[row])) << row;
    EXPECT_EQ(supplier.HasValue(0), !IsMissingValue(seen[row])) << row;
  }
  EXPECT_TRUE(supplier.AtEnd());
}

TEST(ArraySupplier, ReadingOfColumnsIsCancelledAndThePointsStay) {
  TArraySupplier supplier(ChooseArrays(kFile, ParseArrays("run"), "f.h5"), "f.h5",
                          [](auto, Progress& progress) -> std::vector<std::vector<double>> {
                            if (progress.Cancelled()) throw UnpackingCancelled("cancelled");
                            return {{1, 2, 3, 4}, {5, 6, 7, 8}};
                          });
  TDataSeries series;
  series.AddPoint(1, 2);
  series.Source().active = true;
  series.Source().XDataColumn = "run/table[1]";
  series.Source().YDataColumn = "b";
  testing::CancellingProgress cancelled(0);
  LoadOptions load;
  load.progress = &cancelled;
  EXPECT_TRUE(LoadDataSet(series, supplier, load).cancelled);
  EXPECT_EQ(series.PointCount(), 1);
  LoadDataSet(series, supplier, {});
  EXPECT_EQ(series.PointCount(), 4);
}

TEST(ArraySupplier, AFileThatChangedIsTold) {
  TArraySupplier supplier(ChooseArrays(kFile, {}, "f.h5"), "f.h5",
                          [](std::span<const ArrayColumn>, Progress&) {
                            return std::vector<std::vector<double>>{{1, 2}};
                          });
  EXPECT_EQ(Refusal([&] { supplier.HasValue(0); }), "The file changed while it was read: f.h5");
}

}  // namespace
}  // namespace tarnwick
