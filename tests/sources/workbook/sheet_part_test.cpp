#include "sources/workbook/sheet_part.h"

#include <gtest/gtest.h>

#include "support/refusal.h"

namespace tarnwick {
namespace {

using Edges = std::array<std::int64_t, 4>;

TEST(SheetPart, TextsAreReadBack) {
  struct Row {
    const char* text;
    const char* sheet;
    const char* range;
  };
  for (const Row& row :
       {Row{"Sheet 2!B3:D200", "Sheet 2", "B3:D200"}, Row{"Sheet 2", "Sheet 2", ""},
        Row{"B:D", "", "B:D"}, Row{"", "", ""}, Row{"A1:B2!", "A1:B2", ""},
        Row{"Oh!!3:9", "Oh!", "3:9"}, Row{"Oh!!", "Oh!", ""}}) {
    const SheetPart part = ParseSheetPart(row.text);
    EXPECT_EQ(part.sheet, row.sheet) << row.text;
    EXPECT_EQ(part.range, row.range) << row.text;
    EXPECT_EQ(part.Text(), row.text);
  }
  EXPECT_EQ(TypedSheetPart("One", "$b$3:d9").Text(), "One!B3:D9");
}

TEST(SheetPart, RangesHaveEdges) {
  EXPECT_EQ(RangeEdges("B3:D200"), (Edges{3, 200, 2, 4}));
  EXPECT_EQ(RangeEdges("aa9:$C$3"), (Edges{3, 9, 3, 27}));
  EXPECT_EQ(RangeEdges("B:D"), (Edges{1, 1 << 20, 2, 4}));
  EXPECT_EQ(RangeEdges("3:9"), (Edges{3, 9, 1, 1 << 14}));
  EXPECT_EQ(RangeEdges(""), (Edges{1, 1 << 20, 1, 1 << 14}));
  for (const char* const none : {"B3", "B3:", ":", "B:3", "XFE1:XFE2", "A0:A3", "A1:A1048577",
                                 "3A:4B", "AAAA1:B2", "A1:B2:C3"}) {
    EXPECT_NE(testing::Refusal([&] { RangeEdges(none); }), "") << none;
  }
}

}  // namespace
}  // namespace tarnwick
