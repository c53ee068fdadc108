#include "data/text/jcamp_text.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace tarnwick {
namespace {

constexpr std::string_view kHead = "##TITLE=a\n##XYDATA=(X++(Y..Y))\n";

TEST(JcampText, TablesBecomeLinesOfXAndY) {
  const struct {
    const char* what;
    std::string_view head;
    std::string_view table;
    const char* points;
  } rows[] = {
      {"numbers between blanks", "##FIRSTX=1\n##LASTX=4\n##NPOINTS=4\n", "1 5 6\n3 7 -8\n",
       "1\t5\n2\t6\n3\t7\n4\t-8\n"},
      {"factors and a step", "##XFACTOR=2\n##YFACTOR=0.5\n##DELTAX=-1\n", "10 4 6\n",
       "20\t2\n19\t3\n"},
      {"a comment and a missing value", "##DELTAX=1\n", "1 5 ? 7 $$ 9\n", "1\t5\n3\t7\n"},
      {"labels in small letters", "##first x=1\n##last-x=3\n##nPoints=3\n##yfactor=2\n",
       "1 5 6 7\n", "1\t10\n2\t12\n3\t14\n"},
      {"ends for another number of points", "##FIRSTX=0\n##LASTX=4\n##NPOINTS=5\n", "0 5 6\n4 7\n",
       "0\t5\n1\t6\n4\t7\n"},
      {"neither ends nor a step", "##NPOINTS=1\n", "3 5 6\n", "3\t5\n4\t6\n"},
      {"signs between numbers", "##DELTAX=1\n", "1+5-6+7\n", "1\t5\n2\t-6\n3\t7\n"},
      {"exponents", "##DELTAX=1\n", "1 5E+1 1.5E2 5E-1\n", "1\t50\n2\t150\n3\t0.5\n"},
      {"first digits as letters", "##DELTAX=1\n", "1A2@c5\n", "1\t12\n2\t0\n3\t-35\n"},
      {"differences, the last value checked on the next line", "##DELTAX=1\n", "1A0J%k\n4IJ\n",
       "1\t10\n2\t11\n3\t11\n4\t9\n5\t10\n"},
      {"values that come again", "##DELTAX=1\n", "1A5TJU\n", "1\t15\n2\t15\n3\t16\n4\t17\n5\t18\n"},
  };
  for (const auto& row : rows) {
    const std::string head = "##TITLE=a\n" + std::string(row.head) + "##XYDATA= (X++(Y..Y))\n";
    EXPECT_EQ(LinesOfJcamp(head + std::string(row.table) + "##END=\n", "f"),
              head + row.points + "##END=\n")
        << row.what;
  }
}

TEST(JcampText, PairsStandOnLinesOfTheirOwn) {
  EXPECT_EQ(LinesOfJcamp("##PEAK TABLE=(XY..XY)\n20,1E5 21, 7; 22,8\n", "f"),
            "##PEAK TABLE=(XY..XY)\n20\t100000\n21\t7\n22\t8\n");
}

TEST(JcampText, OtherTextsStayAsTheyAre) {
  for (const std::string_view text : {"1 2\n3 4\n", "##TITLE=a\n##NTUPLES=b\n1 2\n", "##", ""}) {
    EXPECT_EQ(LinesOfJcamp(text, "f"), std::nullopt) << text;
  }
}

TEST(JcampText, DamagedTablesAreRefusedWithTheirLine) {
  for (const std::string_view table :
       {"1 5 x7\n", "1Z999999999\n", "1A5Z99999999\n", "1A1J\n3J5\n4A9\n", "one\n"}) {
    try {
      LinesOfJcamp(std::string(kHead) + std::string(table), "f.dx");
      ADD_FAILURE() << table;
    } catch (const FileError& error) {
      EXPECT_NE(std::string_view(error.what()).find("f.dx, line "), std::string_view::npos);
    }
  }
}

}  // namespace
}  // namespace tarnwick
