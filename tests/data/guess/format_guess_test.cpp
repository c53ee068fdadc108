#include "data/guess/format_guess.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarnwick {
namespace {

/// One letter per column: n number, c decimal comma, g grouping commas, d date, e date with the day first, - no numbers.
std::string Letters(const TextFormat& format) {
  std::string letters;
  for (const ColumnGuess& column : format.columns) {
    const bool comma = column.format == ColumnFormat::DecimalComma;
    const bool day_first = column.format == ColumnFormat::DateDayFirst;
    const bool groups = column.format == ColumnFormat::GroupedThousands;
    letters += !column.has_numbers ? '-'
               : groups            ? 'g'
               : column.is_date    ? (day_first ? 'e' : 'd')
               : comma             ? 'c'
                                   : 'n';
  }
  return letters;
}

TEST(FormatGuess, RecognisesHowTablesAreWritten) {
  struct Row {
    const char* what;
    std::string text;
    std::string separators;
    bool merge;
    int headers;
    std::string columns;
  };
  const Row rows[] = {
      {"comma", "x,y\n1,2\n3,4\n", ",", true, 1, "nn"},
      {"no header", "1,2\n3,4\n", ",", true, 0, "nn"},
      {"comma and blank", "x, y\n1, 2\n3, 4\n", ",", true, 1, "nn"},
      {"tab", "x\ty\n1\t2\n3\t4\n", "\t", true, 1, "nn"},
      {"blanks", "  x   y\n  1   2\n 30  40\n", " \t", true, 1, "nn"},
      {"semicolon, decimal comma", "x;y\n1,5;2\n2,5;3\n", ";", true, 1, "cn"},
      {"tab, decimal comma", "1,5\t2,5\n2,5\t1.234,5\n", "\t", true, 0, "cc"},
      {"blanks, decimal comma", "1,5 2,5\n2,5 3,5\n3,5 4,5\n", " \t", true, 0, "cc"},
      {"returns only", "x;y\r1;2\r3;4\r", ";", true, 1, "nn"},
      {"quoted", "\"x, m\",\"y\"\n\"1\",\"2\"\n", ",", true, 1, "nn"},
      {"labels with blanks", "sample 1\t3.4\nsample 2\t3.5\n", "\t", true, 0, "-n"},
      {"comments", "# x y\n% two\n1 2\n3 4\n", " \t", true, 2, "nn"},
      {"title, blank line, names, units", "A title\n\nx y\ns m\n1 2\n2 3\n3 4\n4 5\n", " \t", true,
       4, "nn"},
      {"a name that is a number", "time,7,temp\n1,2,3\n4,5,6\n", ",", true, 1, "nnn"},
      {"years as names", "x,2019,2020\n1,2,3\n4,5,6\n", ",", true, 1, "nnn"},
      {"a bad value in the first row", "x,y\n1,oops\n2,3\n3,4\n", ",", true, 1, "nn"},
      {"a placeholder in the first row", "x,y\n1,NA\n2,3\n3,4\n", ",", true, 1, "nn"},
      {"gaps", "a\tb\tc\n1\t\t3\n2\t5\t6\n", "\t", false, 1, "nnn"},
      {"an empty column", "a,b,c\n1,,3\n2,,6\n", ",", false, 1, "n-n"},
      {"a first column with gaps", "a;b;c\n1;2;3\n;2;3\n", ";", false, 1, "nnn"},
      {"ragged rows", "1,2,3\n1,2\n1,2,3\n", ",", true, 0, "nnn"},
      {"doubled separators throughout", ",,1.5,,2.5,\n,,3,,4,\n", ",", true, 0, "nn"},
      {"dates", "day,v\n2024-01-05,1\n2024-01-06,2\n", ",", true, 1, "dn"},
      {"day first", "03/04/2024;1\n13/04/2024;2\n", ";", true, 0, "en"},
      {"date and time by blanks", "2024-01-05 12:00 5\n2024-01-06 12:00 6\n", " \t", true, 0,
       "ddn"},
      {"date and time in one field", "5.1.2024 12:00;5\n6.1.2024 12:00;6\n", ";", true, 0, "dn"},
      {"grouping commas", "x,y\n1,\"1,234.5\"\n2,999.5\n3,\"2,000\"\n", ",", true, 1, "ng"},
      {"three digits before a decimal comma", "0,12 400,5\n0,13 401,5\n", " \t", true, 0, "cc"},
      {"one column", "y\n1\n2\n", "\t,", true, 1, "n"},
      {"no numbers", "hello\nworld\n", "\t,", true, 0, "-"},
  };
  for (const Row& row : rows) {
    const TextFormat format = GuessTextFormat(row.text);
    EXPECT_EQ(format.separators, row.separators) << row.what;
    EXPECT_EQ(format.merge_separators, row.merge) << row.what;
    EXPECT_EQ(format.header_lines, row.headers) << row.what;
    EXPECT_EQ(Letters(format), row.columns) << row.what;
  }
}

TEST(FormatGuess, FindsASingleGapAnywhere) {
  struct Row {
    const char* what;
    std::string usual;
    std::string odd;
    bool merge;
  };
  const Row rows[] = {
      {"gap", "1,2,3\n", "1,,3\n", false},
      {"leading gap", "1;2;3\n", ";2;3\n", false},
      {"trailing gap", "1\t2\t3\n", "1\t2\t\n", false},
      {"trailing gap before a return", "1,2,3\r\n", "1,2,\r\n", false},
      {"returns only", "1,2,3\r", "1,2,\r", false},
      {"gap beside a quoted separator", "1,\"a,b\",3\n", "1,\"a,b\",\n", false},
      {"a value where all others have a gap", "1,,3\n", "1,2,3\n", false},
      {"a gap where the others have another", "1,,3,4\n", "1,,3,\n", false},
      {"quoted doubled separators", "1,\"a,b\",3\n", "1,\"a,,b\",3\n", true},
      {"a row of separators only", "1,2,3\n", ",,\n", true},
      {"another number of separators", "1,2,3\n", "1,2,3,\n", true},
      {"a comment", "1,2,3\n", "# 1,,3\n", true},
      {"regular padding", ",,1.5,,2.5,\n", ",,3,,4,\n", true},
      {"padding left out", ",,1.5,,2.5,\n", "1.5,2.5\n", true},
  };
  constexpr int kRows = 20'011;
  for (const Row& row : rows) {
    for (const int at : {1, 401, 5000, 12'345, kRows}) {
      std::string text;
      for (int i = 1; i <= kRows; ++i) text += i == at ? row.odd : row.usual;
      EXPECT_EQ(GuessTextFormat(text).merge_separators, row.merge) << row.what << " in row " << at;
      while (text.back() == '\n' || text.back() == '\r') text.pop_back();
      EXPECT_EQ(GuessTextFormat(text).merge_separators, row.merge)
          << row.what << ", end cut, " << at;
    }
  }
}

TEST(FormatGuess, FindsAGapAtEveryPlaceOfAWord) {
  for (std::size_t shift = 0; shift < 64; ++shift) {
    const std::string text = std::string(shift, '1') + "1,2,3\n4,5,6\n7,8,9\n1,2,3\n4,5,6\n";
    EXPECT_TRUE(GuessTextFormat(text).merge_separators) << shift;
    EXPECT_FALSE(GuessTextFormat(text + ",8,9\n").merge_separators) << shift;
    EXPECT_FALSE(GuessTextFormat(text + "7,,9\n4,5,6").merge_separators) << shift;
    EXPECT_FALSE(GuessTextFormat(text + "7,8,").merge_separators) << shift;
  }
}

std::string Rows(int count, const std::string& row) {
  std::string text;
  for (int i = 0; i < count; ++i) text += row + "\n";
  return text;
}

TEST(FormatGuess, FindsTheTableBehindAnyPreamble) {
  struct Row {
    const char* what;
    std::string text;
    int headers;
    int names;
    int units;
  };
  const std::string rows = Rows(12, "1\t2\t3");
  const Row cases[] = {
      {"keys and values", Rows(120, "  Current-DC:    0.02") + "a\tb\tc\n" + rows, 121, 121, 0},
      {"a line that ends the comments", "Data\n f\tz\tp\nEnd Comments\n" + rows, 3, 2, 0},
      {"an empty line below the names", "Imp SF\n\nf\tz\tp\n\n" + rows, 4, 3, 0},
      {"names and units", "t\tU\tI\ns\tV\tmA\n" + rows, 2, 1, 2},
      {"units with a mark of comments", "\tPt\tT\tVf\n\t#\ts\tV\n" + Rows(12, "\t1\t2\t3"), 2, 1,
       2},
      {"widths below the names", "# made\nno\tdate\tva\n5s\t10d\t8s\n" + rows, 3, 2, 0},
      {"a rule below the names", "a\tb\tc\n---\t---\t---\n" + rows, 2, 1, 0},
      {"names in one pair of quotes",
       "\"x 1.1\"\n41\n\"  f (Hz)  Z'(a)   GD\"\n" + Rows(12, "1,2,3"), 3, 3, 0},
      {"names in the last comment", "# by a program\n# a b c\n#\n" + rows, 3, 2, 0},
      {"other marks of comments", "! by a program\n! a b c\n" + rows, 2, 2, 0},
      {"two strokes", "// by a program\na\tb\tc\n" + rows, 2, 2, 0},
      {"a title of as many words", "Run of today\n\na\tb\tc\n" + rows, 3, 3, 0},
      {"a station line, no names", " Alamosa\n  37.70  105.92 2317 m\n" + Rows(12, " 1 2 3"), 2, -1,
       0},
      {"ten thousand lines", Rows(10'000, "a remark, and more") + "a\tb\tc\n" + rows, 10'001,
       10'001, 0},
      {"one name less than columns", "a\tb\n" + Rows(12, "r1\t2\t3"), 1, 1, 0},
      {"how values were made below names and units",
       "TOA5\tstn\t1\nTS\tT_Avg\tRH\nTS\tdegC\t%\n\tAvg\tSmp\n" + rows, 4, 2, 3},
      {"unknown units that repeat", "x-axis\tU1\tU2\nweber\tflop\tflop\n" + rows, 2, 1, 2},
      {"the rest of a sentence over one column",
       "# by a program, a tool for testing\n" + Rows(12, "1.5"), 1, -1, 0},
      {"words of sentences as names", "t\ton\tset\n" + rows, 1, 1, 0},
      {"an argument and its data", "Spectrum of cobalt\nChannel Data\n" + Rows(12, "1 2"), 2, 2, 0},
      {"a title of two words", "Cobalt Data\n" + Rows(12, "1 2"), 1, -1, 0},
      {"phrases as names of many columns",
       "t,Heat of a,Heat of b,Heat of c,Loss in d,Loss in e\n" + Rows(12, "1,2,3,4,5,6"), 1, 1, 0},
      {"phrases with units as names of two columns",
       "Time since the start (h),Heat of a (J)\n" + Rows(12, "1,2"), 1, 1, 0},
      {"names of columns that the rows leave out", "a\tb\tc\tremark\n" + rows, 1, 1, 0},
      {"two blanks in names of too few", "# a b  c\n" + Rows(12, "1 2 3 4"), 1, -1, 0},
      {"other lines below two words", "BEGIN IONS\nTITLE=s\nMASS=4\n" + Rows(12, "1 2"), 3, -1, 0},
      {"keywords with stars", "*START\n*SCAN \"1\"\n*BEGIN\n" + Rows(12, "1 2 3"), 3, -1, 0},
      {"three years as names", "Dir 2023 2024 2025\n" + Rows(12, "N 2 3 4"), 1, 1, 0},
  };
  for (const Row& row : cases) {
    const TextFormat format = GuessTextFormat(row.text);
    EXPECT_TRUE(format.is_table) << row.what;
    EXPECT_EQ(format.header_lines, row.headers) << row.what;
    EXPECT_EQ(format.names_line, row.names) << row.what;
    EXPECT_EQ(format.units_line, row.units) << row.what;
  }
}

TEST(FormatGuess, TellsTablesApartAndTextFromTables) {
  const std::string first = "t\ta\n" + Rows(30, "1\t2");
  const std::string second = "\nf\tz\tp\n" + Rows(12, "1\t2\t3");
  const TextFormat two = GuessTextFormat(first + second);
  EXPECT_EQ(two.header_lines, 1);
  EXPECT_EQ(two.table_lines, 30);
  ASSERT_EQ(two.other_tables.size(), 1u);
  EXPECT_EQ(two.other_tables[0].line, 34);
  EXPECT_EQ(two.other_tables[0].rows, 12u);
  GuessHints hints;
  hints.header_lines = 33;
  EXPECT_EQ(GuessTextFormat(first + second, hints).names_line, 33);

  std::string report;
  for (int i = 0; i < 20; ++i) {
    report += "\n values (a,b,c) for set ALL and time\n\n" + Rows(15, "  1  2.5  3.5") +
              "\n forces for set ALL and time\n\n" + Rows(15, "  1  2  2.5  3.5");
  }
  EXPECT_TRUE(GuessTextFormat(report).is_table);
  EXPECT_EQ(GuessTextFormat("1;2\n3;4\n" + Rows(12, "1;2;3")).values_above, 2);

  const char* const texts[] = {
      "Dear reader,\nin 2024 we met 3 times.\nYours, 7\n",
      "a = 1\nb = 2\nc = 3\nd = 4\n",
      "<a>\n<b x=\"1\" y=\"2\"/>\n</a>\n",
  };
  for (const char* const text : texts) EXPECT_FALSE(GuessTextFormat(text).is_table) << text;
}

TEST(FormatGuess, TellsColumnsByTheirPlaces) {
  const std::string described =
      "Byte-by-byte Description of file: t.dat\n--------\n Bytes Format Units Label Explanations\n"
      "--------\n  1-  4 I4    ---   HD    Number\n"
      "                            of the star\n"
      "      5 A1    ---   f     Flag\n  6- 10 F5.2  mag   Vmag  ? Magnitude\n--------\n"
      "Note (1): 12 of 3 nights\n--------\n";
  struct Row {
    const char* what;
    std::string text;
    std::string cuts;
    int headers;
  };
  const Row rows[] = {
      {"described", described + "1001:10.25\n1002\n1003 -9.50\n", "1 5 6", 11},
      {"described, a mark between the columns",
       "Byte-by-byte Description of file: t\n  1-4 I4 --- a A\n  6-9 F4.1 m b B\n------\n"
       "1001|10.5\n1002|11.5\n",
       "1 5 6", 4},
      {"described, other rows", described + "Dear reader,\nnothing is here.\n", "", 0},
      {"a field is missing",
       "   t     U     I\n 1.0   2.5   3.5\n 2.0         4.5\n10.0   3.5  10.5\n11.0   4.5   6.5\n",
       "1 5 11", 1},
      {"the first one is missing", "1.0  2.5\n2.0  3.5\n     4.5\n4.0  5.5\n5.0  6.5\n", "1 4", 0},
      {"names of several words",
       "New York     12  4.5\nRome          7  3.5\nLos Angeles 120  2.5\nBoston       11  1.5\n",
       "1 13 16", 0},
      {"a mark behind some rows, the first among them",
       "0.0  1.5 *\n0.5  2.5\n1.0  2.5\n1.5  1.5\n2.0  3.5\n", "1 4 9", 0},
      {"a sum below a rule",
       "bolt  4   1.50\nnut  12   0.25\nrod   3  12.75\npin   9   0.50\n-------------\nall      "
       "15.00\n",
       "1 6 8", 0},
      {"the last ones are missing", "1.0 2.5\n2.0\n3.0 1.5\n4.0 1.5\n", "", 0},
      {"not aligned", "1 2 3\n10 20\n100 200 300\n1000 20 30\n1 2 3\n", "", 0},
      {"a later value over the cut",
       "1.0  2.5  1\n2.0       2\n3.0  2.5  3\n4.0  5.5  4\n1234567.5 2\n", "", 0},
      {"complete", "1.0  2.5\n2.0  3.5\n3.0  4.5\n4.0  5.5\n", "", 0},
  };
  for (const Row& row : rows) {
    const TextFormat format = GuessTextFormat(row.text);
    EXPECT_EQ(format.column_cuts, row.cuts) << row.what;
    if (row.cuts.empty()) continue;
    EXPECT_TRUE(format.is_table) << row.what;
    EXPECT_EQ(format.header_lines, row.headers) << row.what;
  }
}

TEST(FormatGuess, TakesTheUsersWord) {
  GuessHints hints;
  hints.separators = ";";
  hints.header_lines = 2;
  hints.merge_separators = false;
  const TextFormat format = GuessTextFormat("1,5;2\n2,5;3\n3,5;4\n", hints);
  EXPECT_EQ(format.separators, ";");
  EXPECT_EQ(format.header_lines, 2);
  EXPECT_FALSE(format.merge_separators);
  EXPECT_EQ(Letters(format), "cn");

  GuessHints width;
  width.column_width = 3;
  const TextFormat fixed = GuessTextFormat("x  y\n1  2\n10 20\n", width);
  EXPECT_TRUE(fixed.divide_by_width);
  EXPECT_EQ(fixed.header_lines, 1);
  EXPECT_EQ(Letters(fixed), "nn");
}

}  // namespace
}  // namespace tarnwick
