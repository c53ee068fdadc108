#include "data/columns/missing_meaning.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "data/import/import_file.h"
#include "import/table_texts.h"

namespace tarnwick {
namespace {

using testing::Rows;

TEST(MissingMeaning, IsFoundInHeadsAndColumns) {
  const std::string declared = " as the head of the file says";
  const std::string exchange =
      "16, 1001\nName\nPlace\nInstrument\nMission\n1, 1\n2018, 04, 27, 2018, 04, "
      "27\n0\nStart_UTC\n2\n1, 1\n-9999, -99.5\na, "
      "m\nb, m\nLLOD_FLAG: -8888\nStart_UTC, a, b\n";
  const struct {
    const char* what;
    std::string text;
    const char* missing;
    bool by_head;
  } kCases[] = {
      {"a head of the exchange format",
       exchange + "1, 2, -99.5\n2, -9999, 5\n3, 7, -8888\n4, 6, 4\n5, 5, 3\n", "-9999 -99.5 -8888",
       true},
      {"a remark", "# missing values are coded as -1.5\nt,v\n" + Rows(9, "@,@@") + "10,-1.5\n",
       "-1.5", true},
      {"a setting", "# NODATA_value -7777\n# t v\n" + Rows(9, "@ @@") + "10 -7777\n", "-7777",
       true},
      {"what the rows never hold", "# missing: -7777\nt,v\n" + Rows(9, "@,@@"), "", false},
      {"what lies among the values", "# missing: -1\nt,v\n1,-5\n2,-1\n3,0\n4,1\n5,-2\n", "", false},
      {"how many are missing", "# missing values: 3\nt,v\n1,5\n2,2\n3,0\n4,1\n5,3\n", "", false},
      {"far below zero", "t,v\n" + Rows(20, "@,@@") + "20,-1000000000\n21,-1000000000\n",
       "-1000000000", false},
      {"minus nine", "t,v\n" + Rows(10, "@,13@") + Rows(10, "1@,14@") + "20,-9\n21,-9\n22,134\n",
       "-9", false},
      {"a temperature of minus nine, too",
       "t,v,temp\n" + Rows(10, "@,13@,-1@") + Rows(10, "1@,14@,-2@") +
           "20,-9,-9\n21,-9,-8\n22,134,-7\n",
       "", false},
      {"minus nine and smaller values", "t,v\n" + Rows(20, "@,@") + "20,-9\n21,-9\n22,13\n", "",
       false},
  };
  for (const auto& row : kCases) {
    const ImportResult result = ImportText(row.text, "t");
    EXPECT_EQ(result.series.front()->Source().MissingValues, row.missing) << row.what;
    EXPECT_EQ(std::ranges::any_of(
                  result.notes, [&](const std::string& note) { return note.ends_with(declared); }),
              row.by_head)
        << row.what;
  }
}

TEST(MissingMeaning, IsOfSingleColumnsWhereOthersMayMeasureIt) {
  std::string buoy = "t,deg,h\n", counts = "t,v,sd,n\n", probe = "# bad_flag = -9.990e-29\nt,v,w\n";
  for (int i = 0; i < 60; ++i) {
    const std::string t = std::to_string(i), v = std::to_string(70 + i);
    const bool none = i % 7 == 3;
    buoy += t + "," + v + ".5," + (none ? "99.00" : "1." + t) + (i == 29 ? "\n60,99,2\n" : "\n");
    counts += t + "," + v + (none ? ",-1,-1\n" : ",1." + v + "," + t + "\n");
    probe += t + ",-" + v + ".25," + (none ? "-9.990e-29\n" : v + ".5\n");
  }
  const struct {
    const char* what;
    const std::string& text;
    const char* missing;
    std::int64_t points;  // of the last DataSet
    const char* note;
  } kCases[] = {
      {"99 is a direction, and no height", buoy, "99@#2", 52, "99 stands for no value in \"h\""},
      {"nothing counted", counts, "-1@#2 -1@#3", 51, "-1 stands for no value in \"sd\" and \"n\""},
      {"declared, among numbers on both sides of it", probe, "-9.99E-29", 51,
       "-9.99E-29 stands for no value, as the head of the file says"},
  };
  for (const auto& row : kCases) {
    const ImportResult result = ImportText(row.text, "t");
    EXPECT_EQ(result.series.front()->Source().MissingValues, row.missing) << row.what;
    EXPECT_EQ(result.series.back()->PointCount(), row.points) << row.what;
    EXPECT_EQ(std::ranges::count(result.notes, row.note), 1) << row.what;
  }
}

TEST(MissingMeaning, DatesThatDoNotExistAreCalledSo) {
  const ImportResult result =
      ImportText("day,v\n2023-02-27,5\n2023-02-28,7\n2023-02-29,6\n2023-03-01,8\n", "t");
  EXPECT_EQ(result.reports.front().SkippedText(),
            "1 row skipped (X no date of the calendar; first at line 4)");
}

TEST(MissingMeaning, IsWhatTheUserSays) {
  ImportOptions options;
  options.missing = "";
  const ImportResult result =
      ImportText("# missing: -7777\nt,v\n" + Rows(9, "@,@@") + "9,-7777\n10,-9999\n", "t", options);
  EXPECT_EQ(result.series.front()->Source().MissingValues, "");
  EXPECT_EQ(result.series.front()->PointCount(), 11);
}

}  // namespace
}  // namespace tarnwick
