// What is made of a table while one number of it runs: how many rows, lines above, columns, blanks. The sweeps stand in files
// beside this one:
//
//   == what runs
//   n FROM TO           the numbers it runs through
//   a form of lines (swept_text.h), to the line "end" (\t \r \xHH understood)
//   FROM-TO outcome     what is the same for all these numbers; values, and figures of notes, are those of FROM
//
// or "whole" in place of the numbers, and behind "end" all that is made of the one text, line by line.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "data/import/import_file.h"
#include "data/import/loader.h"
#include "data/points/point_columns.h"
#include "import/swept_text.h"
#include "import/whole_outcome.h"
#include "support/case_text.h"
#include "support/project_paths.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::TemporaryFolder;

/// What was made of a text: `kind` is what a sweep compares, `shown` says it with its figures.
struct Outcome {
  std::string kind;
  std::string shown;
};

std::string WithoutFigures(std::string text) {
  const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
  std::ranges::replace_if(text, is_digit, '0');
  const auto repeated =
      std::ranges::unique(text, [](char a, char b) { return a == '0' && b == '0'; });
  text.erase(repeated.begin(), repeated.end());
  return text;
}

std::string Joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += (text.empty() ? "" : "; ") + part;
  return text;
}

std::string Range(const std::vector<double>& values) {
  return values.empty() ? "none"
                        : GeneralText(values.front(), 9) + ".." + GeneralText(values.back(), 9);
}

Outcome OutcomeOf(const ImportResult& result, int rows) {
  std::string series;
  std::vector<std::string> notes = result.notes;
  if (!result.errors_note.empty()) notes.push_back(result.errors_note);
  for (const auto& made : result.series) {
    const std::string& error = made->Source().YErrorColumn;
    series +=
        (series.empty() ? "" : ", ") + made->SeriesName() + (error.empty() ? "" : " +- " + error);
  }
  const TDataSeries& first = *result.series.front();
  const auto left = rows - first.PointCount();
  const std::string made = result.x_name + (result.x_is_date ? " (time): " : ": ") + series +
                           (left <= 0 ? "" : " (" + std::to_string(left) + " left)") + " | ";
  const std::string values =
      Range(XValues(first.Points())) + ", " + Range(YValues(first.Points())) + " | ";
  for (const LoadReport& report : result.reports) {
    for (const std::string& told :
         {report.RunsText(), report.LeftOutText(), report.SkippedText()}) {
      if (!told.empty() && std::ranges::find(notes, told) == notes.end()) notes.push_back(told);
    }
  }
  const std::string told = testing::DivisionText(first.Source()) + " | " + Joined(notes);
  return {WithoutFigures(made + told), made + values + told};
}

Outcome ImportOutcome(const std::filesystem::path& file, int rows) {
  try {
    return OutcomeOf(ImportFile(file), rows);
  } catch (const Error& error) {
    std::string text = error.what();
    for (const std::string& path : {file.string(), file.filename().string()}) {
      for (std::size_t at = text.find(path); at != text.npos; at = text.find(path))
        text.erase(at, path.size());
    }
    return {"refused: " + WithoutFigures(text), "refused: " + text};
  }
}

std::vector<double> AllValues(const ImportResult& result) {
  std::vector<double> all;
  for (const auto& series : result.series) {
    for (const auto& values : {XValues(series->Points()), YValues(series->Points())}) {
      all.insert(all.end(), values.begin(), values.end());
    }
  }
  return all;
}

/// Reading the file again, fast or value by value, and a copy with other ends of lines come to the same.
void ExpectTheSameAgain(const TemporaryFolder& folder, const std::string& text, int rows) {
  const std::filesystem::path file = folder.Write("t.txt", text);
  ImportResult result = ImportFile(file);
  const std::vector<double> before = AllValues(result);
  std::vector<TDataSeries*> all;
  for (const auto& series : result.series) all.push_back(series.get());
  for (const bool slowly : {false, true}) {
    for (TDataSeries* const series : all) series->Clear();
    LoadOptions options;
    options.value_by_value = slowly;
    RefreshAll(all, options);
    EXPECT_EQ(AllValues(result), before) << (slowly ? "read again slowly" : "read again");
  }
  const Outcome outcome = OutcomeOf(result, rows);
  std::string returns;
  for (const char c : text) returns += c == '\n' ? "\r\n" : std::string(1, c);
  if (text.find('\r') == text.npos) {
    EXPECT_EQ(ImportOutcome(folder.Write("t.txt", returns), rows).shown,
              ImportOutcome(file, rows).shown);
  }
}

/// The lines of a sweep's answer.
std::string Swept(const std::string& form, int from, int to) {
  const TemporaryFolder folder;
  std::string answer;
  Outcome run;
  int began = from;
  const auto close = [&](int last) {
    answer += std::to_string(began) + "-" + std::to_string(last) + " " + run.shown + "\n";
  };
  for (int n = from; n <= to; ++n) {
    const testing::SweptText made = testing::MakeSwept(form, n);
    Outcome outcome = ImportOutcome(folder.Write("t.txt", made.text), made.rows);
    if (n > from && outcome.kind == run.kind) continue;
    if (n > from) close(n - 1);
    began = n;
    run = std::move(outcome);
    if (!run.kind.starts_with("refused")) ExpectTheSameAgain(folder, made.text, made.rows);
  }
  close(to);
  return answer;
}

std::string Whole(const std::string& form) {
  const TemporaryFolder folder;
  const testing::SweptText made = testing::MakeSwept(form, 1);
  const std::filesystem::path file = folder.Write("t.txt", made.text);
  try {
    const std::string answer = testing::WholeOutcome(ImportFile(file));
    ExpectTheSameAgain(folder, made.text, made.rows);
    return answer;
  } catch (const Error&) {
    return ImportOutcome(file, made.rows).shown + '\n';
  }
}

class TableSweeps : public ::testing::TestWithParam<std::filesystem::path> {};

TEST_P(TableSweeps, ComeOutAsWritten) {
  std::istringstream file(testing::ReadFile(GetParam()));
  std::string line, title, form, expected, answer;
  const auto compare = [&] {
    EXPECT_TRUE(answer == expected) << "== " << title << "\n" << answer << "not\n" << expected;
    answer = expected = form = "";
  };
  while (std::getline(file, line)) {
    if (line.starts_with("== ")) {
      compare();
      title = line.substr(3);
      std::string range;
      std::getline(file, range);
      while (std::getline(file, line) && line != "end") form += testing::Unescaped(line) + '\n';
      std::istringstream numbers(range.substr(1));
      int from = 0, to = 0;
      numbers >> from >> to;
      answer = range == "whole" ? Whole(form) : Swept(form, from, to);
    } else if (!line.empty() && line[0] != '#') {
      expected += line + '\n';
    }
  }
  compare();
}

INSTANTIATE_TEST_SUITE_P(All, TableSweeps,
                         ::testing::ValuesIn(testing::FilesOf("tests/data/import/sweeps",
                                                              ".sweep")),
                         [](const auto& row) { return row.param.stem().string(); });

}  // namespace
}  // namespace tarnwick
