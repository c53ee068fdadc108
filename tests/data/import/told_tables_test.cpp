#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "data/import/import_file.h"
#include "data/import/loader.h"
#include "data/points/point_columns.h"
#include "import/table_texts.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::Rows;

TEST(GuessedTables, TellWhatTheirFieldsLeaveOpen) {
  const std::string commas = "the commas in \"v\" are read as the mark of decimals";
  const struct {
    const char* what;
    std::string text;
    std::string told;
  } tables[] = {
      {"thousands or decimals", "t;v\n1;1,000\n2;2,137\n3;3,274\n", commas},
      {"two digits behind a comma", "t;v\n1;1,000\n2;2,13\n3;3,274\n", ""},
      {"nothing before a comma", "t;v\n1;0,137\n2;1,137\n3;2,274\n", ""},
      {"settled by another column", "t;v\n0,5;1,000\n1,5;2,137\n2,5;3,274\n", ""},
      {"another unit further down", "t,v\n1,800 Hz\n2,900 Hz\n3,1 kHz\n",
       "the units in \"v\" differ (\"Hz\" and \"kHz\"): all numbers are in Hz"},
      {"units of different things", "t,v\n1,800 Hz\n2,900 Hz\n3,1 V\n",
       "the units in \"v\" differ (\"Hz\" and \"V\"): numbers are read as they stand"},
      {"a number without the unit", "t,v\n1,5 mV\n2,6\n3,7 mV\n",
       "the units in \"v\" differ (\"mV\" and none)"},
      {"one unit, zero without it", "t,v\n1,0\n2,6 mV\n3,7 mV\n", ""},
      {"two columns that rise",
       "n,Length,2theta\n5,9,2.1\n3,11,2.2\n4,14,2.5\n9,18,2.6\n1,23,2.7\n8,29,3\n7,36,3.1\n2,44,3."
       "5\n",
       "\"2theta\" is taken as X, though \"Length\" rises as well"},
      {"days of nine digits", "Date,v\n200701011,5\n200701021,6\n200701031,7\n",
       "\"Date\" is read as numbers, not as dates (200701011)"},
      {"days as spreadsheets count them", "Date,v\n45000.25,5\n45000.5,6\n45000.75,7\n",
       "\"Date\" is read as numbers, not as dates (45000.25)"},
      {"a flag is no unit", "t,v\n1,5\n2,6*\n3,7*\n", ""},
      {"a night", "time,v\n23:00,5\n23:30,6\n00:00,7\n00:30,8\n",
       "the times in \"time\" go on past midnight"},
      {"a day", "time,v\n11:00,5\n11:30,6\n12:00,7\n12:30,8\n", ""},
      {"nothing tells X", "a,b,c\n5,50,7\n3,70,2\n9,10,8\n1,60,3\n8,30,9\n2,90,1\n",
       "\"a\" is taken as X because nothing tells"},
      {"an epoch of two values gives way",
       "2000,5,8\n2000,4,3\n1950,7,9\n2000,8,1\n2000,2,3\n2000,9,4\n2000,1,3\n1950,6,2\n",
       "\"(col 1)\" is taken as X because nothing tells"},
      {"fractions", "game,won,v\n5,1/4,8\n6,3/35,9\n7,2/5,7\n",
       "\"won\" is left out: \"1/4\" is read as no number"},
      {"one value below zero in three columns",
       "t,a,b,c\n" + Rows(25, "1@,@.5,@@,4@.5") + "35,-0.01,-0.01,-0.01\n36,-0.01,-0.01,-0.01\n",
       "\"a\", \"b\" and \"c\" are -0.01 in several rows and never below zero else"},
      {"several values below zero",
       "t,a,b,c\n" + Rows(25, "1@,@.5,@@,4@.5") + "35,-0.01,-0.01,-0.01\n36,-0.02,-0.3,-0.1\n", ""},
      {"laps", "lap,v\n00:31,5\n00:35,6\n00:30,7\n00:34,8\n", ""},
      {"a clock that is left out beside its date",
       "when,clock,v\n2024-03-01 23:00,23:00,5\n2024-03-01 23:30,23:30,6\n"
       "2024-03-02 00:00,00:00,7\n",
       ""},
  };
  const testing::TemporaryFolder folder;
  for (const auto& table : tables) {
    std::string notes;
    for (const std::string& note : ImportFile(folder.Write("t.txt", table.text)).notes) {
      const bool doubt =
          note.starts_with("the commas") || note.starts_with("the units") ||
          note.starts_with("the times in") || note.find("nothing tells") != note.npos ||
          note.ends_with("no number") || note.find("rises as well") != note.npos ||
          note.find("not as dates") != note.npos || note.find("far from all") != note.npos ||
          note.find("below zero else") != note.npos;
      if (doubt) notes += note;
    }
    EXPECT_TRUE(table.told.empty() ? notes.empty() : notes.starts_with(table.told))
        << table.what << ": " << notes;
  }
}

