#include "data/import/missing_meaning.h"

#include <gtest/gtest.h>

#include <algorithm>
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
