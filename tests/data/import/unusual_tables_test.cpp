#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "data/import/import_file.h"
#include "data/import/loader.h"
#include "import/table_texts.h"
#include "support/refusal.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::Described;
using testing::Rows;

/// A label, if any, and `count` fields: what they begin with and 100, 105, ... behind it, tabs between.
std::string Bands(const std::string& label, const std::string& begin, int count) {
  std::string line = label;
  for (int i = 0; i < count; ++i) {
    line += (line.empty() ? "" : "\t") + begin + std::to_string(100 + 5 * i);
  }
  return line + "\n";
}

TEST(UnusualTables, AreReadAsAPersonReadsThem) {
  const struct {
    const char* what;
    std::string text;
    const char* read;
  } tables[] = {
      {"words between the numbers",
       "kinetics\n\n" + Rows(9, "At t = @   y =  @@  0.7@") + "nst = 4\n", "At t: y, y 2, 9"},
      {"marks beside the numbers", Rows(9, "step:@, loss=@@ (lr=0.0@)"), "step: loss, lr, 9"},
      {"other lines between them",
       Rows(4, "At t = @ y = @@") + "    roots[] = 0 1\n" + Rows(5, "At t = 1@ y = @@"),
       "At t: y, 9"},
      {"units behind the numbers", Rows(9, "after @ s the cell has @@ mV"),
       "after [s]: the cell has [mV], 9"},
      {"labels that read as times", Rows(12, "0.@ 1s @@ B-V Boron") + "7.5 1s.2p 8.5 B-IV Boron\n",
       "(col 0): (col 2), 13"},
      {"mostly texts between commas",
       "state,slug,nick,motto,site,rank,town,size,seal,map,flag\n" +
           Rows(12, "\"A@\",\"a@\",\"the, @\",\"m\",\"www\",@@,\"T@\",7@1,s,m,f"),
       "rank: size, 12"},
      {"mostly texts between tabs", Rows(12, "A@\ta b\tthe x\tm n\t@@\tT\tS\ta\tb\t7@1"),
       "(col 4): (col 9), 12"},
      {"short tables below names that come again",
       Rows(4, Rows(12, "fix all of it @") + "Step CPU T\n" + Rows(5, "1@ @@ 30@.5") +
                   "Loop time of 5 on 4 procs\n"),
       "Step: CPU, T, 5"},
      {"coordinates over days",
       "MJD X Y LOD\n56228.5 1475 3116 10\n56229.5 1444 3114 9\n56230.5 1440 3113 8\n"
       "56231.5 1437 3113 7\n56232.5 1429 3112 9\n56233.5 1420 3112 6\n56234.5 1410 3107 7\n",
       "MJD: X, Y, LOD, 7"},
      {"a spectrum that begins at 200",
       "#FORMAT : EMSA/MAS Spectral Data File\n#XUNITS : eV\n#YUNITS : Counts\n#DATATYPE : "
       "Y\n#XPERCHAN : "
       "10.\n#OFFSET : 200.\n#SPECTRUM : here\n" +
           Rows(4, "6@, 7@.5, 9@,") + "#ENDOFDATA\n",
       "eV: Counts, 12"},
      {"records of two ports",
       "! made\n# GHz S DB R 50\n" + Rows(12, "@ 1@ 2@ 3@ 4@\n  5@ 6@ 7@ 8@"),
       "freq [GHz]: S11 [dB], arg S11 [deg], S21 [dB], arg S21 [deg], S12 [dB], arg S12 [deg], S22 "
       "[dB], arg S22 [deg], 12"},
      {"numbers of columns above their names",
       "1 2 3 4\nversion year n m\n9 2024 5 6\n\n1 2 3 4\nmodel age mass log_R\n" +
           Rows(12, "@ @@ 1.@ 0.@"),
       "model: age, mass, log_R, 12"},
      {"sets that end in a mark", Rows(12, "@ 1.@") + "&\n" + Rows(9, "@ 2.@") + "&\n",
       "(col 0): (col 1), (col 1), run 2, 12"},
      {"a column that begins late", "t,a,b,c\n" + Rows(400, "@,1.@,,") + Rows(9, "4@,2.@,3.@,x@"),
       "t: a, b, 409"},
      {"a first row of other things", "94255\t2018\t1000\t3001\n" + Rows(30, "@\t0.5@\t0.2@\t1.@"),
       "(col 0): (col 1), (col 2), (col 3), 30"},
      {"numbers that touch, fields that are missing",
       Rows(9,
            "16 2 @ 5735@.00 I -0.00322@ 0.000031  0.29949@ I 0.026286@ 1.315@\n"
            "16 22@ 5735@.50 I-10.10322@ 0.010031  0.49949@ I"),
       "(col 0): (col 2), (col 3), (col 4), (col 6), (col 7), 18"},
      {"a curve of each row over the numbers of the names",
       "BEGIN_DATA_FORMAT\n" + Bands("ID", "SPEC_", 40) + "END_DATA_FORMAT\nBEGIN_DATA\n" +
           Bands("red", "0.1", 40) + Bands("blue", "0.3", 40) + "END_DATA\n",
       "SPEC: red, blue, 40"},
      {"over names that are numbers",
       Bands("wavelength", "", 40) + Bands("A", "0.1", 40) + Bands("B", "0.3", 40),
       "wavelength: A, B, 40"},
      {"labels of rows, two of six no element's",
       "B 0.12 3.4 1.56\nC 0.31 3.6 1.5\nD 0.5 2.9 1.25\nF 0.7 2.5 1.125\n"
       "G 0.9 2.25 1.1\nH 1.1 2.1 1.05\n",
       "Row number: (col 1), (col 2), (col 3), 6"},
      {"words that look like settings", Rows(20, "t=@ U=@@ I=0.@"), "t: U, I, 20"},
      {"ranges of variables above a joined time",
       " EPOCH      01-Jul-1983 00:00:00.0 31-Dec-1987 00:00:00.0\n"
       " LATITUDE        -90.00            90.00\n"
       "        EPOCH               LATITUDE\n" +
           Rows(9, " 1@-Jul-1983 0@:00:00.0     -37.5@"),
       "Date and time: LATITUDE, 9"},
      {"a label behind a tab and commas", Rows(9, "0.004@,-3@.05\tM 2357-35@"),
       "(col 0): (col 1), 9"},
      {"a decimal comma behind a label", Rows(9, "M 2357\t3@,5"), "Row number: (col 1), 9"},
      {"decimal commas between semicolons", Rows(9, "0,@;3@,5;a,b"), "(col 0): (col 1), 9"},
      {"probes read one after the other",
       "time T y probe\n" + Rows(5, "@ 2@.5 0.1 4081\n@ 3@.5 0.3 459\n@ 4@.5 0.5 77"),
       "time: probe 4081, probe 459, probe 77, 5"},
      {"years in two, as seasons have them",
       "season,v\n2009/10,5\n2010/11,7\n2011/12,6\n2012/13,8\n", "Date and time: v, 4"},
      {"days of six digits beside their hours",
       Rows(9, "89110@ 0 1@.5\n89110@ 12 2@.5").substr(2 * 14), "Date and time: (col 2), 16"},
      {"days of six digits, the month first",
       "18 122801\n16 122901\n15 123101\n34 010102\n45 010202\n41 010302\n46 010402\n12 010502\n",
       "Date and time: (col 0), 8"},
      {"signs ahead of their numbers",
       "10.5  -  7 15.5\n11.5  -  0 16.5\n12.5  + 12 17.5\n13.5  + 18 19.5\n14.5  +  9 12.5\n",
       "(col 0): (col 1), (col 2), 5"},
      {"times of digits",
       "94000 1\n94500 4\n95000 2\n95500 3\n100000 5\n100500 4\n101000 2\n101500 1\n",
       "Date and time: (col 1), 8"},
      {"names and numbers between commas", Rows(9, "A=@,B=@@,C=1@.5"), "A: B, C, 9"},
      {"a line for spreadsheets above the names", "sep=;\nt;v\n" + Rows(9, "@;@@"), "t: v, 9"},
      {"six digits in order", Rows(9, "10010@ 1@.5"), "(col 0): (col 1), 9"},
      {"the year first, of two digits",
       "00/12/16 1\n00/12/19 4\n00/12/21 1\n00/12/29 1\n01/01/16 2\n01/01/19 1\n01/02/03 2\n"
       "01/02/05 1\n01/02/06 4\n",
       "Date and time: (col 1), 9"},
      {"months and years of two digits", Rows(9, "0@/87 1@.5").substr(11) + "09/87 2\n10/87 3\n",
       "Date and time: (col 1), 10"},
      {"ratios", Rows(9, "1@ 10/1@ @@"), "(col 0): (col 2), 9"},
      {"halves of the day ahead of the date",
       "time,half,date,y\n9:30,AM,3/14/2024,5\n1:30,PM,3/14/2024,7\n9:30,AM,3/15/2024,6\n"
       "1:30,PM,3/15/2024,8\n",
       "Date and time: y, 4"},
      {"factors of a simulator",
       "#Time v(1)\n 0. 0.5\n 500.p 0.9\n 1.n 29.f\n 1.5n 0.8\n 2.n 0.4\n 1.u 3.m\n",
       "Time: v(1), 6"},
      {"labels that look so", Rows(9, "@ @.n @@"), "(col 0): (col 2), 9"},
      {"pairs of X and Y, the second turning back",
       "x,A,x,B\n0.1,5,1,7\n0.5,6,4,8\n0.9,7,3,9\n1.4,8,2,5\n,,1.5,4\n,,0.5,3\n", "x: A, B, 4"},
      {"a few sums below the rows",
       "depth temp\n" + Rows(9, "@.5 2@.5") + "\nmin 0.5 20.5\nmax 8.5 28.5\n", "depth: temp, 9"},
      {"names with units in brackets that come again",
       "t (s),U (V)\n" + Rows(9, "0.@,@@") + "Run 2\nt (s),U (V)\n" + Rows(5, "0.@,1@"),
       "t (s): U (V), 9"},
      {"a number with a mark in the first row",
       "date       ozone\n2024-01-10 30.0a\n" + Rows(9, "2024-01-1@ 3@.5").substr(16),
       "date: ozone, 8"},
      {"longer rows further on", "a,b,c,d\n" + Rows(60, "@,@@") + Rows(20, "1@,@@,3@.5,4@.5"),
       "a: b, c, d, 80"},
      {"marks behind some numbers", "t,v\n0,0.5*\n1,1.5\n2,2.5*\n3,3\n4,5\n", "t: v, 5"},
      {"flags on every fourth row", "t,v,f\n" + Rows(5, "1@,5,M\n1@.2,6,V\n1@.4,7,V\n1@.6,7,V"),
       "t: v, 20"},
      {"weights of two kinds of rows", "T,d,w\n" + Rows(5, "1@,2@.5,1") + Rows(6, "2@,3@.5,999"),
       "T: d, w, 11"},
      {"a vector over the columns of a matrix",
       "# energies\n1 2 3 4 5 6 7 8 9 10\n# matrix\n" + Rows(9, "@ 5 @@ 2 7 1 @ 3 8 @@"),
       "(col 0): (col 2), (col 6), (col 9), 9"},
      {"quarters behind a colon",
       "q,v\n1950:1,5\n1950:2,7\n1950:3,6\n1950:4,8\n1951:1,7\n1951:2,9\n", "Date and time: v, 6"},
      {"the error of X right behind it", "MAG_I ERR_I AMAG_I n\n" + Rows(9, "1@.5 0.@1 1@.7 7@"),
       "MAG_I: AMAG_I, n, 9"},
      {"names above each block of labels",
       "month\train\n" + Rows(3, "m@\t1@") + "\n\nmonth\tflow\n" + Rows(3, "m@\t2@"),
       "Row number: rain, flow, 3"},
      {"pieces of a contour", Rows(12, "1.@ @@\n2.@ 5@\n"), "(col 0): (col 1), 24"},
      {"X behind all others", Rows(6, "51 1 2.@") + Rows(6, "41 2 3.@") + Rows(6, "31 3 4.@"),
       "(col 2): (col 0), (col 1), 18"},
      {"even steps behind labels, the first twice",
       "z 10 7.5\n" + Rows(10, "p@ 1@ 7.@5") + Rows(10, "q@ 2@ 6.@5") + Rows(10, "r@ 3@ 5.@5"),
       "(col 1): (col 2), 31"},
      {"the first days of months",
       "970901 6\n971001 7\n971101 5\n971201 4\n980101 6\n980201 7\n980301 3\n980401 2\n",
       "Date and time: (col 1), 8"},
      {"numbers in brackets between commas",
       "iter [ lower, upper] root\n" + Rows(6, "@ [1.@, 5.@] 2@.5"), "iter: lower, upper, root, 6"},
      {"words before numbers between commas",
       Rows(10, "  @ TAO, Function value: @@,  Residual: 1@.5 "),
       "(col 0): TAO Function value, Residual, 10"},
      {"a remark behind names", "T U I ## comment here\n" + Rows(9, "@ @@ 9@"), "T: U, I, 9"},
      {"errors of a method, which are its results, below a title",
       "# conv P1 t\n# n err_l2 err_h1 err_max\n" + Rows(9, "1@ 0.@1 0.@3 0.@2"),
       "n: err_l2, err_h1, err_max, 9"},
      {"a time that stands, within two types",
       "type time delta\n" + Rows(9, "1 @ 1\n1 @ 0") + Rows(9, "2 @ 0\n2 @ 1"),
       "time: type 1, type 2, 18"},
      {"rows over a time with its unit",
       "time [s],0,1,2,3,4,5,6,7\nU [V],0,1,4,9,16,25,36,49\nI [A],0,3,6,9,12,15,18,21\n",
       "time [s]: U [V], I [A], 8"},
      {"the same without labels", Bands("", "nm", 40) + Bands("", "0.1", 40) + Bands("", "0.3", 40),
       "nm: row1, row2, 40"},
  };
  const testing::TemporaryFolder folder;
  for (const auto& table : tables) {
    const ImportResult result = ImportFile(folder.Write("t.txt", table.text));
    EXPECT_EQ(Described(result), table.read) << table.what;
    TDataSeries* const series = result.series.back().get();
    const auto points = series->PointCount();
    series->Clear();
    RefreshAll({&series, 1});
    EXPECT_EQ(series->PointCount(), points) << table.what;
  }
}

