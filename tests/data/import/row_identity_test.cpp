#include "data/import/row_identity.h"

#include <gtest/gtest.h>

#include <string>

#include "data/import/import_file.h"
#include "import/table_texts.h"

namespace tarnwick {
namespace {

using testing::Described;
using testing::Rows;

TEST(RowIdentity, IsNeverX) {
  std::string series = "bold,events\n", answers = "G,I1,I2,I3,I4\n";
  for (int i = 0; i < 80; ++i) {
    const int wave = i % 16 < 8 ? i % 8 : 8 - i % 8;
    series += std::to_string(10 * wave + i % 3) + ',' + std::to_string(i * 7 % 4) + '\n';
    for (const int prime : {2, 3, 5, 7}) answers += std::to_string(i * prime / 11 % 2) + ',';
    answers += std::to_string(i * i % 3 - 1) + '\n';
  }
  const struct {
    const char* what;
    std::string text;
    const char* read;
  } tables[] = {
      {"visits of patients",
       "id cd4 visit\n1022 38 0.2\n1022 30 0.8\n1022 23 1.2\n1049 45 0.3\n1049 44 0.6\n"
       "1049 37 1\n1050 31 0.1\n1050 29 0.4\n1050 25 0.9\n",
       "visit: cd4, 9"},
      {"rows left out of a longer table",
       "id time v\n2 1 0.2 7\n3 1 0.3 5\n20 2 0.6 6\n21 2 0.9 9\n22 2 1.1 4\n23 2 1.4 3\n"
       "24 3 0.7 3\n25 3 0.9 2\n26 3 1.7 2\n27 3 3.7 1\n",
       "time: v, 10"},
      {"labels of cases",
       "mass bmi\n2 1.7 65\n3 1.8 55\n5 1.6 66\n6 1.9 95\n7 1.7 78\n9 1.8 74\n10 1.6 59\n"
       "11 1.8 81\n12 1.7 61\n13 1.9 70\n",
       "Row number: mass, bmi, 10"},
      {"answers to questions", answers, "Row number: G, I1, I2, I3, I4, 80"},
      {"two series", series, "Row number: bold, events, 80"},
      {"objects in no order", "object,v\n5,1.5\n3,2.5\n9,3.5\n", "Row number: v, 3"},
  };
  for (const auto& table : tables) {
    EXPECT_EQ(Described(ImportText(table.text, "t")), table.read) << table.what;
  }
}

TEST(RowIdentity, OfDatesBesideXIsTold) {
  const auto notes =
      ImportText("x,y\n1,2020-01-05\n2,2020-03-05\n3,2021-01-05\n4,2020-01-09\n", "t").notes;
  EXPECT_EQ(notes.back(), "\"y\" holds dates and is shown over \"x\" (--x y makes it X)");
}

}  // namespace
}  // namespace tarnwick
