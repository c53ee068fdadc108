#include "app/window/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "app/instance/plain_answers.h"
#include "base/version.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using Words = std::vector<std::string>;

TEST(CommandLine, JoinsWordsByQuotesBeforeEach) {
  EXPECT_EQ(JoinWords({"one", "t w o", "three"}), "\"one\"t w o\"three");
  EXPECT_EQ(JoinWords({}), "");
}

TEST(CommandLine, SplitsAJoinedLine) {
  const std::pair<const char*, Words> rows[] = {
      {"\"one\"t w o\"three", {"one", "t w o", "three"}},
      {"one", {"one"}},
      {"\"\"a\"\"\"b\"", {"a", "b"}},
      {"", {}},
      {"-no \"-tile", {"-no ", "-tile"}},
  };
  for (const auto& [joined, words] : rows) EXPECT_EQ(SplitWords(joined), words) << joined;
}

TEST(CommandLine, OpensTheLastWordFirstAndNamesTheRest) {
  const testing::TemporaryFolder folder;
  const auto a = folder.Write("A b.tgr", "x");
  const auto b = folder.Write("b.dat", "1 2\n");
  const CommandLine line =
      ParseWords({a.string(), "missing.dat", "@Clipboard", b.string(), folder.Path().string()});
  using Openings = decltype(line.openings);
  EXPECT_TRUE(line.openings == (Openings{b, FromClipboard(), a}));
  EXPECT_EQ(line.unknown, Words{"missing.dat"});
  EXPECT_EQ(line.no_files, Words{folder.Path().string()});
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
    EXPECT_EQ(ParseWords(row.words).options, row.options) << row.words.front();
  }
  // A line handed on by a second start: its "no " keeps the blank and drops nothing.
  EXPECT_EQ(ParseWords({"-no ", "-tile"}).options, (Words{"no ", "tile"}));
}

TEST(PlainAnswer, IsGivenWhereHelpOrTheVersionIsAskedFor) {
  EXPECT_EQ(PlainAnswer({"a.dat", "--version"}), "Tarnwick " + std::string(kVersion) + '\n');
  EXPECT_EQ(PlainAnswer({"-h", "--version"}), PlainAnswer({"--help"}));
  EXPECT_THAT(PlainAnswer({"--help"}), ::testing::Optional(::testing::HasSubstr("-refresh")));
  EXPECT_EQ(PlainAnswer({"-maximize", "version", "a.dat"}), std::nullopt);
  EXPECT_EQ(UnknownOption({"a.dat", "-tile", "--xyz=3"}), "--xyz=3");
  EXPECT_EQ(UnknownOption({"-xyz", "--style=fusion", "--platform", "offscreen"}), std::nullopt);
}

}  // namespace
}  // namespace tarnwick
