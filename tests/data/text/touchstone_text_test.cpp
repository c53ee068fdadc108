#include "data/text/touchstone_text.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

TEST(TouchstoneText, RecordsBecomeLines) {
  const struct {
    const char* what;
    std::string_view text;
    const char* lines;
  } rows[] = {
      {"two ports column by column, as amounts and angles",
       "! made\n# GHZ S MA\n1 .1 2 .3 4\n .5 6 .7 8\n\n2 .1 2 .3 4 ! here\n! Gamma\n .5 6 .7 8\n",
       "! made\n# GHZ S MA\n! freq [GHz]\t|S11|\targ S11 [deg]\t|S21|\targ S21 [deg]\t|S12|\targ "
       "S12 "
       "[deg]\t|S22|\targ S22 [deg]\n1\t.1\t2\t.3\t4\t.5\t6\t.7\t8\n"
       "! Gamma\n2\t.1\t2\t.3\t4\t.5\t6\t.7\t8\n"},
      {"three ports row by row, as parts",
       "# Hz Z RI R 50\n1 1 2 3 4 5 6\n1 2 3 4 5 6\n1 2 3 4 5 6\n",
       "# Hz Z RI R 50\n! freq [Hz]\tRe Z11\tIm Z11\tRe Z12\tIm Z12\tRe Z13\tIm Z13\tRe Z21\tIm "
       "Z21\tRe Z22\tIm Z22\tRe Z23\tIm Z23\tRe Z31\tIm Z31\tRe Z32\tIm Z32\tRe Z33\tIm "
       "Z33\n1\t1\t2\t3\t4\t5\t6\t1\t2\t3\t4\t5\t6\t1\t2\t3\t4\t5\t6\n"},
      {"a record a line", "# GHz S DB R 50\n1 2 3\n2 2 3\n",
       "# GHz S DB R 50\n! freq [GHz]\tS11 [dB]\targ S11 [deg]\n1\t2\t3\n2\t2\t3\n"},
  };
  for (const auto& row : rows) EXPECT_EQ(LinesOfTouchstone(row.text), row.lines) << row.what;
}

TEST(TouchstoneText, OtherTextsStayAsTheyAre) {
  const struct {
    const char* what;
    std::string_view text;
  } rows[] = {
      {"records of several lengths", "# GHz S DB R 50\n1 2 3 4 5\n6 7 8 9\n2 2 3 4 5\n"},
      {"five values for no ports", "# GHz S DB R 50\n1 2 3\n4 5\n"},
      {"words among the values", "# GHz S DB R 50\n1 2 3 4 5\n6 a 8 9\n"},
      {"a line that goes on from nothing", "# GHz S DB R 50\n1 2 3 4\n6 7 8 9 1\n"},
      {"remarks without options", "# x y\n1 2 3 4 5\n6 7 8 9\n"},
      {"no values", "# GHz S DB R 50\n"},
      {"nothing", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(LinesOfTouchstone(row.text), std::nullopt) << row.what;
}

}  // namespace
}  // namespace tarnwick
