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
