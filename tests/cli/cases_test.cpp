// Runs the batch program as a process over the case files beside this one. A case file reads:
//
//   == what the case shows
//   << name            a file follows, to the line "end" (\t \r \xHH understood)
//   $ arguments        runs tarnwick-cli with them, in a fresh folder, through the shell
//                      ($TFN: the folder of the ready-made fitting functions)
//   = status           its exit status; the lines to the next empty line or key are its whole answer
//   =~ status          likewise, to the line "end", for answer and standard error, numbers to six digits, runs of blanks as one
//   ~ text             its answer holds this text
//   ! text             standard error holds this text; "!": nothing
//   != text            standard error is this line and no other
//   x arguments => text   runs it: wrong usage, and standard error begins with this text
//   ? file             this file exists now; "?! file": it does not
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <regex>
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

/// A text in parts: numbers, and what stands between them with runs of blanks as one.
struct Part {
  std::string text;
  std::optional<double> number;
};

std::vector<Part> PartsOf(const std::string& text) {
  static const std::regex kNumbers(R"(\d+(\.\d+)?([eE][-+]?\d+)?)");
  static const std::regex kBlanks(" +");
  std::vector<Part> parts;
  std::size_t done = 0;
  for (std::sregex_iterator at(text.begin(), text.end(), kNumbers), end; at != end; ++at) {
    const auto place = static_cast<std::size_t>(at->position());
    parts.push_back({std::regex_replace(text.substr(done, place - done), kBlanks, " "), {}});
    parts.push_back({at->str(), std::stod(at->str())});
    done = place + static_cast<std::size_t>(at->length());
  }
  parts.push_back({std::regex_replace(text.substr(done), kBlanks, " "), {}});
  return parts;
}

bool IsLike(const Part& part, const Part& expected) {
  constexpr double kSixDigits = 6e-6;
  constexpr double kNothing = 1e-12;
  if (!part.number || !expected.number) return part.text == expected.text;
  return std::abs(*part.number - *expected.number) <=
         kSixDigits * std::abs(*expected.number) + kNothing;
}

void ExpectLike(const std::string& text, const std::string& expected) {
  const std::vector<Part> parts = PartsOf(text);
  const std::vector<Part> wanted = PartsOf(expected);
  const auto apart = std::ranges::mismatch(parts, wanted, IsLike);
  if (apart.in1 == parts.end() && apart.in2 == wanted.end()) return;
  ADD_FAILURE() << "at \"" << (apart.in2 == wanted.end() ? "" : apart.in2->text)
                << "\" otherwise than written:\n"
                << text;
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
    } else if (key == "=~") {
      EXPECT_EQ(result_.status, std::stoi(rest)) << result_.err;
      ExpectLike(result_.out + result_.err, Block("end", /*escapes=*/false));
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
    return word == "$" || word == "x" || word == "=~" || word == "~" || word == "!" ||
           word == "!=" || word == "?" || word == "?!";
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
