// Runs the batch program as a process over the case files beside this one. A case file reads:
//
//   == what the case shows
//   << name            a file follows, to the line "end" (\t \r \xHH understood)
//   $ arguments        runs tarnwick-cli with them, in a fresh folder, through the shell
//                      ($TFN: the folder of the ready-made fitting functions)
//   = status           its exit status; the lines to the next empty line or key are its whole answer
//   ~ text             its answer holds this text
//   ! text             standard error holds this text; "!": nothing
//   != text            standard error is this line and no other
//   x arguments => text   runs it: wrong usage, and standard error begins with this text
//   ? file             this file exists now; "?! file": it does not
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "support/case_text.h"
#include "support/project_paths.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::ReadFile;
using testing::TemporaryFolder;

struct Result {
  int status = -1;
  std::string out;
  std::string err;
};

Result RunProgram(const TemporaryFolder& folder, const std::string& arguments) {
  const std::string command = "cd '" + folder.Path().string() + "' && TFN='" +
                              (testing::SourceFolder() / "TFN").string() + "' && '" +
                              (testing::ProgramFolder() / "tarnwick-cli").string() + "' " +
                              arguments + " >.out 2>.err </dev/null";
  const int status = std::system(command.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(folder.File(".out")),
          ReadFile(folder.File(".err"))};
}

/// One case file being played, line by line.
class Script {
 public:
  explicit Script(const std::filesystem::path& path)
      : lines_(path.string()), text_(ReadFile(path)) {}

  void Play() {
    std::string line;
    while (std::getline(text_, line)) {
      ++number_;
      const ::testing::ScopedTrace trace(lines_.c_str(), number_, title_);
      PlayLine(line);
    }
    EXPECT_GT(runs_, 0) << lines_ << " runs nothing";
  }

 private:
  void PlayLine(const std::string& line) {
    const std::string key = line.substr(0, line.find(' '));
    const std::string rest = line.size() > key.size() ? line.substr(key.size() + 1) : "";
    if (key == "==") {
      title_ = rest;
      folder_ = std::make_unique<TemporaryFolder>();
    } else if (key == "<<") {
      static_cast<void>(folder_->Write(rest, Block("end", /*escapes=*/true)));
    } else if (key == "$") {
      result_ = RunProgram(*folder_, rest);
      ++runs_;
    } else if (key == "=") {
      EXPECT_EQ(result_.status, std::stoi(rest)) << result_.err;
      const std::string expected = Block("", /*escapes=*/false);
      if (!expected.empty()) {
        EXPECT_EQ(result_.out, expected);
      }
    } else if (key == "~") {
      EXPECT_NE(result_.out.find(rest), std::string::npos) << rest << "\nis not in\n"
                                                           << result_.out;
    } else if (line == "!") {
      EXPECT_EQ(result_.err, "");
    } else if (key == "!=") {
      EXPECT_EQ(result_.err, "tarnwick-cli: " + rest + "\n");
    } else if (key == "!") {
      EXPECT_NE(result_.err.find(rest), std::string::npos) << rest << "\nis not in\n"
                                                           << result_.err;
    } else if (key == "x") {
      ExpectRefusal(rest);
    } else if (key == "?") {
      EXPECT_TRUE(std::filesystem::exists(folder_->File(rest)));
    } else if (key == "?!") {
      EXPECT_FALSE(std::filesystem::exists(folder_->File(rest)));
    } else {
      EXPECT_TRUE(line.empty() || line[0] == '#') << "what is \"" << line << "\"?";
    }
  }

  void ExpectRefusal(const std::string& row) {
    const std::size_t arrow = row.find(" => ");
    ASSERT_NE(arrow, std::string::npos);
    result_ = RunProgram(*folder_, row.substr(0, arrow));
    ++runs_;
    EXPECT_EQ(result_.status, 2);
    EXPECT_EQ(result_.out, "");
    EXPECT_EQ(result_.err.find("tarnwick-cli: " + row.substr(arrow + 4)), 0U) << result_.err;
  }

  static bool IsKey(const std::string& word) {
    return word == "$" || word == "x" || word == "~" || word == "!" || word == "!=" ||
           word == "?" || word == "?!";
  }

  /// The lines up to `closing`; for an empty one also up to a line that is a key.
  std::string Block(const std::string& closing, bool escapes) {
    std::string block;
    std::string line;
    for (auto place = text_.tellg(); std::getline(text_, line); place = text_.tellg()) {
      if (closing.empty() && IsKey(line.substr(0, line.find(' ')))) {
        text_.seekg(place);
        break;
      }
      ++number_;
      if (line == closing) break;
      block += (escapes ? testing::Unescaped(line) : line) + '\n';
    }
    return block;
  }

  std::string lines_;
  std::istringstream text_;
  int number_ = 0;
  int runs_ = 0;
  std::string title_;
  std::unique_ptr<TemporaryFolder> folder_;
  Result result_;
};

class CliCases : public ::testing::TestWithParam<std::filesystem::path> {};

TEST_P(CliCases, AnswerAsWritten) {
  Script(GetParam()).Play();
}

INSTANTIATE_TEST_SUITE_P(All, CliCases,
                         ::testing::ValuesIn(testing::FilesOf("tests/cli/cases", ".case")),
                         [](const auto& row) { return row.param.stem().string(); });

}  // namespace
}  // namespace tarnwick
