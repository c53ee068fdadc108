#include "data/names/number_names.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <vector>

#include "base/number_text.h"
#include "data/fields/field_kind.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewest = 3;
constexpr double kEven = 1e-6;  // of a step

bool AreEven(const std::vector<double>& numbers) {
  const double step = numbers[1] - numbers[0];
  for (std::size_t i = 2; i < numbers.size(); ++i) {
    if (std::abs(numbers[i] - numbers[i - 1] - step) > kEven * std::abs(step)) return false;
  }
  return true;
}

/// The numbers behind the first field, if they only rise or only fall; else none.
std::vector<double> NumbersBehindLabel(std::span<const std::string> fields) {
  if (fields.empty() || IsValue(KindOfField(fields.front()))) return {};
  std::vector<double> numbers;
  for (const std::string& field : fields.subspan(1)) {
    const std::optional<double> number = ParseNumber(field);
    if (!number) return {};
    numbers.push_back(*number);
  }
  const auto never = [&numbers](auto is) {
    return std::ranges::adjacent_find(numbers, is) == numbers.end();
  };
  const bool one_way = never(std::ranges::greater_equal()) || never(std::ranges::less_equal());
  return one_way ? numbers : std::vector<double>();
}

}  // namespace

bool AreNumbersAcross(std::span<const std::string> fields) {
  const std::vector<double> numbers = NumbersBehindLabel(fields);
  if (numbers.size() < kFewest) return false;
  // Behind nothing three may rise by chance.
  return !fields.front().empty() || numbers.size() > kFewest || AreEven(numbers);
}

std::optional<NamesAcross> FindNamesAcross(std::span<const std::string> fields) {
  constexpr std::size_t kFewestAcross = 6;
  constexpr double kFirstYear = 1500, kLastYear = 2200;
  NamesAcross across{.behind = fields.size()};
  while (across.behind > 0 && fields[across.behind - 1].empty()) --across.behind;
  if (across.behind == 0) return std::nullopt;
  const FieldKind kind = KindOfField(fields[across.behind - 1]);
  if (kind != FieldKind::Number && kind != FieldKind::Date) return std::nullopt;
  across.first = across.behind;
  while (across.first > 0 && KindOfField(fields[across.first - 1]) == kind) --across.first;
  if (across.first == 0 || across.behind - across.first < kFewestAcross) return std::nullopt;
  across.are_times = kind == FieldKind::Date;
  if (across.are_times) return across;
  std::vector<std::string> labelled(fields.begin() + static_cast<std::ptrdiff_t>(across.first) - 1,
                                    fields.begin() + static_cast<std::ptrdiff_t>(across.behind));
  const std::vector<double> numbers = NumbersBehindLabel(labelled);
  if (numbers.empty()) return std::nullopt;
  across.are_times = std::ranges::all_of(numbers, [](double number) {
    return number >= kFirstYear && number <= kLastYear && number == std::floor(number);
  });
  return across;
}

bool CountBetweenTexts(std::span<const std::string> fields) {
  constexpr std::size_t kFewestCounted = 4;
  const auto is_number = [](const std::string& field) { return ParseInteger(field).has_value(); };
  const auto begin = std::ranges::find_if(fields, is_number);
  const auto end = std::find_if_not(begin, fields.end(), is_number);
  if (begin - fields.begin() != 1 || end == fields.end() || fields.front().empty()) return false;
  if (std::any_of(end, fields.end(),
                  [](const std::string& field) { return KindOfField(field) != FieldKind::Text; })) {
    return false;
  }
  const auto counts_on = [](const std::string& one, const std::string& next) {
    return ParseInteger(next) != *ParseInteger(one) + 1;
  };
  return static_cast<std::size_t>(end - begin) >= kFewestCounted &&
         std::adjacent_find(begin, end, counts_on) == end;
}

bool BeginsWithOneNumber(std::span<const std::string> names) {
  constexpr std::size_t kMany = 6;
  return names.size() >= kMany && ParseInteger(names.front()) &&
         std::all_of(names.begin() + 1, names.end(), [](const std::string& name) {
           return KindOfField(name) == FieldKind::Text && name.find(' ') == name.npos;
         });
}

bool AreEvenNumbersAcross(std::span<const std::string> fields) {
  const std::vector<double> numbers = NumbersBehindLabel(fields);
  return numbers.size() > kFewest && AreEven(numbers);
}

bool HoldRisingNumbers(std::span<const std::string> fields) {
  std::size_t risen = 0;
  std::optional<double> last;
  for (const std::string& field : fields) {
    const std::optional<double> number = ParseNumber(field);
    risen = !number ? 0 : last && *number > *last ? risen + 1 : 1;
    last = number;
    if (risen >= kFewest) return true;
  }
  return false;
}

}  // namespace tarnwick
