#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "data/import/import_file.h"
#include "data/import/loader.h"
#include "data/points/point_columns.h"
#include "import/table_texts.h"
#include "support/refusal.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::Described;
using testing::Rows;

std::string Wave(int first, int values, int of_line) {
  std::string text;
  for (int i = 0; i < values; ++i) {
    text += std::to_string(std::sin(0.05 * (first + i))) + ((i + 1) % of_line == 0 ? "\n" : " ");
  }
  return text + (values % of_line == 0 ? "" : "\n");
}

TEST(GuessedTables, CurvesAlongLinesAreTurned) {
  const struct {
    const char* what;
    std::string text;
    const char* read;
    const char* told;
  } tables[] = {
      {"behind an address",
       "Live 9\n 0 3 5 4\n 3 9 1 7\n 6 4 5 6\n 9 7 8 8\n12 3 1 4\n15 3 2 7\n18 7 6 4\n21 5 5 5\n",
       "(col 0): (col 1), (col 2), (col 3), 8", "as one curve: they are shown"},
      {"without one", Wave(0, 96, 8), "Row number: (col 0), 96", "read in turn"},
      {"with shorter lines", Wave(0, 77, 8) + Wave(77, 77, 8), "Row number: (col 0), 154",
       "read in turn"},
      {"half a step nearer along lines",
       "0 1 2\n4 5 6\n8 9 10\n12 13 14\n16 17 18\n20 21 22\n24 25 26\n28 29 30\n",
       "(col 0): (col 1), (col 2), 8", "as one curve: they are shown"},
      {"seven lines", Wave(0, 56, 8),
       "(col 0): (col 1), (col 2), (col 3), (col 4), (col 5), (col 6), (col 7), 7", ""},
      {"a picture in a frame",
       "0 1 2 1 0\n0 4 5 4 0\n0 7 9 7 0\n0 4 5 4 0\n0 9 8 9 0\n0 3 4 3 0\n0 7 6 7 0\n0 1 2 1 0\n"
       "0 4 5 4 0\n",
       "Row number: (col 1), (col 2), (col 3), 9", ""},
      {"a table", Rows(9, "@ @@ 7@ 9@"), "(col 0): (col 1), (col 2), (col 3), 9", ""},
      {"with names", "a b c d\n" + Rows(9, "@1 @3 @5 @8"), "a: b, c, d, 9", ""},
      {"one long row", Wave(0, 40, 40), "Row number: (col 0), 40", "read in turn"},
      {"two long rows, the first rises",
       "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20\n" + Wave(0, 20, 20),
       "(col 0): (col 1), 20", "as columns"},
      {"two long rows with labels", "a " + Wave(25, 20, 20) + "b " + Wave(7, 20, 20),
       "Row number: a, b, 20", "as columns"},
  };
  const testing::TemporaryFolder folder;
  for (const auto& table : tables) {
    const std::filesystem::path file = folder.Write("t.txt", table.text);
    const ImportResult result = ImportFile(file);
    EXPECT_EQ(Described(result), table.read) << table.what;
    std::string notes;
    for (const std::string& note : result.notes) notes += note;
    EXPECT_NE(notes.find(table.told), notes.npos) << table.what;
    TDataSeries* const series = result.series.back().get();
    const auto points = series->PointCount();
    series->Clear();
    RefreshAll({&series, 1});
    EXPECT_EQ(series->PointCount(), points) << table.what;
  }
}

