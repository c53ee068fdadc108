#include "data/import/source_preview.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "base/error.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

/// "names: a|b" and a line for each: its number, the first letter of its role and its fields.
std::string Told(const SourcePreview& preview) {
  constexpr std::string_view kRoles = "HNUC_RB";
  const auto joined = [](const std::vector<std::string>& fields) {
    std::string text;
    for (const std::string& field : fields) text += (text.empty() ? "" : "|") + field;
    return text;
  };
  std::string told = joined(preview.columns);
  for (const PreviewedLine& line : preview.lines) {
    told += "\n" + std::to_string(line.number) + kRoles[static_cast<std::size_t>(line.role)] + " " +
            joined(line.fields);
  }
  return told;
}

TEST(SourcePreview, ShowsWhatEachLineIsAndHowItIsCut) {
  const std::string text = "a t\xEFtle\nt;v\ns;mV\n1;2,5\n\n# rest\n\"3\";4\nend of it\n";
  TDSInfo info;
  info.TextSeparators = ";";
  info.FileHasHeaders = 3;
  info.NamesLine = 2;
  info.UnitsLine = 3;
  info.TableLines = 4;
  const auto source = std::make_shared<const TextSource>(text, "a text");
  EXPECT_EQ(Told(PreviewText(source, info, 40, 10)),
            "t [s]|v [mV]\n1H a tïtle\n2N t|v\n3U s|mV\n4R 1|2,5\n5_ \n6C # rest\n7R 3|4\n"
            "8B end of it");
  TDSInfo by_rule;
  by_rule.FileHasHeaders = 1;
  EXPECT_EQ(
      Told(PreviewText(std::make_shared<const TextSource>("t,v\n1,2\n", "a text"), by_rule, 9, 9)),
      "t|v\n1N t|v\n2R 1|2");
  EXPECT_EQ(Told(PreviewText(source, info, 5, 1)), "t [s]\n1H a tïtle\n2N t\n3U s\n4R 1\n5_ ");
}

TEST(SourcePreview, ShowsRowsBehindALongPreambleAndBytesAsTheyCome) {
  std::string text;
  for (int i = 1; i <= 200; ++i) text += "remark\n";
  text += "x,y\n1,2\n";
  TDSInfo info;
  info.FileHasHeaders = 201;
  info.NamesLine = 201;
  const auto source = std::make_shared<const TextSource>(text, "a text");
  const SourcePreview preview = PreviewText(source, info, 40, 10);
  EXPECT_EQ(preview.lines.front().number, 192);
  EXPECT_EQ(preview.lines.back().fields, (std::vector<std::string>{"1", "2"}));
}

TEST(SourcePreview, ReadsABoundedHeadToItsLastWholeLine) {
  const testing::TemporaryFolder folder;
  const std::string row = "12345,67890\n";
  std::string text;
  while (text.size() < (3U << 20)) text += row;
  NoProgress silent;
  const auto head = OpenHeadOfText(folder.Write("large.csv", text), silent);
  EXPECT_LE(head->Text().size(), 1U << 20);
  EXPECT_EQ(head->Text().size() % row.size(), 0U);
  EXPECT_EQ(OpenHeadOfText(folder.Write("small.csv", row + "1"), silent)->Text(), row + "1");
  EXPECT_THROW(OpenHeadOfText(folder.File("missing.csv"), silent), FileError);
  EXPECT_THROW(OpenHeadOfText(folder.Write("empty.csv", ""), silent), FileError);
}

}  // namespace
}  // namespace tarnwick