TEST(GuessedTables, AreLookedAtTwice) {
  const struct {
    const char* what;
    std::string text;
    std::string told;  ///< a note begins so; "": none of them
  } tables[] = {
      {"values far above", "a,b\n1,2\nc\n3,4\nd\n5,6\nx,y\n" + Rows(100, "@,@@"),
       "3 lines further above hold values as the rows do"},
      {"settings far above", "a,b\n1,2\nc\n3,4\nx,y\n" + Rows(100, "@,@@"), ""},
      {"rows behind a mark", Rows(9, "P1 1@ 2@.5 3@\nP2 1@ 3@.5 4@\n!  2011 9 1@ 0"),
       "lines that begin with \"!\" are passed over as remarks, though 9 of them hold values"},
      {"remarks behind a mark", Rows(9, "! seen @ times\nP1 1@ 2@.5 3@\nP2 1@ 3@.5 4@"), ""},
      {"more numbers above than rows",
       Rows(14, "set @ to 5 of 7 for it") + "x y z\n" + Rows(12, "@ @@ 5@"),
       "the table has 12 rows, while 14 lines above it hold numbers as well"},
      {"a first row far away", "1000.5 2\n" + Rows(20, "0.@5 1.@7"),
       "the first row has 1000.5 in \"(col 0)\", far from all others, 0.05 to 0.95"},
      {"a last row far away", Rows(20, "@ 1.@7") + "20 9000\n",
       "the last row has 9000 in \"(col 1)\", far from all others, 1.07 to 1.97"},
      {"a last row of many decades", Rows(20, "@ 1e-@7") + "20 9000\n", ""},
      {"a first row that stands for no value", "0 -9999\n" + Rows(20, "1@ 1.@7"), ""},
      {"dates and numbers by turns", "t;v\n" + Rows(6, "1@;12.5\n2@;12.5.2020"),
       "the fields of \"v\" read as numbers in some rows and as dates in others"},
      {"names of numbers", "CIE\n\n1 2.5 1 50.0\n" + Rows(12, "@ 1 @.5 5@.25"), ""},
      {"years", "place,2019,2020,2021\n" + Rows(12, "p@,@.5,@.5,@@"), ""},
      {"names of another alphabet", "t,\xCD\xE0\xEF\xF0\n" + Rows(9, "@,@@"),
       "the names are no UTF-8 and read as Windows-1252"},
      {"signs of their own", Rows(9, "@;-;1@.5"),
       "the signs in \"(col 1)\" are left out: \"(col 2)\" is read without them"},
      {"nothing under a name", "t;s;d\n" + Rows(9, "@;-;1@.5"), ""},
      {"an accent", "t,L\xE4nge\n" + Rows(9, "@,@@"), ""},
      {"another alphabet in UTF-8", "t,\xD0\x9D\xD0\xB0\xD0\xBF\n" + Rows(9, "@,@@"), ""},
  };
  const testing::TemporaryFolder folder;
  for (const auto& table : tables) {
    std::string notes;
    for (const std::string& note : ImportFile(folder.Write("t.txt", table.text)).notes) {
      const auto holds = [&note](const char* words) { return note.find(words) != note.npos; };
      if (holds("further above") || holds("passed over as") || holds("hold numbers as well") ||
          holds("far from all others, ") || holds("as dates in others") || holds("may be none") ||
          holds("no UTF-8") || holds("the signs in")) {
        notes += note;
      }
    }
    EXPECT_TRUE(table.told.empty() ? notes.empty() : notes.starts_with(table.told))
        << table.what << ": " << notes;
  }
}

