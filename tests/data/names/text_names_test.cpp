#include "data/names/text_names.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "text/text_supplier_maker.h"

namespace tarnwick {
namespace {

TEST(TextNames, ComeFromTheLineOfNames) {
  struct Row {
    const char* what;
    std::string separators;
    int headers;
    std::string text;
    std::vector<std::string> names;
    bool has_line;
  };
  const Row rows[] = {
      {"plain", ",", 1, "time, temp \n1,2", {"time", "temp"}, true},
      {"a number is no name", ",", 1, "time,7,temp\n1,2,3", {"time", "(col 1)", "temp"}, false},
      {"missing", ",", 1, "a\n1,2\n", {"a", "(col 1)"}, false},
      {"12 mg reads as a number, 9a does not", ",", 1, "12 mg,9a\n1,2", {"(col 0)", "9a"}, false},
      {"quoted", ",", 1, "\"a,b\",c\n1,2", {"a,b", "c"}, true},
      {"8-bit", ",", 1, "\xE9,b\n1,2", {"\xC3\xA9", "b"}, true},
      {"no headers: values are no names", ",", 0, "9.5,-5\n1,2", {"(col 0)", "(col 1)"}, false},
      {"comment", ",", 1, "# time, temp\n1,2", {"time", "temp"}, true},
      {"comment with other separators",
       " ",
       1,
       "% t in s, T in K\n1 2",
       {"t in s", "T in K"},
       true},
      {"the last comment that fits", " ", 2, "# my file\n# x y\n1 2", {"x", "y"}, true},
      {"below a title", " ", 3, "Title\nx y\ns m\n1 2", {"x", "y"}, true},
      {"units below names", ",", 2, "x,y\ns,m\n1,2", {"x", "y"}, true},
      {"one column", ",", 2, "t\nu\n1\n2", {"t"}, true},
      {"control characters", ",", 1, "a\bc,\"U\n(V)\"\n1,2", {"a c", "U (V)"}, true},
      {"listed by number",
       " ",
       0,
       "# 1 NUMBER  Running number\n# 2 FLUX  Total [count]\n1 2",
       {"NUMBER", "FLUX [count]"},
       true},
      {"listed, one name for several columns",
       " ",
       0,
       "# 1 N\n# 2 FLUX_APER\n1 2 3",
       {"N", "FLUX_APER", "(col 2)"},
       false},
      {"listed by the word",
       ",",
       2,
       "# Column.1: energy [eV]\n# Column.2: mu(E)\n1,2",
       {"energy [eV]", "mu(E)"},
       true},
      {"numbered remarks are no list",
       " ",
       0,
       "# 1 First\n# 2 Second\n# 3 Third\n1 2",
       {"(col 0)", "(col 1)"},
       false},
      {"comments without names", " ", 1, "# made by a machine\n1 2", {"(col 0)", "(col 1)"}, false},
  };
  for (const Row& row : rows) {
    TDSInfo info;
    info.TextSeparators = row.separators;
    info.FileHasHeaders = row.headers;
    const auto supplier = testing::SupplierOf(info, row.text);
    EXPECT_EQ(supplier->ColumnNames(), row.names) << row.what;
    EXPECT_EQ(supplier->HasNamesLine(), row.has_line) << row.what;
  }
}

TEST(TextNames, CountColumnsOverTheFirstFortyLines) {
  std::string text;
  for (int i = 0; i < 39; ++i) text += "1,2\n";
  TDSInfo info;
  EXPECT_EQ(testing::SupplierOf(info, text + "1,2,3\n")->ColumnNames().size(), 3u);
  EXPECT_EQ(testing::SupplierOf(info, text + "1,2\n1,2,3\n")->ColumnNames().size(), 2u);
  std::string wide;
  for (int i = 0; i < 1200; ++i) wide += "1,";
  EXPECT_EQ(testing::SupplierOf(info, wide)->ColumnNames().size(), 1000u);
}

TEST(TextNames, FindColumns) {
  TDSInfo info;
  info.FileHasHeaders = 1;
  const auto supplier = testing::SupplierOf(info, "Time,temp,TIME,#0\n1,2,3,4\n");
  const std::pair<const char*, int> rows[] = {{"Time", 0}, {"TIME", 2}, {"time", 0},
                                              {"Temp", 1}, {"#0", 3},   {"#1", 1},
                                              {"#4", -1},  {"#x", -1},  {"none", -1}};
  for (const auto& [name, column] : rows) EXPECT_EQ(supplier->ColumnIndex(name), column) << name;
  EXPECT_EQ(supplier->ColumnIndex(kRowNumberName), kRowNumberColumn);
}

}  // namespace
}  // namespace tarnwick
