#include <gtest/gtest.h>

#include <string>

#include "data/import/import_file.h"
#include "import/table_texts.h"

namespace tarnwick {
namespace {

using testing::Described;
using testing::Rows;

TEST(GuessedNames, AreWhatNamesColumnsAndNothingElse) {
  std::string wide = "n0";
  std::string rows = "1";
  for (int i = 1; i < 164; ++i) wide += ",n" + std::to_string(i);
  for (int i = 1; i < 160; ++i) rows += "," + std::to_string(i * i % 97);
  const struct {
    const char* what;
    std::string text;
    const char* read;
  } tables[] = {
      {"an infinity in the first row", "featureid\teffect\nF0\tinf\n" + Rows(9, "F@\t@@"),
       "Row number: effect, 9"},
      {"nothing in the first rows", "t v\nnan nan\n-inf inf\n" + Rows(9, "@ @@"), "t: v, 9"},
      {"an angle", "2 theta,intensity\n" + Rows(5, "1@,@@"), "2 theta: intensity, 5"},
      {"numbers ahead of names",
       " a potential for a metal\n 2.44  .0137  .1750   rchrg,fchrg,qchrg\n" + Rows(9, "@ @@ 9@"),
       "(col 0): (col 1), (col 2), 9"},
      {"numbers between texts", "Species 1 2 3 4 E\n" + Rows(12, "s@ @.5 @@ 2.@ 4.@ A"),
       "1: 2, 3, 4, 12"},
      {"one number before many words", "0 AA[A] BB[K] CC DD EE\n" + Rows(9, "1@ @@ 2@ @@ @@ @@"),
       "0: AA[A], BB[K], CC, DD, EE, 9"},
      {"blanks between two names with units", "U (V) I (A)\n" + Rows(9, "@,@@"), "U (V): I (A), 9"},
      {"units in square brackets", "U [V] I [A]\n" + Rows(9, "@,@@"), "U [V]: I [A], 9"},
      {"two alike names counted", ",,1,2\nt,limit,mean,mean\n" + Rows(9, "@,@@,1@,2@"),
       "t: limit, mean, mean #3, 9"},
      {"three alike names counted", ",,1,2,3\nt,limit,mean,mean,mean\n" + Rows(9, "@,@@,1@,2@,3@"),
       "t: limit, 1 mean, 2 mean, 3 mean, 9"},
      {"a title with a comma above names with units",
       "# profile through z=0, y=0.6\n#   x (mm)   V (m/s)\n" + Rows(9, "@ @@"),
       "x (mm): V (m/s), 9"},
      {"a remark without a name at the end of rows",
       "sample\ttime\tTset\n" + Rows(9, "@\t13:54:1@.5\t@@\tnorm"), "time: Tset, 9"},
      {"remarks that differ, a clock under the name of a time",
       "sample\ttime\tTset\n" + Rows(9, "@\t13:54:1@.5\t@@\tnorm@"), "time: Tset, 9"},
      {"kinds at the end of numbered rows", "len\ttime\tkind\n" + Rows(9, "@\t1@.5\t@@\tk@"),
       "len: time, 9"},
      {"names over several values each",
       "Date,NY,SF\n" + Rows(9, "2007-01-1@,4@;51@;5@,4@;4@;4@") + "2007-02-01,1;2;3,\n",
       "Date: NY 1, NY 2, NY 3, SF 1, SF 2, SF 3, 10"},
      {"one name for both", "run a\trun a\n10\t1\n17\t2\n12\t4\n5\t3\n",
       "Row number: run a, run a #1, 4"},
      {"labels without a name ahead of rows", "mass\tlen\n" + Rows(9, "s@\t@@\t@.25"),
       "mass: len, 9"},
      {"a name on each remark, to its end",
       "@BAND z\n#Date : MJD\n#Flux : counts\n#Fluxerr : see there\n#end\n" +
           Rows(9, "531@.5 2@@ 9@"),
       "Date: Flux +- Fluxerr, 9"},
      {"bare names on remarks", "#Date:\n#Flux:\n" + Rows(9, "531@.5 2@@"), "Date: Flux, 9"},
      {"settings on remarks", "# made: by hand\n# on: Monday\n" + Rows(9, "531@.5 2@@"),
       "(col 0): (col 1), 9"},
      {"labels by number", " LABEL 1 = Energy (keV)\n LABEL 2 = Total (b)\n" + Rows(9, "1@ 2@@"),
       "Energy (keV): Total (b), 9"},
      {"texts of units", "XUnitText: time\nYUnitText: packets\n\n\"set\n" + Rows(9, "1@ 2@@"),
       "time: packets, 9"},
      {"a mark that ends the remark, too",
       "# fit, 3 used to scale 2.5E-04\n# w  e  k  mu  @#\n" + Rows(9, "@ @@ 9@ 4@"),
       "w: e, k, mu, 9"},
      {"a mark for a count", "# t  #\n" + Rows(9, "@ @@"), "t: #, 9"},
      {"dashes between blanks", "# x [mm] - c_f - Tu [%]\n" + Rows(9, "@ @@ 9@"),
       "x [mm]: c_f, Tu [%], 9"},
      {"a title with a dash", "# Copper - a sample\n" + Rows(9, "@ @@"), "(col 0): (col 1), 9"},
      {"explanations between names and units",
       "#  T     H         R\n#  Temperature Enthalpy Specific heat\n#               massique\n# "
       " K     J/kg      "
       "kg/m3\n#\n" +
           Rows(9, "1@ @@ 9@"),
       "T [K]: H [J/kg], R [kg/m3], 9"},
      {"a date over three columns",
       "   Date     MJD     x     x Err\n              \"   \"\n   (0h)\n\n" +
           Rows(9, "1962 1 1@ 3766@ @@ 0.5@"),
       "Date and time: MJD, x +- x Err, 9"},
      {"date and time over five", "Date Time U I\n" + Rows(9, "1962 1 1@ 0@ 30 @@ 0.5@"),
       "Date and time: U, I, 9"},
      {"names that go on behind a comma",
       "!H,K,IOBS,\n!    PSI,ALF\n!Items are separated by a blank\n!END_OF_HEADER\n" +
           Rows(9, "1@ @@ 7@ 9@.5 3@"),
       "H: K, IOBS, PSI, ALF, 9"},
      {"a word before each number",
       "Time,0.5,Order,5,Last size,2,\nTime,4.5,Order,7,Last size,3,\nTime,45,Order,8,Last "
       "size,7,\n",
       "Time: Order, Last size, 3"},
      {"units between the numbers", Rows(9, "@,V,@@,mA"), "(col 0): (col 2), 9"},
      {"settings without a blank", "SIZE_X:128\nSIZE_Y:128\nDATA:\n" + Rows(9, "@.5 @@"),
       "(col 0): (col 1), 9"},
      {"a number within names", " H1.L  15N2.L  int \n" + Rows(9, "@  @.n  @@  9@"),
       "15N2.L: int, 9"},
      {"two names that count", "ClassA ClassB\n" + Rows(9, "@\t@@"), "ClassA: ClassB, 9"},
      {"a title over two columns", "Class list\n" + Rows(9, "@\t@@"), "(col 0): (col 1), 9"},
      {"a choice in brackets",
       "# a demo\n# set flush [begin | center | end]\n" + Rows(9, "@ @@ 9@"),
       "(col 0): (col 1), (col 2), 9"},
      {"names of a format above rows that end with tabs",
       "IT8\nBEGIN_DATA_FORMAT\nID A B\nEND_DATA_FORMAT\nBEGIN_DATA\n" + Rows(9, "A@\t@@\t9@\t") +
           "B\t1\t2\nEND_DATA\n",
       "A: B, 10"},
      {"brackets that go over columns",
       "TEMPERATURE a (variable on nodes)\n" + Rows(9, "@ @@ 9@ 4@ 5@"),
       "(col 0): (col 1), (col 2), (col 3), (col 4), 9"},
  };
  for (const auto& table : tables) {
    EXPECT_EQ(Described(ImportText(table.text, "t")), table.read) << table.what;
  }
  const std::string many = wide + "\n" + rows + "\n2" + rows + "\n3" + rows + "\n";
  EXPECT_EQ(ImportText(many, "t").x_name, "n0");
}

}  // namespace
}  // namespace tarnwick