TEST(UnusualTables, KindsOfRowsAreNamedInUtf8) {
  const testing::TemporaryFolder folder;
  const ImportResult result = ImportFile(folder.Write(
      "t.csv", "town,year,n\n" + Rows(9, "Z\xFCrich,@,@@") + Rows(9, "Be\x07rn,@,1@")));
  ASSERT_EQ(result.series.size(), 2u);
  EXPECT_EQ(result.series.front()->SeriesName(), "Z\xC3\xBCrich");
  EXPECT_EQ(result.series.back()->SeriesName(), "Be rn");
  for (const auto& loaded : result.series) {
    TDataSeries* const series = loaded.get();
    series->Clear();
    RefreshAll({&series, 1});
    EXPECT_EQ(series->PointCount(), 9);
  }
}

TEST(UnusualTables, StatedColumnsAreKeptWhereTheyTellKindsApart) {
  const std::string text = "temp,V,I\n" + Rows(5, "1,@,0.@") + Rows(5, "2,@,0.@");
  ImportOptions options;
  options.y_columns = {"temp", "I"};
  EXPECT_EQ(Described(ImportText(text, "t", options)),
            "V: temp, temp 1, temp, temp 2, I, temp 1, I, temp 2, 5");
}

TEST(UnusualTables, AreNoSentences) {
  const struct {
    const char* what;
    std::string text;
  } texts[] = {
      {"a number that counts lines of one form", Rows(12, "line @ of the text")},
      {"lines of many forms",
       Rows(5,
            "found @ files\nread @ of them in @@ seconds\nThe end, for now. It was 8 o'clock.\n"
            "no more")},
      {"texts with a running number between commas", "n,name,note\n" + Rows(12, "@,A@,the note")},
      {"a table within a letter", Rows(30, "Dear @, we send you the numbers of last year.") + "\n" +
                                      Rows(12, "0.@ @@ 1.@") + "\n" +
                                      Rows(30, "Yours sincerely, number @ of the many.")},
      {"sentences of a receiver", "# log\n" + Rows(9, "$GPRMC,0927@,5321.@,0.13,309.62,12@")},
      {"satellites below epochs",
       "#cP2011  4  2\n" +
           Rows(6, "*  2011  4  2  @  0\nPG01 155@.5 -2@.1 2.5\nPG02 5@.5 7@.1 3.5")},
      {"lists of all lengths below names",
       Rows(4,
            "Town A@[1,2]@\nTown B@[3,4]@\n1@\nTown C[5,6]@\n1@ 2@ 3@ 4@ 5@\nTown D[7,8]@\n"
            "1@ 2@ 3@ 4@ 5@ 6@\n1 2")},
      {"texts with one column of numbers", Rows(12, "A@,the note,a,b,4@7,c,d,e")},
  };
  const testing::TemporaryFolder folder;
  for (const auto& text : texts) {
    EXPECT_FALSE(testing::Refusal([&] { ImportFile(folder.Write("t.txt", text.text)); }).empty())
        << text.what;
  }
}

}  // namespace
}  // namespace tarnwick
