// All that is told of a table, word by word and nothing beside it: what was decided that a person might have otherwise.
#include <gtest/gtest.h>

#include <string>

#include "data/import/import_file.h"
#include "import/table_texts.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::Described;
using testing::Rows;

TEST(GuessedTables, TellAllOfThisAndNothingElse) {
  const struct {
    const char* what;
    std::string text;
    const char *made, *told;
  } tables[] = {
      {"nothing to tell", "x,y\n" + Rows(9, "@,@@"), "x: y, 9", ""},
      {"a smaller table before",
       "x,y\n" + Rows(6, "@,@@") + "\nmeasured again\nt,u,v\n" + Rows(12, "@,@@,1@"), "t: u, v, 12",
       "the file holds 2 tables: read is the one from line 11 on, the other begins at line 2 "
       "(--headers 1 reads it)"},
      {"two smaller ones",
       "x,y\n" + Rows(6, "@,@@") + "\nsecond\na,b\n" + Rows(5, "@,@@") + "\nlast\nt,u,v\n" +
           Rows(12, "@,@@,1@"),
       "t: u, v, 12",
       "the file holds 3 tables: read is the one from line 19 on, another begins at line 2 "
       "(--headers 1 reads it)"},
      {"one row in 49 is another", "x,y,z\n" + Rows(47, "@,@@,1@") + "47,3\n48,4,5\n",
       "x: y, z, 49", "1 of the first 49 rows have another number of columns than the others"},
      {"one row in fifty is another", "x,y,z\n" + Rows(48, "@,@@,1@") + "48,3\n49,4,5\n",
       "x: y, z, 50", ""},
      {"names in two lines", ",Voltage,Voltage\ntime,left,right\n" + Rows(9, "@,@@,1@"),
       "time: Voltage left, Voltage right, 9",
       "the names are put together from lines 1 and 2 (--no-stacked-names takes the lower)"},
      {"numbers in brackets", "x,y\n" + Rows(9, "@,@@(2)"), "x: y +- y, 9",
       "what stands behind the numbers of \"y\" (\"± 0.2\", \"(5)\") is taken as their error"},
      {"more names than columns", "a,b,c,d\n" + Rows(9, "@,@@"), "a: b, 9",
       "line 1 holds 4 names for 2 columns: the last are left out"},
      {"words behind a mark", "x y\n" + Rows(9, "@ @@ # seen"), "x: y, 9",
       "remarks behind the values are passed over"},
      {"one row", "x,y\n1,2\n", "x: y, 1", "the table has one row only"},
      {"day and time of day", "Date,Time,y\n" + Rows(9, "2024-03-07,1@:00,@@"),
       "Date and time: y, 9", "\"Date\" and \"Time\" together are the time"},
      {"a count above rows from 0", "12\n" + Rows(13, "@ @@ 7@"), "(col 0): (col 1), (col 2), 13",
       ""},
      {"numbers that touch", "x,y,both\n" + Rows(9, "@,@@,5.088E-12.09190.391"), "x: y, 9",
       "\"both\" is left out: \"5.088E-12.09190.391\" is read as no number"},
      {"versions", "x,y,of\n" + Rows(9, "@,@@,1.2.3-b"), "x: y, 9", ""},
      {"no year", "month,day,y\n3,1,4\n3,2,5\n3,3,7\n3,4,5\n", "Date and time: y, 4",
       "\"month\" and \"day\" together are the time, in 2001 since there is no year"},
      {"year and month", "year,month,y\n2024,1,4\n2024,2,5\n2024,3,7\n2024,4,5\n",
       "Date and time: y, 4", "\"year\" and \"month\" together are the time"},
      {"a year with its decimals",
       "year,month,dec,y\n2024,1,2024.04,4\n2024,2,2024.12,5\n2024,3,2024.21,7\n",
       "Date and time: y, 3",
       "\"year\" and \"month\" together are the time; \"dec\" is left out: dates"},
      {"seconds since 1970", "time,y\n" + Rows(9, "170000000@,@@"), "time: y, 9",
       "\"time\" is read as seconds since 1970 (UTC)"},
      {"milliseconds", "time,y\n" + Rows(9, "170000000@000,@@"), "time: y, 9",
       "\"time\" is read as milliseconds since 1970 (UTC)"},
      {"days that are none", "day,x,y\n" + Rows(9, "2024-02-30,@,@@"), "x: y, 9",
       "\"day\" is left out: most of its dates are in no calendar"},
      {"zones", "t,y\n" + Rows(9, "2024-03-01T1@:00:00+01:00,@@"), "t: y, 9",
       "times with a zone are turned to UTC"},
      {"day or month first", "t,y\n" + Rows(9, "01/0@/2024,@@").substr(15), "t: y, 8",
       "the dates in \"t\" are read with the month first, though the day first would do as well"},
      {"pairs", "x1,y1,x2,y2\n" + Rows(9, "@,@@,@@,1@"), "x1: y1, y2, 9",
       "each column is shown over the \"x1\" column before it"},
      {"complex numbers", "f,Z,n\n" + Rows(9, "@,@+1.5j,@@"), "f: n, 9",
       "\"Z\" is left out: complex numbers, which are read where each part has a column of its "
       "own"},
      {"no calendar and no number", "x,y,z\n" + Rows(9, "@,@@,1/@"), "x: y, 9",
       "\"z\" is left out: \"1/0\" is read as no number"},
      {"kinds of rows",
       "Entity,Year,Deaths\n" + Rows(5, "A,200@,@@") + Rows(5, "B,200@,1@") + Rows(4, "C,200@,2@"),
       "Year: A, B, C, 5",
       "the rows belong to 3 kinds of \"Entity\", each is a DataSet of its own (--whole-table "
       "keeps them together)"},
      {"kinds of rows that a line joins",
       "t,band,v\n" + Rows(5, "1@,r,@@") + Rows(5, "1@,g,1@") + Rows(2, "1@,,2@"), "t: v, 12",
       "the rows belong to 2 kinds of \"band\" and are shown together"},
      {"marks behind numbers", "t,v\n0,0.5*\n1,1.5\n2,2.5*\n3,3\n4,5\n", "t: v, 5",
       "the marks behind some numbers of \"v\" are passed over"},
      {"a factor's letter", "t,v\n" + Rows(9, "@,1@.5n") + "9,0.\n", "t: v, 10",
       "letters behind numbers of \"v\" are factors (\"10.5n\" is 1.05E-8)"},
      {"places for zones", "t,v\n" + Rows(9, "2024-03-14 1@:00 America/New_York,@@"), "t: v, 9",
       "the places behind times, which tell their zones, are passed over"},
      {"angles and addresses", "t,dec,at,v\n" + Rows(9, "@,-0@:30:15.5,0x1@,@@"), "t: v, 9",
       "\"dec\" and \"at\" are left out: \"-00:30:15.5\" is read as no number"},
      {"several values in a field", "t,v\n" + Rows(9, "@,@@;5@"), "t: v 1, v 2, 9",
       "fields hold several values with \";\" between them: each is a column of its own"},
      {"places that come again at each X", "t,pos,T\n" + Rows(5, "@,0.5,2@\n@,1.5,3@\n@,3,4@"),
       "t: pos, T, 15",
       "\"pos\" goes through the same values at each \"t\": what belongs to one after the other is "
       "shown together"},
      {"numbered rows that end in texts", "a\tb\tkind\n" + Rows(9, "@\t1@\t@@\tk@"), "a: b, 9",
       "the first column has no name: the names are taken to begin over the second; "
       "\"(col 0)\" is left out: counting the rows"},
      {"an empty line", "x,y\n" + Rows(5, "@,@@") + "\n" + Rows(5, "@,1@"), "x: y, y, run 2, 5",
       "the file holds 2 runs parted by empty lines or remarks, each is a DataSet of its own"},
      {"errors", "x,y,dy\n" + Rows(9, "@,@@,0.@1"), "x: y +- dy, 9",
       "\"dy\" is taken as the error of \"y\""},
      {"errors in the field", "x,y\n" + Rows(9, "@,@@ ± 0.@1"), "x: y +- y, 9",
       "what stands behind the numbers of \"y\" (\"± 0.2\", \"(5)\") is taken as their error"},
      {"a number for none", "# missing value: -99\nx,y\n" + Rows(9, "@,@@") + "9,-99\n", "x: y, 9",
       "-99 stands for no value, as the head of the file says"},
      {"rows counted", "n,x,y\n1,0.5,4\n2,1.5,5\n3,2.5,7\n4,3.5,5\n", "x: y, 4",
       "\"n\" is left out: counting the rows"},
      {"series along rows", "name,2001,2002,2003,2004\na,1,4,3,5\nb,7,4,6,5\nc,8,9,7,8\n",
       "Row number: 2001, 2002, 2003, 2004, 3",
       "no column gives X: the rows are counted; columns are called by numbers or dates: each row "
       "holds a series, which is shown column by column"},
      {"decimals or thousands", "x;y\n" + Rows(9, "@;1,@00"), "x: y, 9",
       "the commas in \"y\" are read as the mark of decimals, though they would group thousands as "
       "well (--y-format thousands, of X --x-format, has it so)"},
  };
  const testing::TemporaryFolder folder;
  for (const auto& table : tables) {
    const ImportResult result = ImportFile(folder.Write("t.txt", table.text));
    std::string told;
    for (const std::string& note : result.notes) told += (told.empty() ? "" : "; ") + note;
    told += result.reports.front().RunsText();
    if (!result.errors_note.empty()) told += (told.empty() ? "" : "; ") + result.errors_note;
    EXPECT_EQ(Described(result), table.made) << table.what;
    EXPECT_EQ(told, table.told) << table.what;
  }
}

}  // namespace
}  // namespace tarnwick