TEST(GuessedTables, GoOnFromRowToRow) {
  const testing::TemporaryFolder folder;
  const auto points = [&](const char* text) {
    const ImportResult result = ImportFile(folder.Write("t.csv", text));
    const PointChain& chain = result.series.front()->Points();
    return std::pair(XValues(chain), YValues(chain));
  };
  using Values = std::vector<double>;
  EXPECT_EQ(points("time,v\n18:00,1\n21:00,2\n00:00,3\n06:00,4\n18:00,5\n00:00,6\n"),
            (std::pair<Values, Values>({0.75, 0.875, 1, 1.25, 1.75, 2}, {1, 2, 3, 4, 5, 6})));
  EXPECT_EQ(points("t,v\n1,800 Hz\n2,0\n3,1.5 kHz\n4,2 kHz\n"),
            (std::pair<Values, Values>({1, 2, 3, 4}, {800, 0, 1500, 2000})));
}

TEST(GuessedTables, ArePartedByRemarks) {
  const std::string ring = "0 0\n1 1\n2 0\n1 -1\n0 0\n", rise = "0 1\n1 2\n2 3\n";
  const struct {
    const char* what;
    std::string text;
    std::size_t runs;
    std::size_t gaps;
  } tables[] = {
      {"outlines behind comments", "# a\n" + ring + "# b\n" + ring + "# c\n" + ring, 1, 2},
      {"outlines behind marks", ">\n" + ring + "> -Z5\n" + ring, 1, 1},
      {"outlines behind rows of nines", ring + "999.0 99.0\n" + ring + "999.0 99.0\n" + ring, 1, 2},
      {"outlines behind rows of nothing", ring + "NaN NaN\n" + ring, 1, 1},
      {"outlines behind numbered comments", "# seg 0\n" + ring + "# seg 1\n" + ring, 1, 1},
      {"runs behind comments", "# a\n" + rise + "# b\n" + rise, 2, 0},
      {"a row without X in a table in no order", "1 3\n2 4\n3 1\nNA NA\n1 5\n4 2\n2 2\n", 1, 1},
      {"runs with nothing between", Rows(7, "@ @@") + Rows(7, "@ 9@") + Rows(5, "@ 7@"), 1, 2},
      {"falling runs", "9 1\n8 2\n7 3\n6 4\n9 5\n8 6\n7 7\n6 8\n9 9\n8 1\n7 2\n6 3\n", 1, 2},
      {"runs that do not begin anew", Rows(7, "@ @@") + Rows(7, "@ 9@") + "6 7\n2 3\n4 5\n", 1, 0},
      {"a remark within a run", rise + "# restarted\n3 5\n4 6\n", 1, 0},
  };
  const testing::TemporaryFolder folder;
  for (const auto& table : tables) {
    const ImportResult result = ImportFile(folder.Write("t.txt", table.text));
    EXPECT_EQ(result.series.size(), table.runs) << table.what;
    EXPECT_EQ(result.series.front()->Gaps().Begins().size(), table.gaps) << table.what;
    LoadOptions value_by_value;
    value_by_value.value_by_value = true;
    TDataSeries* const series = result.series.front().get();
    RefreshAll({&series, 1}, value_by_value);
    EXPECT_EQ(series->Gaps().Begins().size(), table.gaps) << table.what << ", read slowly";
  }
}

}  // namespace
}  // namespace tarnwick
