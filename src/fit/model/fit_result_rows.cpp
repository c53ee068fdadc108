#include "fit/model/fit_result_rows.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "base/number_list_text.h"

namespace tarnwick {
namespace {

using R = FitResult;
using Outcome = MinimiseOutcome;
using Statistics = FitStatistics;
using Texts = std::vector<std::string>;

// --- values as texts

template <class Integer>
requires std::is_integral_v<Integer> || std::is_enum_v<Integer> Texts TextsOf(Integer value) {
  return {std::to_string(static_cast<std::int64_t>(value))};
}
Texts TextsOf(double value) {
  return {NumberListText({&value, 1})};
}
Texts TextsOf(const std::optional<double>& value) {
  return value ? TextsOf(*value) : Texts();
}
Texts TextsOf(const std::string& value) {
  return value.empty() ? Texts() : Texts{value};
}
Texts TextsOf(const std::vector<std::string>& values) {
  return values;
}
Texts TextsOf(const std::vector<double>& values) {
  return values.empty() ? Texts() : Texts{NumberListText(values)};
}
Texts TextsOf(const std::vector<std::int32_t>& values) {
  return TextsOf(std::vector<double>(values.begin(), values.end()));
}
Texts TextsOf(const std::vector<TiedParameter>& values) {
  Texts texts;
  for (const TiedParameter& one : values)
    texts.push_back(NumberListText(std::vector{one.value, one.error}) + " " + one.name);
  return texts;
}
Texts TextsOf(const std::vector<SingularDirection>& values) {
  Texts texts;
  for (const SingularDirection& one : values) {
    std::vector<double> numbers = {one.relative_singular_value};
    numbers.insert(numbers.end(), one.parameters.begin(), one.parameters.end());
    texts.push_back(NumberListText(numbers));
  }
  return texts;
}
Texts TextsOf(const std::vector<AbsentTerm>& values) {
  Texts texts;
  for (const AbsentTerm& one : values) {
    std::vector<double> numbers = {one.gain, one.chance, static_cast<double>(one.parameter)};
    numbers.insert(numbers.end(), one.through.begin(), one.through.end());
    texts.push_back(NumberListText(numbers));
  }
  return texts;
}

// --- and back

constexpr StopReason LastOf(StopReason) {
  return StopReason::NoPoints;
}
constexpr FitWeights LastOf(FitWeights) {
  return FitWeights::Relative;
}
constexpr FitErrors LastOf(FitErrors) {
  return FitErrors::Scaled;
}
constexpr FitLoss LastOf(FitLoss) {
  return FitLoss::Cauchy;
}

bool Take(double& value, std::string_view text) {
  const std::optional<std::vector<double>> numbers = ParseNumberList(text, 1);
  if (numbers) value = numbers->front();
  return numbers.has_value();
}
template <class Integer>
requires std::is_integral_v<Integer> || std::is_enum_v<Integer>
bool Take(Integer& value, std::string_view text) {
  const std::optional<std::int64_t> number = ParseCount(text);
  if (!number) return false;
  if constexpr (std::is_enum_v<Integer>) {
    if (*number > static_cast<std::int64_t>(LastOf(Integer()))) return false;
  } else {
    if (!std::in_range<Integer>(*number)) return false;
  }
  value = static_cast<Integer>(*number);
  return true;
}
bool Take(std::optional<double>& value, std::string_view text) {
  return Take(value.emplace(), text);
}
bool Take(std::string& value, std::string_view text) {
  value = text;
  return true;
}
bool Take(std::vector<std::string>& values, std::string_view text) {
  values.emplace_back(text);
  return true;
}
bool Take(std::vector<double>& values, std::string_view text) {
  std::optional<std::vector<double>> numbers = ParseNumberList(text);
  if (!numbers) return false;
  values = *std::move(numbers);
  return true;
}
bool Take(std::vector<std::int32_t>& values, std::string_view text) {
  while (!text.empty()) {
    if (!Take(values.emplace_back(), TakeWord(text))) return false;
  }
  return true;
}
bool Take(std::vector<TiedParameter>& values, std::string_view text) {
  TiedParameter& one = values.emplace_back();
  if (!Take(one.value, TakeWord(text)) || !Take(one.error, TakeWord(text))) return false;
  one.name = text;
  return !text.empty();
}
bool Take(std::vector<SingularDirection>& values, std::string_view text) {
  SingularDirection& one = values.emplace_back();
  return Take(one.relative_singular_value, TakeWord(text)) && Take(one.parameters, text);
}

bool Take(std::vector<AbsentTerm>& values, std::string_view text) {
  AbsentTerm& one = values.emplace_back();
  return Take(one.gain, TakeWord(text)) && Take(one.chance, TakeWord(text)) &&
         Take(one.parameter, TakeWord(text)) && Take(one.through, text);
}

/// A member that a path of members leads to.
template <auto... Path>
constexpr FitResultRow Of(std::string_view word) {
  return {word, [](const R& result) { return TextsOf((result.*....*Path)); },
          [](R& result, std::string_view text) { return Take((result.*....*Path), text); }};
}

constexpr FitResultRow kRows[] = {
    Of<&R::outcome, &Outcome::why>("ended"),
    {"trust", [](const R& result) { return TextsOf(TrustOf(result.verdict)); },
     [](R& result, std::string_view text) { return TakeTrust(result.verdict, text); }},
    Of<&R::verdict, &FitVerdict::summary>("verdict"),
    Of<&R::verdict, &FitVerdict::notes>("note"),
    Of<&R::outcome, &Outcome::stop_test>("stop_test"),
    Of<&R::outcome, &Outcome::message>("message"),
    Of<&R::outcome, &Outcome::iterations>("iterations"),
    Of<&R::outcome, &Outcome::evaluations>("evaluations"),
    Of<&R::outcome, &Outcome::search_evaluations>("search_evaluations"),
    Of<&R::outcome, &Outcome::start_value>("start_sum_of_squares"),
    Of<&R::newton_sum_of_squares>("finishing_sum_of_squares"),
    Of<&R::points_in_range>("points_in_range"),
    Of<&R::points_used>("points_used"),
    Of<&R::undefined_points>("undefined_points"),
    Of<&R::points_without_error>("points_without_error"),
    Of<&R::points_without_weight>("points_without_weight"),
    Of<&R::names>("varied"),
    Of<&R::start>("start"),
    Of<&R::values>("values"),
    Of<&R::statistics, &Statistics::standard_errors>("standard_errors"),
    Of<&R::at_bound>("at_bound"),
    Of<&R::unmoved>("unmoved"),
    Of<&R::singular_directions>("trading"),
    Of<&R::absent>("absent"),
    Of<&R::tied>("tied"),
    Of<&R::statistics, &Statistics::weighting, &FitWeighting::weights>("weights"),
    Of<&R::statistics, &Statistics::weighting, &FitWeighting::errors>("errors"),
    Of<&R::statistics, &Statistics::weighting, &FitWeighting::loss>("loss"),
    Of<&R::statistics, &Statistics::weighting, &FitWeighting::loss_scale>("loss_scale"),
    Of<&R::statistics, &Statistics::points>("points_in_sum"),
    Of<&R::statistics, &Statistics::degrees_of_freedom>("degrees_of_freedom"),
    Of<&R::statistics, &Statistics::sum_of_squares>("sum_of_squares"),
    Of<&R::statistics, &Statistics::residual_deviation>("residual_deviation"),
    Of<&R::statistics, &Statistics::reduced_chi_squared>("reduced_chi_squared"),
    Of<&R::statistics, &Statistics::chi_squared_probability>("chi_squared_probability"),
    Of<&R::statistics, &Statistics::r_squared>("r_squared"),
    Of<&R::statistics, &Statistics::adjusted_r_squared>("adjusted_r_squared"),
    Of<&R::statistics, &Statistics::aic>("aic"),
    Of<&R::statistics, &Statistics::aicc>("aicc"),
    Of<&R::statistics, &Statistics::bic>("bic"),
    Of<&R::statistics, &Statistics::residual_correlation>("residual_correlation"),
    Of<&R::statistics, &Statistics::unit_variance>("unit_variance"),
    Of<&R::statistics, &Statistics::mean_variance>("mean_variance"),
    Of<&R::statistics, &Statistics::covariance>("covariance"),
    Of<&R::statistics, &Statistics::correlation>("correlation"),
    Of<&R::statistics, &Statistics::determined_covariance>("determined_covariance"),
};

}  // namespace

std::span<const FitResultRow> FitResultRows() {
  return kRows;
}

bool IsWhole(const FitResult& result) {
  const std::size_t count = result.names.size();
  const Statistics& statistics = result.statistics;
  if (result.start.size() != count || result.values.size() != count) return false;
  const auto fits = [](const std::vector<double>& list, std::size_t size) {
    return list.empty() || list.size() == size;
  };
  const auto numbers = [&](const std::vector<std::int32_t>& places) {
    return std::ranges::all_of(places, [&](std::int32_t i) { return std::cmp_less(i, count); });
  };
  const auto is_term = [&](const AbsentTerm& term) {
    return std::cmp_less(term.parameter, count) && numbers(term.through);
  };
  return fits(statistics.standard_errors, count) && fits(statistics.covariance, count * count) &&
         fits(statistics.correlation, count * count) &&
         fits(statistics.determined_covariance, count * count) && numbers(result.at_bound) &&
         numbers(result.unmoved) && std::ranges::all_of(result.absent, is_term) &&
         std::ranges::all_of(result.singular_directions, numbers, &SingularDirection::parameters);
}

int TrustOf(const FitVerdict& verdict) {
  if (verdict.trustworthy) return 2;
  return verdict.untested ? 1 : 0;
}

bool TakeTrust(FitVerdict& verdict, std::string_view text) {
  const std::optional<std::int64_t> trust = ParseCount(text);
  verdict.untested = trust == 1;
  verdict.trustworthy = trust == 2;
  return trust && *trust <= 2;
}

std::string_view TakeWord(std::string_view& text) {
  const std::string_view word = text.substr(0, text.find(' '));
  text.remove_prefix(std::min(text.size(), word.size() + 1));
  return word;
}

std::optional<std::int64_t> ParseCount(std::string_view text) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 0) return std::nullopt;
  return number;
}

}  // namespace tarnwick
