#include "data/text/emsa_text.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace tarnwick {
namespace {

constexpr std::string_view kHead = "#FORMAT      : EMSA/MAS SPECTRAL DATA STANDARD\n";

std::string Text(std::string_view keywords, std::string_view values) {
  return std::string(kHead) + std::string(keywords) + "#SPECTRUM    : DATA\n" + std::string(values);
}

TEST(EmsaText, ValuesStandBesideTheirX) {
  const struct {
    const char* what;
    std::string_view keywords;
    std::string_view values;
    const char* points;
  } rows[] = {
      {"several on a line", "#DATATYPE : Y\n#XPERCHAN : 10.\n#OFFSET : 200.\n",
       "65.8,  67.8,   \n 9E1\n#ENDOFDATA :\n", "200\t65.8\n210\t67.8\n220\t9E1\n#ENDOFDATA :\n"},
      {"units among the keywords, returns behind values",
       "#datatype : y\n#XPERCHAN -eV: 0.5\n#OFFSET -eV: -1\n", "5\r\n6\r\n", "-1\t5\n-0.5\t6\n"},
      {"nothing", "#DATATYPE : Y\n#XPERCHAN : 1\n#OFFSET : 0\n", "", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(LinesOfEmsa(Text(row.keywords, row.values), "f"), Text(row.keywords, row.points))
        << row.what;
  }
}

TEST(EmsaText, OtherTextsStayAsTheyAre) {
  for (const std::string& text :
       {Text("#DATATYPE : XY\n#XPERCHAN : 1\n#OFFSET : 0\n", "1, 2\n"),
        Text("#DATATYPE : Y\n#OFFSET : 0\n", "1\n"),
        Text("#DATATYPE : Y\n#XPERCHAN : 0\n#OFFSET : 0\n", "1\n"), std::string("#FORMAT : X\n1\n"),
        std::string("1 2\n"), std::string("#"), std::string()}) {
    EXPECT_EQ(LinesOfEmsa(text, "f"), std::nullopt) << text;
  }
}

TEST(EmsaText, WhatIsNoNumberIsRefusedWithItsLine) {
  try {
    LinesOfEmsa(Text("#DATATYPE : Y\n#XPERCHAN : 1\n#OFFSET : 0\n", "1\nx\n"), "f.msa");
    ADD_FAILURE();
  } catch (const FileError& error) {
    EXPECT_NE(std::string(error.what()).find("line 7"), std::string::npos) << error.what();
  }
}

}  // namespace
}  // namespace tarnwick
