#include "readers/workbook/read_workbook.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

#include "base/error.h"
#include "base/word_list.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostNames = 5;  // in a sentence

std::string NamesOf(const std::vector<SheetName>& sheets) {
  std::vector<std::string> names;
  names.reserve(sheets.size());
  for (const SheetName& sheet : sheets) names.push_back('"' + sheet.name + '"');
  return Listed(names, kMostNames);
}

/// A name in one field of one line.
std::string Plain(std::string name) {
  std::ranges::replace_if(
      name, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return name;
}

void RequireNumbers(const std::optional<SheetText>& text, const Workbook& workbook,
                    const SheetRequest& request) {
  const std::vector<SheetName>& sheets = workbook.Sheets();
  if (text && text->Numbers() > 0) return;
  if (sheets.empty()) throw Error("The workbook holds no sheet with cells, only charts or nothing");
  if (!request.sheet.empty() && !text) {
    throw Error("There is no sheet \"" + request.sheet + "\" in the workbook; it has " +
                NamesOf(sheets));
  }
  if (!request.sheet.empty()) {
    throw Error("The sheet \"" + request.sheet + "\" holds no numbers there");
  }
  throw Error("No sheet of the workbook holds numbers: it has " + NamesOf(sheets));
}

}  // namespace

std::string AnswerOf(Workbook& workbook, const SheetRequest& request) {
  std::map<std::size_t, std::int64_t> numbers;
  std::optional<SheetText> best;
  std::string chosen;
  std::tuple<bool, std::int64_t> highest;
  workbook.Read(request.sheet, request.range,
                [&](std::size_t place, const SheetName& sheet, SheetText text) {
                  numbers[place] = text.Numbers();
                  const std::tuple rank(!sheet.hidden && text.Numbers() > 0, text.Numbers());
                  if (best && highest >= rank) return;
                  best = std::move(text);
                  chosen = sheet.name;
                  highest = rank;
                });
  RequireNumbers(best, workbook, request);
  std::string answer;
  const std::vector<SheetName>& sheets = workbook.Sheets();
  for (std::size_t i = 0; i < sheets.size(); ++i) {
    const auto counted = numbers.find(i);
    const std::int64_t count = counted == numbers.end() ? 0 : counted->second;
    answer += "sheet\t" + Plain(sheets[i].name) + '\t' + std::to_string(count) + '\n';
  }
  answer += "read\t" + Plain(chosen) + "\nerrors\t" + std::to_string(best->Errors()) + "\n\n";
  return answer + best->Lines();
}

}  // namespace tarnwick
