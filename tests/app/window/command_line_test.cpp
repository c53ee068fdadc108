#include "app/window/command_line.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using Words = std::vector<std::string>;

TEST(CommandLine, JoinsWordsByQuotesBeforeEach) {
  EXPECT_EQ(JoinWords({"one", "t w o", "three"}), "\"one\"t w o\"three");
  EXPECT_EQ(JoinWords({}), "");
}

TEST(CommandLine, OpensTheLastFileFirstAndPassesOverTheRest) {
  const testing::TemporaryFolder folder;
  const auto a = folder.Write("A b.tgr", "x");
  const auto b = folder.Write("b.dat", "1 2\n");
  const CommandLine line =
      ParseCommandLine(JoinWords({a.string(), "missing.dat", b.string(), folder.Path().string()}));
  EXPECT_EQ(line.files, (std::vector<std::filesystem::path>{b, a}));
  EXPECT_TRUE(line.options.empty());
}

TEST(CommandLine, KeepsOptionsInTheirOrder) {
  struct Row {
    Words words;
    Words options;
  };
  const Row rows[] = {
      {{"-maximize", "-tile"}, {"maximize", "tile"}},
      {{"-Refresh"}, {"refresh"}},
      {{"-no", "-maximize"}, {}},
      {{"-"}, {""}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ParseCommandLine(JoinWords(row.words)).options, row.options) << row.words.front();
  }
  // A line handed on by a second start: its "no " keeps the blank and drops nothing.
  EXPECT_EQ(ParseCommandLine("-no \"-tile").options, (Words{"no ", "tile"}));
}

}  // namespace
}  // namespace tarnwick
