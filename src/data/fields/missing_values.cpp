#include "data/fields/missing_values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <system_error>

#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/text_fields.h"

namespace tarnwick {
namespace {

constexpr std::string_view kOfColumn = "@#";
constexpr double kHuge = 1e20;
constexpr double kBeyondAll = 1e33;  // nothing measured is as large
constexpr double kSinglePrecision = 1e-6;
constexpr double kFillValue = 9.969209968386869e36;  // of array files in single precision
constexpr double kNearlyLargest = 1.797e308;         // the largest double, to a few digits
constexpr double kLargestSingle = 3.4028234663852886e38;
constexpr double kWidthsApart = 5;
constexpr double kWidthsApartOnce = 10;  // 9, 99, 999 are a series
constexpr double kWidthsApartBelowZero = 0.5;
constexpr double kTimesApart = 1e6;
constexpr double kNine = -9;
constexpr double kWidthsApartOfNine = 2;
constexpr double kLargestPowerBelow = -1e6;
constexpr double kTimesApartBelow = 1e4;
constexpr std::size_t kMostSuggested = 2;
constexpr std::size_t kMostCandidates = 32;
constexpr std::size_t kOthersThatSuffice = 20;
constexpr std::size_t kOthersThatSufficeAbove = 8;  // of what is below zero

bool AgreeInSingle(double a, double b) {
  return std::abs(a - b) <= kSinglePrecision * std::abs(b);
}

/// The next entry of a list, taken off it.
std::string_view TakeEntry(std::string_view& list) {
  const bool quoted = list.starts_with('"') && list.find('"', 1) != list.npos;
  const std::size_t begin = quoted ? 1 : 0;
  const std::size_t end =
      std::min(quoted ? list.find('"', 1) : list.find_first_of(" \t"), list.size());
  const std::string_view entry = list.substr(begin, end - begin);
  list.remove_prefix(std::min(end + begin, list.size()));
  return entry;
}

/// The column of an entry such as "99@#3", which is "99" then.
std::int32_t TakeColumn(std::string_view& entry) {
  const std::size_t mark = entry.rfind(kOfColumn);
  if (mark == entry.npos || mark == 0) return MissingValues::kEveryColumn;
  const std::string_view digits = entry.substr(mark + kOfColumn.size());
  std::int32_t column = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), column);
  const bool whole = error == std::errc() && end == digits.data() + digits.size() && column >= 0;
  if (!whole) return MissingValues::kEveryColumn;
  entry = entry.substr(0, mark);
  return column;
}

bool EqualsInAnyCase(std::string_view text, std::string_view lower) {
  return text.size() == lower.size() && LowerAscii(text) == lower;
}

enum class Sentinel { None, Nine, Nines, PowerBelow, Huge, BeyondAll };

/// How many nines `value` is written with when with nothing else, 0 else. Well logs write -999.25.
std::size_t CountNines(double value) {
  std::string text = ShortestText(std::abs(value));
  if (text.size() > 5 && text.ends_with(".25")) text.erase(text.size() - 3);
  if (text.find_first_not_of("9.") != text.npos || text.front() == '.') return 0;
  return text.size() - (text.find('.') == text.npos ? 0 : 1);
}

Sentinel KindOf(double value) {
  const double size = std::abs(value);
  if (value == kNine) return Sentinel::Nine;
  if (size < 99 || value == 99) return Sentinel::None;
  const bool is_power = AgreeInSingle(size, std::pow(10, std::round(std::log10(size))));
  if (size < kHuge && is_power && value <= kLargestPowerBelow) return Sentinel::PowerBelow;
  if (size < kHuge) return CountNines(value) > 1 ? Sentinel::Nines : Sentinel::None;
  const bool is_fill = AgreeInSingle(size, kFillValue) || AgreeInSingle(size, kLargestSingle) ||
                       size >= kNearlyLargest;
  if (is_power || is_fill) return Sentinel::Huge;
  return size > kBeyondAll ? Sentinel::BeyondAll : Sentinel::None;
}

/// A number that may stand for no value, and how often it does.
struct Candidate {
  double value = 0;
  std::size_t count = 0;
};

/// What a column holds beside its sentinels.
struct Others {
  double min = std::numeric_limits<double>::infinity();
  double max = -std::numeric_limits<double>::infinity();
  std::size_t count = 0;

  void Add(const Candidate& values) {
    min = std::min(min, values.value);
    max = std::max(max, values.value);
    count += values.count;
  }
};

bool StandsApart(const Candidate& candidate, const Others& others) {
  const double sentinel = candidate.value;
  const double largest = std::max(std::abs(others.min), std::abs(others.max));
  const Sentinel kind = KindOf(sentinel);
  if (kind == Sentinel::Nine) {
    return candidate.count > 1 && others.count >= kOthersThatSuffice && others.min > 0 &&
           others.max > others.min &&
           others.min - sentinel > kWidthsApartOfNine * (others.max - others.min);
  }
  if (kind == Sentinel::PowerBelow) {
    return candidate.count > 1 && std::abs(sentinel) > kTimesApartBelow * largest;
  }
  // Once it may be a value all the same: digits that nobody chose.
  if (kind == Sentinel::BeyondAll && candidate.count == 1) return false;
  if (kind == Sentinel::Huge || kind == Sentinel::BeyondAll) {
    return std::abs(sentinel) > kTimesApart * largest;
  }
  const double width = others.max > others.min ? others.max - others.min : largest;
  const double gap = sentinel < others.min ? others.min - sentinel : sentinel - others.max;
  // Below zero where all else is not: nothing measured is three nines or more there.
  if (sentinel <= -99.9 && others.min >= 0) return gap > width * kWidthsApartBelowZero;
  return gap > width * (candidate.count > 1 ? kWidthsApart : kWidthsApartOnce);
}