TEST(GuessedTables, AreReadAsAPersonReadsThem) {
  const struct {
    const char* what;
    std::string text;
    const char* read;
  } tables[] = {
      {"settings in as many fields as the rows",
       "Analyzer;FSV;\nRef;-10.0;\nValues;9;\n" + Rows(20, "@;@@;"), "(col 0): (col 1), 20"},
      {"settings in the same columns",
       "Probe,10,1,\nUnits,V,V\nTIME,CH1,CH2\n" + Rows(20, "@,@@,@@"), "TIME: CH1, CH2, 20"},
      {"words in quotes that a sentence may hold",
       "\"x\" \"from\" \"to\" \"age\"\n" + Rows(9, "4@ 1@ \"2\" @@"), "x: from, age, 9"},
      {"numbers in quotes over numbered rows",
       "\"83\" \"91\" \"74\"\n\"0\" 5 3 1\n\"1\" 3 7 2\n\"2\" 4 4 1\n\"3\" 2 6 4\n",
       "(col 0): 83, 91, 74, 4"},
      {"a word that most rows share behind the first column",
       "v,w,state\n5,1,NY\n7,2,NY\n" + Rows(20, "1@,@@,PR"), "v: w, 22"},
      {"a word of sentences between wide blanks", "      x      y  on\n" + Rows(9, "@ @@\t1@"),
       "x: y, on, 9"},
      {"phrases in quotes over their columns",
       ",\"Part of crows\",,\"Mosquitoes\",\nt,S,I,S,I\n" + Rows(9, "4@,1@,@@,2@,3@"),
       "t: Part of crows S, Part of crows I, Mosquitoes S, Mosquitoes I, 9"},
      {"a few rows below a rule, units of several words",
       Rows(60, "Remark number @ of the report.") +
           "  E        f         g\n MeV  1 / (cm2 s) erg / s\n---- ------------ -------\n"
           "10.5      1.5e-11    3.5\n20.5      2.5e-11    nan\n30.5      1.5e-11    4.5\n"
           "*** Remarks ***\nThis is all.\nThere is nothing more.\nNo peak.\n",
       "E [MeV]: f [1 / (cm2 s)], g [erg / s], 3"},
      {"names of several words by their places",
       "Nmbr Location  Lo  Mag Type\n2246 N19W56   108  Alpha\n2248 S19W29   081  Alpha\n"
       "2251 S13E05   047  Beta\n2252 S20E24    28  Beta\n",
       "Nmbr: Lo, 4"},
      {"names by their places behind a mark, none over the labels",
       "//       steve    rob  Total\n" + Rows(9, "97050@      @@   1@   3@"),
       "(col 0): steve, rob, Total, 9"},
      {"labels ahead of other comments",
       "#S 1\n#L a  b  c\n" + Rows(4, "#U the fit @ was made") + Rows(9, "4@ @@ 7@"), "a: b, c, 9"},
      {"a colon between key and value", "Firm,:,V1\nData,:,,\n" + Rows(20, "@,@@,"),
       "(col 0): (col 1), 20"},
      {"other words before the first rows",
       "Name, U, I\nDimension1, 3, 3\nDimension2, 1, 1\n" + Rows(20, "Value, @, @@"), "U: I, 20"},
      {"single numbers ahead", "TITLE\n#HDR\n" + Rows(14, "@.5") + "#DATA\n" + Rows(40, "@\t@@"),
       "(col 0): (col 1), 40"},
      {"a part of the file behind one column",
       "$DATA:\n0 19\n" + Rows(20, "   @@") + "$ROI:\n0\n$END:\n1\n", "Row number: (col 0), 20"},
      {"a number behind the first row only",
       "EL,Time,T,Serial\n0,2024-03-14 12:00,20.5,1001\n" + Rows(9, "@,2024-03-15 12:0@,@@"),
       "Time: EL, T, 10"},
      {"rows that end in a semicolon", Rows(12, "@ @@;"), "(col 0): (col 1), 12"},
      {"rows of a matrix", "data = [\n" + Rows(12, "  @ @@;") + "];\n", "(col 0): (col 1), 12"},
      {"rows in brackets", Rows(12, "[@, @@, 1@],"), "(col 0): (col 1), (col 2), 12"},
      {"pairs in parentheses", Rows(12, "(@, @@)"), "(col 0): (col 1), 12"},
      {"remarks behind the values", "% t u\n" + Rows(12, "@ @@  % sample @ of 9"), "t: u, 12"},
      {"remarks behind some values", "# t u\n" + Rows(6, "@ @@") + "6 1.5 # restarted\n7 2.5\n",
       "t: u, 8"},
      {"few rows at the end of much text",
       Rows(60, "Remark number @ of the preamble.") + "t  u\n" + Rows(6, "@ @@"), "t: u, 6"},
      {"rows that begin with a separator under names",
       "X_Value\tU\tI\tComment\n" + Rows(12, "\t@\t@@"), "Row number: U, I, 12"},
      {"names that begin with a digit", "2theta (deg),101 <TC> (C)\n" + Rows(12, "@,@@"),
       "2theta (deg): 101 <TC> (C), 12"},
      {"a number is no name yet", "time,7\n" + Rows(12, "@,@@"), "time: (col 1), 12"},
      {"years name columns", "x,2001,2002,2003\n" + Rows(12, "@,@@,1@,2@"),
       "x: 2001, 2002, 2003, 12"},
      {"a mark before every name", "#Wave\t\t#Intensity\n" + Rows(12, "@\t@@"),
       "Wave: Intensity, 12"},
      {"names in one pair of brackets", "[t, u, i]\n" + Rows(12, "@, @@, 1@"), "t: u, i, 12"},
      {"a list of variables", "VARIABLES = \"X\", \"P\"\nZONE T=\"one\" I=12\n" + Rows(12, "@ @@"),
       "X: P, 12"},
      {"names between bars behind a phrase", "The columns are | q | I |\n" + Rows(12, "@  @@"),
       "q: I, 12"},
      {"names of the first columns only", "a,b,c\n" + Rows(12, "@,@@,1@,2@,3@"),
       "a: b, c, (col 3), (col 4), 12"},
      {"a word of sentences among many names",
       "r b swpd free si so bi bo in cs\n" + Rows(12, "@ @@ 1@ 2@ 3@ 4@ 5@ 6@ 7@ 8@"),
       "r: b, swpd, free, si, so, bi, bo, in, cs, 12"},
      {"units under some names",
       "  yyyy  mm  tmax  rain\n            degC    mm\n"
       "  2001   1   1.5     7\n  2001   2   2.5     8\n  2001   3   2.5     9\n",
       "Date and time: tmax [degC], rain [mm], 3"},
      {"curves of a well log",
       "~Version\n VERS. 2.0 : no\n~Curve\n DEPT.M : 1 depth\n DT .US/M : 2 time\n~A\n" +
           Rows(20, "@ @@"),
       "DEPT [M]: DT [US/M], 20"},
      {"legends of a graph",
       "@    xaxis  label \"t (ps)\"\n@ s0 legend \"E\"\n@ s1 legend \"T\"\n" + Rows(20, "@ @@ 1@"),
       "t (ps): E, T, 20"},
      {"units of both axes", "##XUNITS=1/CM\n##YUNITS=ABSORBANCE\n" + Rows(20, "@ @@"),
       "1/CM: ABSORBANCE, 20"},
      {"a remark with decimals is a row", "# (6)Hebe 2.42 0.20 14.75\n" + Rows(12, "a 1@.5 @@ 3.@"),
       "(col 1): (col 2), (col 3), 12"},
      {"year and quarter",
       "rownames,year,quarter,v\n1,1990,1,5\n2,1990,2,6\n3,1990,3,7\n4,1990,4,7\n",
       "Date and time: v, 4"},
      {"quarters", "period,v\n1990Q1,1\n1990Q2,2\n1990Q3,4\n1990Q4,3\n", "period: v, 4"},
      {"a year beside its fraction",
       "year,month,decimal date,v\n2001,1,2001.04,5\n2001,2,2001.12,7\n2001,3,2001.2,6\n",
       "Date and time: v, 3"},
      {"a cycle that stands for many rows",
       "Cycle,Time(s),U\n" + Rows(9, "1,@,@@") + Rows(9, "2,1@,@@"), "Time(s): Cycle, U, 18"},
      {"the year in the last column", "obs,v,YEAR\n1,5,1990\n2,3,1991\n3,4,1992\n", "YEAR: v, 3"},
      {"y is not X", "y,a,b\n3,1,5\n1,7,6\n2,3,7\n", "a: y, b, 3"},
      {"one station throughout", "datetime,site_no,v\n" + Rows(9, "2024-03-1@,5427,@@"),
       "datetime: v, 9"},
      {"errors joined to their names",
       "X,MAG_AUTO,MAGERR_AUTO,Mass,e_Mass\n" + Rows(9, "@,@@,1.5,1@,2.5"),
       "X: MAG_AUTO +- MAGERR_AUTO, Mass +- e_Mass, 9"},
      {"a title of one word less than columns",
       "sample LaB6\nBANK 1 20 20 CONS\n" + Rows(20, "@ @@ 1@"), "(col 0): (col 1), (col 2), 20"},
      {"two tables of equal length",
       "a\tb\n" + Rows(20, "@\t@@") + "\nc\td\te\n" + Rows(20, "@\t@@\t1@"), "a: b, 20"},
      {"names that come again between the rows",
       "Year Jan Feb\n" + Rows(9, "200@ @@ 1@") + "\nYear Jan Feb\n" + Rows(9, "201@ @@ 1@"),
       "Year: Jan, Feb, 18"},
      {"units in a line that an address stands in",
       "Time, Level, Source\n  s,  10^6 m, see http://a.b\n" + Rows(9, "@, @@, a"),
       "Time [s]: Level [10^6 m], 9"},
      {"a word of sentences in brackets", "\"f\"\t\"S1,1 [Size in dB]\"\n---\n" + Rows(9, "@\t@@"),
       "f: S1,1 [Size in dB], 9"},
      {"commas within parentheses", "f,dB(S(1,1)),deg\n" + Rows(9, "@,@@,1@"),
       "f: dB(S(1,1)), deg, 9"},
      {"a separator at the end of rows, not of names",
       "No  time  v\n----\n" + Rows(9, "@\t@@\t1@\t"), "time: v, 9"},
      {"a mark of the head before the first name", "~File\n~Time[h]\tU\n" + Rows(9, "@\t@@"),
       "Time[h]: U, 9"},
      {"assignments above the rows",
       "[Channel]\n  Level  =-20.0  C\n[Data]\n" + Rows(9, "@  @@  1@"),
       "(col 0): (col 1), (col 2), 9"},
      {"values below what can be measured", "sample,ppm\nA,1.2\nB,<0.1\nC,3.4\nD,2.2\n",
       "Row number: ppm, 3"},
      {"flags behind values", "t;v\n" + Rows(9, "@;@@") + "9;7.5*\n", "t: v, 10"},
      {"months before 1900 beside their fraction",
       "1749;11;1749.87;96\n1749;12;1749.95;91\n1750;01;1750.04;93\n", "Date and time: (col 3), 3"},
      {"day, month and year without names",
       "41317 1 1 1972 10\n41499 1 7 1972 11\n41683 1 1 1973 12\n42048 1 1 1974 13\n",
       "Date and time: (col 0), (col 4), 4"},
      {"units without a dimension",
       "time,T,S\nUTC,degree_C,1e-3\n" + Rows(9, "2024-03-14T0@:00,@@,3@"),
       "time [UTC]: T [degree_C], S [1e-3], 9"},
      {"an equals sign within names", "U\tI Vg=0\tI Vg=1\n" + Rows(9, "@\t@@\t1@"),
       "U: I Vg=0, I Vg=1, 9"},
      {"units in brackets behind blanks", "Time (s) U (V)\n" + Rows(9, "@ @@"),
       "Time (s): U (V), 9"},
      {"points that group twice",
       "Year\tPeople\n1950\t2.500.000\n1951\t2.570.000\n1952\t12.640.000\n", "Year: People, 3"},
      {"X again in the last column", "Year v Year\n" + Rows(9, "200@ @@ 200@"), "Year: v, 9"},
      {"numbers behind an empty field as names",
       "\t0.5\t1.0\t1.5\t2.5\n" + Rows(9, "4@\t@@\t1@\t2@\t3@"), "(col 0): 0.5, 1.0, 1.5, 2.5, 9"},
      {"temperatures that name columns", "nm,20,25,30\n" + Rows(9, "4@,@@,1@,2@"),
       "nm: 20, 25, 30, 9"},
      {"years above rows of months",
       "      1990 1991 1992\nJan    1.5  2.5  3.5\nFeb    2.5  3.5  1.5\nMar    1.5  2.0  2.5\n"
       "Apr    1.5  2.5  1.0\n",
       "Row number: 1990, 1991, 1992, 4"},
      {"a date as the name of each column",
       "State,Lat,1/22/20,1/23/20,1/24/20\na,3.5,1,2,3\na,1.5,1,4,5\nc,2.5,0,1,2\n",
       "Row number: Lat, 1/22/20, 1/23/20, 1/24/20, 3"},
      {"labelled rows in the order of what was found",
       "country,gdp,age\nA,900,71\nB,1207,70\nC,1731,75\nD,2950,69\n", "Row number: gdp, age, 4"},
      {"labelled rows over a dose", "sample,dose,v\nA,1,71\nB,2,70\nC,5,75\nD,9,69\n",
       "dose: v, 4"},
      {"a time that runs anew for each subject",
       "Subject,Time,conc\n" + Rows(5, "1,@,@@") + Rows(5, "2,@,@@"), "Time: Subject, conc, 10"},
      {"how long each lap took",
       "Lap,Time,km\n1,4:12.5,1.01\n2,4:10.2,1.02\n3,4:33.1,1.0\n4,4:01.7,1.2\n"
       "5,4:11.7,1.1\n",
       "Lap: km, 5"},
      {"two words that name columns of tabs", "Channel Data\n" + Rows(12, "@\t@@"),
       "Channel: Data, 12"},
      {"units in the names of two columns of tabs", "Time (s) U (V)\n" + Rows(12, "@\t@@"),
       "Time (s): U (V), 12"},
      {"phrases alone above the rows",
       "Time since the start,Warmth of the bath in degrees\n" + Rows(9, "@,@@"),
       "Time since the start: Warmth of the bath in degrees, 9"},
      {"a sentence of the head in as many parts",
       "Run 7\nMade in the lab, on a Monday\n" + Rows(9, "@,@@"), "(col 0): (col 1), 9"},
      {"numbers of objects", "object,phase,mag\n9012,0.5,7\n1077,1.5,6\n5430,2.5,8\n",
       "phase: mag, 3"},
      {"what stands behind a count and steps evenly",
       "1 0.01 573.1 3\n2 0.02 380.2 4\n3 0.03 255.7 6\n4 0.04 171 7\n",
       "(col 1): (col 2), (col 3), 4"},
      {"a first column in no order beside one in even steps",
       "8 7602\n4 7612\n9 7622\n6 7632\n8 7642\n7 7652\n9 7662\n6 7672\n5 7682\n",
       "(col 1): (col 0), 9"},
      {"rows in the order of the second column",
       "8 7602\n4 7613\n9 7625\n6 7637\n8 7648\n7 7660\n9 7671\n6 7683\n5 7690\n",
       "(col 0): (col 1), 9"},
      {"what falls behind a count", "1 1008 17 3\n2 990 15 9\n3 931 19 2\n4 875 11 4\n",
       "(col 1): (col 2), (col 3), 4"},
      {"a flag ahead of the rest",
       "died,age,v\n0,8,5\n1,4,6\n1,9,4\n0,6,5\n1,8,7\n0,7,8\n0,9,3\n1,6,1\n", "age: died, v, 8"},
      {"residuals are no errors",
       "x,y,std residual\n1,5,-0.5\n2,7,0.7\n3,6,-0.1\n4,8,0.4\n5,8,-0.9\n",
       "x: y, std residual, 5"},
      {"an error behind one of several it may be named after",
       "x,flow min,flow mean,flow sigma\n" + Rows(9, "@,@@,5@.5,2.5"),
       "x: flow min, flow mean +- flow sigma, 9"},
      {"words between marks of a format",
       "CTI\nBEGIN_DATA_FORMAT\nID L A\nEND_DATA_FORMAT\n\nNUMBER 9\nBEGIN_DATA\n" +
           Rows(9, "a@ @@ 1@.5"),
       "L: A, 9"},
      {"labels and a number in each row", "34\n" + Rows(12, "GLY  HA@  @@"),
       "Row number: (col 2), 12"},
      {"names over labels and a number", "A1 A2 weight\n" + Rows(12, "A  B@  @@"),
       "Row number: weight, 12"},
      {"a column that varies behind the rows looked at",
       "t,u,w\n" + Rows(700, "@,@@,1") + "700,1.5,2\n", "t: u, w, 701"},
      {"rows that end with a separator below one that does not",
       "t\tu\tv\n0\t5\t-\n" + Rows(12, "1@\t@@\t7@\t"), "t: u, v, 13"},
      {"a licence above the rows",
       "# Some Street, Fifth Floor, Boston, MA  02110, USA\n\n# Samples\n" + Rows(9, "@ @@"),
       "(col 0): (col 1), 9"},
      {"names behind what leads to them",
       "% Columns are: x(m) y(m) phi(rad)\n% Made today\n\n" + Rows(9, "@ @@ 5@"),
       "x(m): y(m), phi(rad), 9"},
      {"a remark behind names", "5 = number\nlam(um)   Qabs      ! and so on\n" + Rows(9, "@ @@"),
       "lam(um): Qabs, 9"},
      {"a word that begins with x", "t,x_cool,v\n" + Rows(9, "@,@@,5@"), "t: x_cool, v, 9"},
      {"one month in days", "Year,Month,DayofMonth,v\n2008,1,3,7\n2008,1,4,6\n2008,1,5,8\n",
       "Date and time: v, 3"},
      {"one month", "Year,Month,v,w\n2008,1,3,7\n2008,1,7,6\n2008,1,5,8\n", "v: w, 3"},
      {"days without names that come again", "20021130 5\n20021201 9\n20021201 6\n20021202 8\n",
       "(col 0): (col 1), 4"},
      {"numbers of objects that rise beside one column", "id,mag\n12,7\n77,6\n130,8\n",
       "id: mag, 3"},
      {"months in another language", "d;v\n3. März 2021;5\n4. Mai 2021;6\n5. Dez. 2021;8\n",
       "d: v, 3"},
      {"commas within names in quotes", "\"Time, GMT\",\"T, °C\"\n" + Rows(9, "@,@@"),
       "Time, GMT: T, °C, 9"},
      {"complex numbers", "f;Z;n\n" + Rows(9, "@;@@+1.5j;5@"), "f: n, 9"},
      {"pairs in parentheses behind blanks", "f Z\n" + Rows(12, "@ (@@,1@.5)"),
       "f: Z, (col 2), 12"},
      {"a percent sign as the first unit", "strain;stress\n%;MPa\n" + Rows(9, "@;@@"),
       "strain [%]: stress [MPa], 9"},
      {"a name, its unit behind \"in\"", "Run of today\nt in s;U in V\n" + Rows(9, "@;@@"),
       "t in s: U in V, 9"},
      {"a line of kinds above that of units",
       "\"t\",\"n\",\"U\",\"T\"\n\"TS\",\"RN\",\"Volts\",\"Deg C\"\n\"\",\"\",\"Min\",\"Avg\"\n" +
           Rows(9, "2024-03-1@,1@@,@,3@"),
       "t [TS]: n [RN], U [Volts], T [Deg C], 9"},
      {"kinds of values below names between bars",
       "| ra | mag |\n| real | real |\n| deg | mag |\n| null | null |\n" + Rows(9, "  @  @@ "),
       "ra [deg]: mag [mag], 9"},
      {"words between names and rows", "m/z,I,R\nSPECTRUM - MS\n" + Rows(9, "@,@@,1@"),
       "m/z: I, R, 9"},
      {"names that begin with a digit and a letter", "2theta  h  d\n" + Rows(9, "1@.5  @  5.@"),
       "2theta: h, d, 9"},
      {"values between bars and blanks", "   | year    gnp |\n" + Rows(9, " @. | 200@  @@ |"),
       "year: gnp, 9"},
      {"two values behind a tab", "f\tV(out)\n" + Rows(9, "1@\t@@,-1@.5"), "f: V(out), (col 2), 9"},
      {"a typeset table",
       "\\hline\n$T$ & $\\rho$ \\\\\n\\hline\n" + Rows(9, "1@ & @@ \\\\") + "\\hline\n",
       "$T$: $\\rho$, 9"},
      {"attributes above data",
       "@attribute 'a b' real\n@attribute c real\n@data\n" + Rows(9, "@,@@"), "a b: c, 9"},
      {"how uncertain values are", "p;V\n" + Rows(9, "@,5 ± 0,1;@@(5)"), "p: V +- V, 9"},
      {"something else in brackets behind values", "p;V\n" + Rows(9, "@;@@ (5)"), "p: V, 9"},
      {"a sign of errors in a column of its own", Rows(9, "@ @@ +/- 0.5"),
       "(col 0): (col 1) +- (col 3), 9"},
      {"words behind the last row of blanks", "x  y\n" + Rows(9, "@  @@") + "\nThe end is here.\n",
       "x: y, 9"},
      {"a row that ends and others that begin with a separator",
       "rate,t,v,w\n1,0,5,7,\n" + Rows(12, ",1@,@@,3@,"), "t: v, w, 13"},
      {"years and weeks", "year,week,v\n2020,52,5\n2020,53,7\n2021,1,6\n2021,2,5\n",
       "Date and time: v, 4"},
      {"year, day of the year and \"h\"",
       "year doy h v\n2024 60 0 5\n2024 60 12 7\n2024 61 0 6\n2024 61 12 5\n",
       "Date and time: v, 4"},
      {"\"h\" behind a year", "year h v\n2001 3 5\n2002 5 7\n2003 4 6\n", "year: h, v, 3"},
      {"years and names of months", "Year Month v\n2020 Nov 5\n2020 Dec 7\n2021 Jan 6\n",
       "Date and time: v, 3"},
      {"a flag of errors that is zero throughout", "t,U,error\n" + Rows(9, "@,@@,0"), "t: U, 9"},
      {"numbered pairs with units", "x1,y1,x2,y2\ns,V,s,V\n" + Rows(9, "@,@@,1@,3@"),
       "x1 [s]: y1 [V], y2 [V], 9"},
      {"words over others between blanks",
       "        Temp  Temp  Wind\n  Date   Max   Min Speed\n" + Rows(9, "2024031@ @@ -@  1@"),
       "Date: Temp Max, Temp Min, Wind Speed, 9"},
      {"words over names that are alike",
       "\tTemp\tLow\nDate\tOut\tOut\n" + Rows(9, "2024-03-1@\t@@\t1@"),
       "Date: Temp Out, Low Out, 9"},
      {"samples over their columns",
       "Sample A,,Sample B,,\nnm,Abs,nm,Abs,\n" + Rows(9, "4@,@@,5@,3@,"),
       "Sample A nm: Sample A Abs, Sample B Abs, 9"},
      {"names over every second unit", "Abs,,Cond,\nml,mAU,ml,mS/cm\n" + Rows(9, "4@,@@,5@,3@"),
       "Abs ml: Abs mAU, Cond mS/cm, 9"},
      {"names that go on on the next line", "time flow\nheat mass\n" + Rows(9, "@ @@ 1@ 2@"),
       "time: flow, heat, mass, 9"},
      {"what is told of the table in columns", "run,14-03-2024,140\nt,U,U\n" + Rows(9, "@,@@,1@"),
       "t: U, U #2, 9"},
      {"a title above names", "Results of today\nt    U   I\n" + Rows(9, "@  @@  1@"),
       "t: U, I, 9"},
      {"a title of two words above names", "Run     Two\nt    U   I\n" + Rows(9, "@  @@  1@"),
       "t: U, I, 9"},
      {"a label ahead of names and units",
       "Long Name\tTime\tU\nUnits\ts\tV\nComments\t\trun 1\n" + Rows(9, "\t@\t@@"),
       "Time [s]: U [V], 9"},
      {"names one below the other", "loop_\n_id\n_2theta\n_counts\n" + Rows(9, "@ 1@.5 @@"),
       "_2theta: _counts, 9"},
      {"months behind a letter",
       "id\tyear\tperiod\tv\nA\t1990\tM11\t5\nA\t1990\tM12\t6\nA\t1991\tM01\t7\n",
       "Date and time: v, 3"},
      {"an error named as X and Y are", "A Day,A Mean,A SD\n" + Rows(9, "@,@@,1.5"),
       "A Day: A Mean +- A SD, 9"},
      {"one thing set to several values", "h v=5 v=10 v=15\n" + Rows(9, "@ @@ 1@ 3@"),
       "h: v=5, v=10, v=15, 9"},
      {"ranges as names", "Year,1 to 4,5 to 14,15+\n" + Rows(9, "199@,@@,1@,3@"),
       "Year: 1 to 4, 5 to 14, 15+, 9"},
      {"numbers in even steps over labelled rows",
       "id,10,20,30,40\nA,1,5,2,4\nB,2,3,1,6\nC,4,1,2,2\n", "Row number: 10, 20, 30, 40, 3"},
      {"months over labelled rows",
       "Land,Jan-20,Feb-20,Mar-20\nA,1,5,2\nB,2,3,1\nC,4,1,2\nD,4,1,3\n",
       "Row number: Jan-20, Feb-20, Mar-20, 4"},
      {"a bar behind the last name",
       " Format  IAGA  |\nDATE TIME DOY X Y |\n" + Rows(9, "2024-03-01 0@:00 061 @@ 1@"),
       "Date and time: X, Y, 9"},
      {"labels in the way of comments",
       "##NAMES=Quartz\n##IDEAL CHEMISTRY=SiO2\n" + Rows(9, "1@.5, @@"), "(col 0): (col 1), 9"},
      {"times between points", "Date;Time;v\n" + Rows(9, "10/03/2004;0@.30.00;@@"),
       "Date and time: v, 9"},
      {"units of stars", "mass radius age\nMsun Rsun Gyr\n" + Rows(9, "@ @@ 1@"),
       "mass [Msun]: radius [Rsun], age [Gyr], 9"},
      {"the day first, as only later rows show",
       "Date;Time;v\n" + Rows(9, "10/03/2004;0@:30;@@") + Rows(9, "11/03/2004;0@:30;@@") +
           Rows(9, "12/03/2004;0@:30;@@") + Rows(60, "12/03/2004;09:30;@@") +
           Rows(9, "13/03/2004;0@:30;@@"),
       "Date and time: v, 96"},
      {"remarks between names and rows",
       "X,Y,Z\n#made by a tool\n#another, remark here\n" + Rows(4, "@.5,@@,7@"), "X: Y, Z, 4"},
      {"a comma-separated remark below names",
       "X,Y,Z\n# made by a tool, version 3, today\n" + Rows(9, "@.5,@@,7@"), "X: Y, Z, 9"},
      {"symbols above many remarks",
       "# r n(r)\n# one more remark\n# and then another\n# the third one\n# a fourth one\n" +
           Rows(9, "@.5 @@"),
       "r: n(r), 9"},
      {"where the numbers were published",
       "Smith et al., J. Phys. 12, 345 (1999)\n" + Rows(9, "@, @@, 5@, 7@"),
       "(col 0): (col 1), (col 2), (col 3), 9"},
      {"where they were published, in as many words", "# Phys. Rev. B 12\n" + Rows(9, "@ @@ 5@ 7@"),
       "(col 0): (col 1), (col 2), (col 3), 9"},
      {"a long count of rows before what was swept", "# i r E\n" + Rows(3000, "@ 1@.5 @@"),
       "r: E, 3000"},
      {"a count from 0 beside columns with units",
       "b \"Z [km]\" \"T [K]\"\n0 0.0 288\n1 11.1 216\n2 20.0 216\n3 32.1 228\n4 47.3 270\n",
       "Z [km]: T [K], 5"},
      {"components of vectors in no order",
       std::string("0.5 -0.2 0.3\n-0.4 0.6 -0.1\n0.1 0.3 0.7\n-0.6 -0.5 0.2\n0.3 0.1 -0.4\n"
                   "-0.2 0.4 0.6\n0.7 -0.6 -0.3\n-0.1 0.2 0.5\n0.6 -0.3 -0.5\n"),
       "Row number: (col 0), (col 1), (col 2), 9"},
      {"colours",
       "0 0 131\n0 60 170\n5 255 255\n130 255 130\n255 255 0\n250 120 0\n250 0 0\n200 0 0\n128 0 "
       "0\n",
       "Row number: (col 0), (col 1), (col 2), 9"},
      {"an element of a matrix", "RUN,EXP(1),SIGMA(1,1)\n" + Rows(9, "@,@@,0.5@"),
       "RUN: EXP(1), SIGMA(1,1), 9"},
      {"a sigma larger than what stands before it", "t,u,sigma\n" + Rows(9, "@,@@,50@"),
       "t: u, sigma, 9"},
      {"a sigma behind X", "T,sigma,kappa\n" + Rows(9, "@,@@,5@"), "T: sigma, kappa, 9"},
      {"an error of nothing beside it", "t,rms,max error\n" + Rows(9, "@,@@,0.5@"),
       "t: rms, max error, 9"},
      {"an error called after half a name", "t,Temperature mean,Temp SD\n" + Rows(9, "@,@@,0.5"),
       "t: Temperature mean, 9"},
      {"numbers that touch before a sign",
       "  0.0   1.2345 -10.2345\n  1.0   2.2345-110.2345\n  2.0   3.2345-120.2345\n"
       "  3.0   4.2345  -1.2345\n  4.0-110.2345 -10.2345\n",
       "(col 0): (col 1), (col 2), 5"},
      {"ranges are no numbers that touch", "0.0-0.5 7 3\n0.5-1.0 8 5\n1.0-1.5 9 4\n1.5-2.0 5 6\n",
       "Row number: (col 1), (col 2), 4"},
      {"sizes of a grid above the rows",
       " 1 0.0 3.3 8.3\n 20 0.0 3.1 1.0\n 40 0.0 6.2\n" + Rows(30, "0.5 @.5 @@ 7.25"),
       "(col 1): (col 0), (col 2), (col 3), 30"},
      {"a mark of remarks as a label", "A  4 -1\nR -1  5\nN -2  0\nD -2  3\n*  1 -4\n",
       "Row number: (col 1), (col 2), 5"},
      {"months in Polish", "d;v\n3 sty 2021;5\n4 lut 2021;6\n5 paź 2021;8\n", "d: v, 3"},
      {"places below bars",
       "|filter   |lambda  |a       |\n|char     |double  |double  |\n|         |um      |        "
       "|\n" +
           Rows(9, " CTIO U    0.@34    2.@    ") + " WISE-1    1.234    3.3    \n",
       "lambda [um]: a, 10"},
      {"runs with names of their own",
       "x,.02\n" + Rows(9, "@.5,@@") + "\nx,.03\n" + Rows(9, "@.5,9@"), "x: .02, .03, 9"},
      {"kinds of rows one behind the other",
       "what,year,n\n" + Rows(5, "Flood,190@,@@") + Rows(5, "Quake,190@,9@"),
       "year: Flood, Quake, 5"},
      {"kinds of rows in turn",
       "day,of,a,b\n1,K,5,7\n1,L,3,8\n2,K,6,6\n2,L,2,9\n3,K,7,5\n3,L,1,10\n",
       "day: a, K, a, L, b, K, b, L, 3"},
      {"numbers over names that are alike",
       ",,1,2,3\nt,limit,mean,mean,mean\n" + Rows(9, "@,@@,1@,2@,3@"),
       "t: limit, 1 mean, 2 mean, 3 mean, 9"},
      {"commas within parentheses", "COORDS TIRREG (F8.1,F6.1) 87648\n" + Rows(9, "@.5 9@"),
       "(col 0): (col 1), 9"},
      {"a title of a word and a number", "NACA 2414\n" + Rows(9, "@.5 @@"), "(col 0): (col 1), 9"},
      {"a mark between the names and the rows",
       "DISTANCE GRADE WIND\n[END HEADER]\n" + Rows(9, "@.5 @@ 7@"), "DISTANCE: GRADE, WIND, 9"},
      {"a title above a citation",
       "#Extragalactic HII region\n#from Doe et al., 2005\n" + Rows(9, "@@ 9@ 3@"),
       "(col 0): (col 1), (col 2), 9"},
      {"names with one key", "t,v,cell=a,cell=b,dose=1,dose=2\n" + Rows(9, "@,@@,0,1,9@,8@"),
       "t: v, dose=1, dose=2, 9"},
      {"what is called X behind what rises",
       "pos N X\n9 26 2\n12 33 12\n14 33 13\n19 48 24\n23 17 4\n31 93 37\n33 76 25\n39 5 1\n",
       "pos: N, X, 8"},
      {"rates of errors", "pos error_rate_1 error_rate_2\n" + Rows(9, "@.5 0.@ 0.1@"),
       "pos: error_rate_1, error_rate_2, 9"},
      {"bytes", Rows(9, "@.5 a4 0d 5d 0@ b5 3@"), "Row number: (col 0), 9"},
      {"words behind numbers", "a\tb\n1.5 HeI\t3\n2.5 CaK\t4\n3.5 NeV\t5\n4.5 OII\t7\n5.5 FeX\t8\n",
       "Row number: b, 5"},
      {"a time among seconds", Rows(9, "@ 2@.5") + "9 1:48.31\n", "(col 0): (col 1), 9"},
      {"labels that begin with digits", Rows(9, "@.5 @2 13CS"), "(col 0): (col 1), 9"},
      {"orbitals", "0.1 1s 5\n0.2 2s 7\n0.3 2p 9\n0.4 3s 8\n", "(col 0): (col 2), 4"},
      {"units joined to numbers", "t,v\n1,5mV\n2,6mV\n3,9mV\n", "t: v, 3"},
      {"a remark behind each value", "# d\n" + Rows(9, "@.25 # (0,0,@)"), "Row number: (col 0), 9"},
      {"a remark behind each labelled value",
       Rows(9, "O@ 15.@ ; oxygen (C=O)") + "CA2+ 40.08 ; calcium\n", "Row number: (col 1), 10"},
      {"a first column that rises beside a sweep",
       "Length,Wavelength\n9,2.1\n11,2.2\n14,2.5\n18,2.6\n23,2.7\n29,3\n36,3.1\n44,3.5\n",
       "Length: Wavelength, 8"},
      {"two labels ahead of the names", ",region,a,b\n" + Rows(9, "@,North,@@,7@,8@"),
       "region: a, b, 9"},
      {"a count and a word above three columns", "9 sizes\n" + Rows(9, "@ 0.@4 9@"),
       "(col 0): (col 1), (col 2), 9"},
      {"settings in the place of names", "# Pareto: 0  Size: 180\n" + Rows(9, "@\t9@"),
       "(col 0): (col 1), 9"},
      {"a row of nothing above the rows", "nan nan nan\n" + Rows(9, "@.5 9@ 7"),
       "(col 0): (col 1), (col 2), 9"},
      {"numbers beyond all", "x,y\n1,1e400\n2,-1e400\n3,5\n4,nan\n5,inf\n", "x: y, 1"},
      {"one name twice", "x,y,y\n1,2,30\n2,4,28\n", "x: y, y #2, 2"},
      {"words in a few rows", Rows(30, "@.5,HeI,") + "31.5,NeI,3520.47\n",
       "Row number: (col 0), 31"},
      {"a well log's mark of no value", "d,v\n" + Rows(30, "@,@@") + "30,-999.25\n31,-999.25\n",
       "d: v, 30"},
  };
  const testing::TemporaryFolder folder;
  for (const auto& table : tables) {
    EXPECT_EQ(Described(ImportFile(folder.Write("t.txt", table.text))), table.read) << table.what;
  }
}

TEST(GuessedTables, TellWhatTheirFieldsLeaveOpen) {
  const std::string commas = "the commas in \"v\" are read as the mark of decimals";
  const struct {
    const char* what;
    const char* text;
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
      {"a flag is no unit", "t,v\n1,5\n2,6*\n3,7*\n", ""},
      {"a night", "time,v\n23:00,5\n23:30,6\n00:00,7\n00:30,8\n",
       "the times in \"time\" go on past midnight"},
      {"a day", "time,v\n11:00,5\n11:30,6\n12:00,7\n12:30,8\n", ""},
      {"nothing tells X", "a,b,c\n5,50,7\n3,70,2\n9,10,8\n1,60,3\n8,30,9\n2,90,1\n",
       "\"a\" is taken as X because nothing tells"},
      {"fractions", "game,won,v\n5,1/4,8\n6,3/35,9\n7,2/5,7\n",
       "\"won\" is left out: \"1/4\" is read as no number"},
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
          note.find("not as dates") != note.npos || note.find("far from all") != note.npos;
      if (doubt) notes += note;
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
