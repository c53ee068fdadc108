#include "data/fields/text_fields.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarnwick {
namespace {

std::vector<std::string> Split(const TDSInfo& info, std::string_view line) {
  const TextLayout layout(info, '\n');
  FieldCursor cursor(line, layout);
  std::vector<std::string> fields;
  std::string buffer;
  while (const auto field = cursor.Next()) {
    fields.emplace_back(FieldText(*field, layout, buffer));
  }
  EXPECT_EQ(CountFields(line, layout, 1000), static_cast<int>(fields.size())) << line;
  return fields;
}

struct SplitRow {
  const char* what;
  std::string separators;
  bool merge;
  std::string line;
  std::vector<std::string> fields;
};

TEST(TextFields, AreSplitBySeparators) {
  const SplitRow rows[] = {
      {"runs count as one", "\t,", true, ",,1.5,,2.5,", {"1.5", "2.5"}},
      {"mixed runs", "\t,", true, "a\t,b", {"a", "b"}},
      {"only separators", ",", true, ",,,", {}},
      {"a blank field is a field", ",", true, "1, ,2", {"1", "", "2"}},
      {"unmerged", ",", false, ",1,,2,", {"", "1", "", "2", ""}},
      {"unmerged single", ",", false, "1", {"1"}},
      {"quoted separators", ",", true, "\"a,b\",c", {"a,b", "c"}},
      {"quoted empty", ",", false, "\"\",c", {"", "c"}},
      {"doubled marker", ",", true, "\"a \"\"b\"\"\",'c''d'", {"a \"b\"", "c'd"}},
      {"other marker inside", ",", true, "\"it's\",2", {"it's", "2"}},
      {"marker inside a field", ",", true, "5' 3,7", {"5' 3", "7"}},
      {"never closed", ",", true, "\"a,b", {"\"a", "b"}},
      {"text behind the closing marker", ",", true, "'a,b'c,d", {"'a,b'c", "d"}},
      {"blanks around markers", ",", true, "  \"a,b\" ,c", {"a,b", "c"}},
      {"blanks separate", " \t", true, "  1 \t 2  ", {"1", "2"}},
      {"no separators at all", "", true, "1,2", {"1,2"}},
  };
  for (const SplitRow& row : rows) {
    TDSInfo info;
    info.TextSeparators = row.separators;
    info.MergeSeparators = row.merge;
    EXPECT_EQ(Split(info, row.line), row.fields) << row.what;
  }
}

TEST(TextFields, AreCutByWidthInCharacters) {
  struct Row {
    int width;
    std::string line;
    std::vector<std::string> fields;
  };
  const Row rows[] = {
      {3, "123456", {"123", "456"}},
      {3, "1234567", {"123", "456", "7"}},
      {4, "1   2   ", {"1", "2"}},
      {2, "\xC3\xA9\xC3\xA9\xC3\xA9", {"\xC3\xA9\xC3\xA9", "\xC3\xA9"}},
      {2, "\xE9\xE9\xE9", {"\xE9\xE9", "\xE9"}},
      {0, "12", {"1", "2"}},
  };
  for (const Row& row : rows) {
    TDSInfo info;
    info.DivideTextByWidth = true;
    info.ColumnWidth = row.width;
    EXPECT_EQ(Split(info, row.line), row.fields) << row.line;
  }
}

TEST(TextFields, AreCutAtGivenCharacters) {
  struct Row {
    const char* what;
    std::string cuts;
    std::string line;
    std::vector<std::string> fields;
  };
  const Row rows[] = {
      {"runs together", "1 4 6", "123456789", {"123", "45", "6789"}},
      {"an empty field", "1 5 9", "1.5     2.5", {"1.5", "", "2.5"}},
      {"what is before the first", "4,7", "ab 123456", {"123", "456"}},
      {"a short line", "1 5 9", "1.5  2", {"1.5", "2"}},
      {"a line that ends before the first", "5 9", "1.5", {}},
      {"characters of several bytes",
       "1 3",
       "\xC3\xA9\xC3\xA9\xC3\xA9",
       {"\xC3\xA9\xC3\xA9", "\xC3\xA9"}},
      {"no list: separators", "1 1", "1,2", {"1", "2"}},
      {"no number: separators", "1 x", "1,2", {"1", "2"}},
      {"from 0: separators", "0 3", "1,2", {"1", "2"}},
  };
  for (const Row& row : rows) {
    TDSInfo info;
    info.ColumnCuts = row.cuts;
    EXPECT_EQ(Split(info, row.line), row.fields) << row.what;
  }
}

TEST(TextFields, CommentsAndBlankLinesAreNoRows) {
  TDSInfo info;
  const TextLayout plain(info, '\n');
  EXPECT_TRUE(IsDataLine("1", plain));
  EXPECT_TRUE(IsDataLine(",", plain));
  for (const char* line : {"", " \t", "# 1", "  % 1"}) EXPECT_FALSE(IsDataLine(line, plain));
  info.TextSeparators = "#";
  EXPECT_TRUE(IsDataLine("#1", TextLayout(info, '\n')));
}

}  // namespace
}  // namespace tarnwick