/// 99, 999.9 and so on; below zero also 9.99 and 0.99.
bool IsOfNinesHere(double value) {
  constexpr double kLeast = 98.5;
  std::string text = ShortestText(std::abs(value));
  if (value < 0 && text.starts_with("0.")) text.erase(0, 1);
  if (text.find_first_not_of("9.") != text.npos) return false;
  const std::size_t nines = text.size() - (text.find('.') == text.npos ? 0 : 1);
  return nines > 1 && (value < 0 || value > kLeast);
}

/// Values that look like sentinels, each once, and all others.
struct Sorted {
  std::vector<Candidate> candidates;
  Others others;
};

/// Candidates are those that `may_be` admits.
Sorted SortOut(std::span<const double> values, bool (*may_be)(double)) {
  Sorted sorted;
  for (const double value : values) {
    if (!std::isfinite(value)) continue;
    const auto known =
        std::find_if(sorted.candidates.begin(), sorted.candidates.end(),
                     [value](const Candidate& candidate) { return candidate.value == value; });
    if (known != sorted.candidates.end()) {
      ++known->count;
    } else if (sorted.candidates.size() < kMostCandidates && may_be(value)) {
      sorted.candidates.push_back({value, 1});
    } else {
      sorted.others.Add({value, 1});
    }
  }
  return sorted;
}

/// Candidates that lie among the others are some of them, and may draw more with them.
void MoveInliers(Sorted& sorted) {
  auto& candidates = sorted.candidates;
  for (std::size_t i = 0; i < candidates.size();) {
    if (StandsApart(candidates[i], sorted.others)) {
      ++i;
      continue;
    }
    sorted.others.Add(candidates[i]);
    candidates.erase(candidates.begin() + static_cast<std::ptrdiff_t>(i));
    i = 0;
  }
}

/// -999 beside 999: the ends of a scale; no scale goes as far as 1e20.
bool HoldsBothEnds(const std::vector<Candidate>& candidates) {
  return candidates.size() == 2 && candidates[0].value == -candidates[1].value &&
         std::abs(candidates[0].value) < kHuge;
}

}  // namespace

MissingValues::MissingValues(std::string_view list) {
  for (;;) {
    list.remove_prefix(std::min(list.find_first_not_of(" \t"), list.size()));
    if (list.empty()) return;
    std::string_view entry = TakeEntry(list);
    const std::int32_t column = TakeColumn(entry);
    const std::optional<double> number = ParseNumber(entry);
    if (number && !std::isnan(*number)) {
      numbers_.push_back({*number, column});
    } else {
      texts_.push_back({LowerAscii(entry), column});
    }
  }
}

bool MissingValues::Matches(std::string_view field_text, std::int32_t column) const {
  const std::string_view text = TrimBlankBytes(field_text);
  const auto is_text = [&](const Entry<std::string>& entry) {
    return entry.IsOf(column) && EqualsInAnyCase(text, entry.value);
  };
  if (std::any_of(texts_.begin(), texts_.end(), is_text)) return true;
  if (numbers_.empty()) return false;
  const std::optional<double> number = ParseNumber(text);
  return number && MatchesNumber(*number, column);
}

bool MissingValues::MatchesNumber(double value, std::int32_t column) const {
  return std::any_of(numbers_.begin(), numbers_.end(), [&](const Entry<double>& entry) {
    return entry.IsOf(column) && (value == entry.value || (std::abs(entry.value) >= kHuge &&
                                                           AgreeInSingle(value, entry.value)));
  });
}

std::string MissingInColumn(double value, std::int32_t column) {
  return ShortestText(value) + std::string(kOfColumn) + std::to_string(column);
}

bool LooksMissing(double value) {
  return value != kNine && KindOf(value) != Sentinel::None;
}

std::vector<std::string> SuggestMissing(std::span<const double> values) {
  Sorted sorted = SortOut(values, [](double value) { return KindOf(value) != Sentinel::None; });
  if (sorted.others.count == 0) {
    if (sorted.candidates.size() != 1 || sorted.candidates.front().value == kNine) return {};
    return {ShortestText(sorted.candidates.front().value)};
  }
  MoveInliers(sorted);
  if (sorted.candidates.size() > kMostSuggested || HoldsBothEnds(sorted.candidates)) return {};
  std::size_t count = sorted.others.count;
  std::vector<std::string> missing;
  for (const Candidate& candidate : sorted.candidates) {
    count += candidate.count;
    missing.push_back(ShortestText(candidate.value));
  }
  const bool enough_others =
      sorted.others.count >= kOthersThatSuffice || sorted.others.count * 20 >= count;
  return enough_others ? missing : std::vector<std::string>();
}

std::vector<double> SuggestMissingOfColumn(std::span<const double> values) {
  auto [candidates, others] = SortOut(values, &IsOfNinesHere);
  const double width = others.max - others.min;
  std::erase_if(candidates, [&, &rest = others](const Candidate& candidate) {
    const double gap = std::max(rest.min - candidate.value, candidate.value - rest.max);
    const bool below = candidate.value < 0 && rest.min >= 0;
    return candidate.count < 2 || gap <= width * (below ? kWidthsApartBelowZero : 1);
  });
  const bool below = others.min >= 0 && std::ranges::all_of(candidates, [](const Candidate& one) {
                       return one.value < 0;
                     });
  const std::size_t suffice = below ? kOthersThatSufficeAbove : kOthersThatSuffice;
  if (others.count < suffice || candidates.size() > kMostSuggested) return {};
  std::vector<double> missing(candidates.size());
  std::ranges::transform(candidates, missing.begin(), &Candidate::value);
  return missing;
}

}  // namespace tarnwick
