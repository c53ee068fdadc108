#include "data/columns/row_identity.h"

#include <gtest/gtest.h>

#include <string>

#include "data/import/import_file.h"
#include "import/table_texts.h"

namespace tarnwick {
namespace {

using testing::Described;
using testing::Rows;

TEST(RowIdentity, IsNeverX) {
  std::string series = "bold,events\n", answers = "G,I1,I2,I3,I4\n", loop = "H,B\n";
  for (int i = 0; i < 80; ++i) {
    const int wave = i % 16 < 8 ? i % 8 : 8 - i % 8;
    series += std::to_string(10 * wave + i % 3) + ',' + std::to_string(i * 7 % 4) + '\n';
    loop +=
        std::to_string(i < 40 ? i : 80 - i) + ',' + std::to_string(i < 40 ? i - 9 : 89 - i) + '\n';
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
      {"labels ahead of a time",
       "time,cumhaz\n1,0.5,0.3\n8,1,0.1\n12,1.5,0.4\n13,2,0.2\n21,2.5,0.6\n30,3,0.7\n31,4,0.5\n"
       "40,5,0.9\n",
       "time: cumhaz, 8"},
      {"labels in no order",
       ",mass,bmi\n12,1.7,65\n3,1.8,55\n45,1.6,66\n6,1.9,95\n37,1.7,78\n9,1.8,74\n80,1.6,59\n"
       "11,1.8,81\n",
       "Row number: mass, bmi, 8"},
      {"a person with texts", "PID,gene,v\n12,C/C,7\n12,C/T,2\n5,C/C,8\n5,T/T,3\n",
       "Row number: v, 4"},
      {"a center beside a person",
       "ptno,unit,age,crea\n" + Rows(8, "1@,1,4@.5,@") + Rows(8, "2@,2,3@.5,5@") +
           Rows(8, "3@,1,5@.5,8@"),
       "age: unit, crea, 24"},
      {"factors of two levels beside y",
       "A,B,Y\n-1,-1,56.3\n1,-1,53.1\n-1,1,50.4\n1,1,50.9\n-1,-1,52.3\n1,-1,53.2\n-1,1,48.2\n"
       "1,1,45.2\n",
       "Row number: A, B, Y, 8"},
      {"Inf in most rows of the first",
       "a,b,c\n" + Rows(9, "Inf,@.5,2@\nInf,@.2,3@") + "3,1,1\n4,2,2\n", "b: a, c, 2"},
      {"a class in runs", "class,mass,len\n" + Rows(5, "1,2@,@.5") + Rows(5, "2,1@,@@"),
       "mass: class 1, class 2, 5"},
      {"a matrix of ways", "to 0,to 1,to 2\n0,12,13\n12,0,25\n12,25,0\n63,76,75\n35,48,48\n",
       "Row number: to 0, to 1, to 2, 5"},
      {"a count of readings of a sweep", "Reading,V,I,t\n1,-5,8,0\n2,-4,6,1\n3,-3,7,2\n4,-2,9,3\n",
       "V: I, t, 4"},
      {"exports called X beside years", "year,C,X\n" + Rows(9, "193@,2@,1@@") + "1939,4,2\n",
       "year: C, X, 10"},
      {"dates beside an x in no order",
       "x,y\n" + Rows(3, "5@,2020-01-1@\n1@,2020-02-1@\n7@,2020-03-1@"), "y: x, 9"},
      {"records of a logger", "t,RECORD,v,w\n" + Rows(9, "2015-06-1@,100@,2@@,@@"), "t: v, w, 9"},
      {"a loop", loop, "H: B, 80"},
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
