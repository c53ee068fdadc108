#include "verdicts/number_verdicts.h"

#include <algorithm>
#include <sstream>

#include "base/number_text.h"
#include "data/columns/value_order.h"
#include "data/fields/missing_values.h"
#include "data/guess/time_guess.h"

namespace tarnwick::testing {
namespace {

void AddIf(bool is, const std::string& word, std::string& text) {
  if (is) text += (text.empty() ? "" : ", ") + word;
}

}  // namespace

std::vector<double> NumbersOf(const std::string& text) {
  std::vector<double> numbers;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const std::size_t dots = word.find("..");
    const std::size_t times = word.find('x');
    if (dots != word.npos) {
      for (int i = std::stoi(word); i <= std::stoi(word.substr(dots + 2)); ++i)
        numbers.push_back(i);
    } else if (times != word.npos) {
      numbers.insert(numbers.end(), std::stoul(word), std::stod(word.substr(times + 1)));
    } else {
      numbers.push_back(std::stod(word));
    }
  }
  return numbers;
}

std::string OrderVerdict(const std::string& text) {
  const std::vector<double> numbers = NumbersOf(text);
  std::string verdict;
  AddIf(IsMonotone(numbers), "monotone", verdict);
  AddIf(IsInNoOrder(numbers), "no order", verdict);
  AddIf(RunsAnew(numbers), "runs anew", verdict);
  AddIf(StepsEvenly(numbers), "even", verdict);
  AddIf(StepsEvenly(numbers, Evenness::AsWritten) && !StepsEvenly(numbers), "rounded", verdict);
  AddIf(MostlyStands(numbers), "stands", verdict);
  const auto far = RepeatedFarFromOthers(numbers);
  AddIf(far.has_value(), "far " + GeneralText(far.value_or(0)), verdict);
  if (!numbers.empty()) AddIf(true, "size " + GeneralText(SizeOf(numbers)), verdict);
  return verdict;
}

std::string MissingVerdict(const std::string& text) {
  const std::vector<double> numbers = NumbersOf(text);
  std::string verdict;
  for (const std::string& missing : SuggestMissing(numbers)) AddIf(true, missing, verdict);
  for (const double missing : SuggestMissingOfColumn(numbers)) {
    AddIf(true, "of column " + GeneralText(missing), verdict);
  }
  for (const char* const name : {"", "time", "date", "timestamp", "count"}) {
    const auto format = LooksLikeUnixTime(name, numbers);
    if (!format) continue;
    AddIf(
        true,
        std::string(*format == ColumnFormat::UnixSeconds ? "s" : "ms") + " under \"" + name + "\"",
        verdict);
  }
  return verdict.empty() ? "none" : verdict;
}

}  // namespace tarnwick::testing
