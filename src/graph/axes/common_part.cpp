#include "graph/axes/common_part.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/day_number.h"
#include "base/number_text.h"
#include "graph/axes/calendar_scale.h"
#include "graph/axes/nice_step.h"
#include "graph/axes/tick_label.h"

namespace tarnwick {
namespace {

/// How many times farther the ticks are from zero than from each other where an offset is worth its place.
constexpr double kFarFromZero = 1e4;

struct Span {
  double min = 0;
  double max = 0;
};

std::optional<Span> LabelledSpan(const std::vector<Tick>& ticks) {
  std::optional<Span> span;
  for (const Tick& tick : ticks) {
    if (tick.label.empty()) continue;
    span = {span ? std::min(span->min, tick.value) : tick.value,
            span ? std::max(span->max, tick.value) : tick.value};
  }
  return span;
}

/// The number of fewest digits within a span of positive numbers, or, where none is rounder than the span is wide, the one below
/// it.
double RoundestIn(Span span) {
  const int wide = SplitDecimal(span.max - span.min).exponent + 1;
  const auto multiple = [](double value, int exponent, auto round) {
    const long double power = std::pow(10.0L, static_cast<long double>(exponent));
    return ScaledByTen(std::llround(round(static_cast<long double>(value) / power)), exponent);
  };
  for (int exponent = SplitDecimal(span.max).exponent; exponent >= wide; --exponent) {
    const double above =
        multiple(span.min, exponent, [](long double value) { return std::ceil(value); });
    if (above >= span.min && above <= span.max) return above;
  }
  return multiple(span.min, wide, [](long double value) { return std::floor(value); });
}

double OffsetOf(Span span) {
  if (span.min > 0) return RoundestIn(span);
  return span.max < 0 ? -RoundestIn({-span.max, -span.min}) : 0;
}

std::string OffsetText(double offset) {
  constexpr double kLargestWhole = 1e18;
  constexpr int kMostDecimals = 15;
  int decimals = 0;
  while (decimals < kMostDecimals && ParseNumber(FixedText(offset, decimals)) != offset) ++decimals;
  const std::string text =
      std::abs(offset) < kLargestWhole ? FixedText(offset, decimals) : ShortestText(offset);
  return offset > 0 ? "+" + text : text;
}

bool ShowsPart(const std::string& format, const DateTime& one, const DateTime& other) {
  return FormatDay(JoinDay(one), format) != FormatDay(JoinDay(other), format);
}

/// The format that the ticks' labels are written in: the axis' own, unless that did not tell them apart.
std::string FormatOf(const AxisState& axis, const std::vector<Tick>& ticks) {
  const bool own = std::all_of(ticks.begin(), ticks.end(), [&](const Tick& tick) {
    return tick.label.empty() || tick.label == FormatDay(tick.value, axis.DateTimeFormat);
  });
  return own ? axis.DateTimeFormat : SuggestDateFormat(axis.Min, axis.Max);
}

}  // namespace

OffsetLabels TakeOffset(const AxisState& axis, const std::vector<Tick>& ticks) {
  OffsetLabels taken{{}, axis, ticks};
  const std::optional<Span> span = LabelledSpan(ticks);
  if (!TakesCommonPart(axis) || !span || !(span->min < span->max)) return taken;
  const double farthest = std::max(std::abs(span->min), std::abs(span->max));
  if (!std::isfinite(farthest) || farthest < kFarFromZero * (span->max - span->min)) return taken;
  const double offset = OffsetOf(*span);
  if (offset == 0 || !std::isfinite(offset)) return taken;
  taken.offset = OffsetText(offset);
  taken.axis.Min -= offset;
  taken.axis.Max -= offset;
  for (Tick& tick : taken.ticks) {
    tick.value -= offset;
    if (!tick.label.empty()) tick.label = TickLabelText(taken.axis, tick.value);
  }
  return taken;
}

std::string CommonDate(const AxisState& axis, const std::vector<Tick>& ticks) {
  constexpr double kLongestPassed = 420;  // days: times run to 9999 hours
  constexpr double kHalfSecond = 0.5 / 86'400;
  const std::optional<Span> span = LabelledSpan(ticks);
  if (!axis.ShowAsTime || axis.LogScale || !span || span->max < kLongestPassed ||
      !IsCalendarDay(span->min) || !IsCalendarDay(span->max))
    return {};
  const std::string format = FormatOf(axis, ticks);
  // All of them Mondays, so that the day's name tells nothing about them.
  constexpr DateTime kDay{.year = 2001, .month = 1, .day = 1};
  if (ShowsPart(format, kDay, {.year = 2007, .month = 1, .day = 1})) return {};
  const bool dated = ShowsPart(format, kDay, {.year = 2001, .month = 10, .day = 1}) ||
                     ShowsPart(format, kDay, {.year = 2001, .month = 1, .day = 29});
  const char* left_out = dated ? "yyyy" : "yyyy-mm-dd";
  std::string first = FormatDay(span->min, left_out);
  // Midnight at the end belongs to what it ends.
  const std::string last = FormatDay(std::max(span->max - kHalfSecond, span->min), left_out);
  if (first == last) return first;
  return first + (dated ? "\u2013" : " \u2013 ") + last;
}

}  // namespace tarnwick
