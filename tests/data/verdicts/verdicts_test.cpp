// What functions of texts answer, one question a line: "question => answer" in the files beside this one, each called after the
// function's row below (\t \r \xHH understood; "==" begins a remark). A row more is a line more.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/case_text.h"
#include "support/temporary_folder.h"
#include "verdicts/number_verdicts.h"
#include "verdicts/text_verdicts.h"

namespace tarnwick {
namespace {

using Answer = std::function<std::string(const std::string&)>;

const std::map<std::string, Answer>& Answers() {
  static const std::map<std::string, Answer> answers = {
      {"fields", &testing::FieldVerdict}, {"units", &testing::UnitVerdict},
      {"lines", &testing::LineVerdict},   {"cuts", &testing::CutVerdict},
      {"errors", &testing::ErrorVerdict}, {"names", &testing::NameVerdict},
      {"frames", &testing::FrameVerdict}, {"times", &testing::TimeVerdict},
      {"orders", &testing::OrderVerdict}, {"missing", &testing::MissingVerdict},
      {"stacked", &testing::StackVerdict}};
  return answers;
}

class Verdicts : public ::testing::TestWithParam<std::filesystem::path> {};

TEST_P(Verdicts, AreAsWritten) {
  const auto answer = Answers().find(GetParam().stem().string());
  ASSERT_NE(answer, Answers().end());
  std::istringstream file(testing::ReadFile(GetParam()));
  int rows = 0;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.starts_with("==")) continue;
    const std::size_t arrow = line.find(" =>");
    ASSERT_NE(arrow, line.npos) << line;
    const std::string made =
        line.substr(0, arrow + 3) + " " + answer->second(testing::Unescaped(line.substr(0, arrow)));
    EXPECT_TRUE(made == line) << made << "\nnot\n" << line;
    ++rows;
  }
  EXPECT_GT(rows, 0);
}

INSTANTIATE_TEST_SUITE_P(All, Verdicts,
                         ::testing::ValuesIn(testing::FilesOf("tests/data/verdicts", ".verdicts")),
                         [](const auto& row) { return row.param.stem().string(); });

}  // namespace
}  // namespace tarnwick
