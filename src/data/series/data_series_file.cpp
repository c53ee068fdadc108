#include "data/series/data_series_file.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "base/number_list_text.h"
#include "data/points/arrival_order.h"
#include "data/points/point_columns.h"
#include "data/series/number_run_text.h"
#include "data/series/points_mark.h"
#include "fit/model/curve_fit_file.h"
#include "fit/model/fit_record_file.h"

namespace tarnwick {

namespace {

constexpr int kPointOrder = 51, kGaps = 52, kYErrorNumbers = 65, kXErrorNumbers = 66;

/// The point block has no ids: read again, points get 1, 2, … along the chain. What goes by ids is written in numbers of
/// arrival, from 1, which is what key 51 makes the ids of.
void WriteArrivals(SectionWriter& writer, const TDataSeries& series, WithPoints with_points) {
  const PointChain& points = series.Points();
  const PointGaps& gaps = series.Gaps();
  const bool asked = with_points == WithPoints::YesAndOrder || !gaps.Empty();
  if (with_points == WithPoints::No || points.Empty() || !asked) return;
  if (!IdsAscend(points)) {
    const std::vector<std::uint32_t> order = ArrivalOrder(points);
    const std::vector<std::int32_t> places(order.begin(), order.end());
    writer.WriteString(kPointOrder, "PointOrder", NumberRunText(places));
  }
  if (gaps.Empty()) return;
  std::vector<std::int32_t> ids = Ids(points);
  std::ranges::sort(ids);
  const auto arrivals_before = [&ids](std::int64_t id) {
    return static_cast<std::int32_t>(std::ranges::lower_bound(ids, id) - ids.begin());
  };
  const std::int32_t last = arrivals_before(std::int64_t{gaps.Last()} + 1);
  std::vector<std::int32_t> numbers = {last};
  std::int32_t before = 1;
  for (const std::int32_t begin : gaps.Begins()) {
    const std::int32_t number = arrivals_before(begin) + 1;
    if (number <= before || number > last) continue;
    numbers.push_back(number);
    before = number;
  }
  writer.WriteString(kGaps, "Gaps", NumberRunText(numbers));
}

void WriteErrorNumbers(SectionWriter& writer, const TDataSeries& series, WithPoints with_points) {
  if (with_points == WithPoints::No || series.Points().Empty()) return;
  const auto write = [&](int key, std::string_view name, const ErrorColumn& column) {
    if (column.Empty()) return;
    writer.WriteString(key, name, NumberListText(NumbersAlong(series.Points(), column)));
  };
  write(kYErrorNumbers, "YErrors", series.Errors().y_values);
  write(kXErrorNumbers, "XErrors", series.Errors().x_values);
}

/// The keys that say something of the points, which come later.
struct OfPoints {
  std::string order, gaps, y_errors, x_errors;
  LastFitReader last_fit;
};

std::optional<std::vector<std::uint32_t>> ParseOrder(const std::string& text, std::size_t points) {
  const std::optional<std::vector<std::int32_t>> places = ParseNumberRun(text, points);
  if (!places) return std::nullopt;
  std::vector<std::uint32_t> order;
  for (const std::int32_t place : *places) order.push_back(static_cast<std::uint32_t>(place));
  if (!IsOrderOf(order, points)) return std::nullopt;
  return order;
}

PointGaps ParseGaps(const std::string& text, std::size_t points) {
  std::vector<std::int32_t> numbers = ParseNumberRun(text, points).value_or(std::vector<int>{});
  if (numbers.size() < 2) return {};
  const std::int32_t last = numbers.front();
  numbers.erase(numbers.begin());
  const bool ascend = std::ranges::adjacent_find(numbers, std::greater_equal<>()) == numbers.end();
  const bool inside = numbers.front() > 1 && numbers.back() <= last;
  return ascend && inside && std::cmp_less_equal(last, points) ? PointGaps(std::move(numbers), last)
                                                               : PointGaps();
}

/// Texts that do not fit `points`, those of the block, are passed over: what they hold is worth less than the points.
void TakeArrivals(const OfPoints& texts, std::size_t points, TDataSeries& series) {
  if (points == 0 || series.Points().Size() != points) return;
  if (!texts.order.empty()) {
    const std::optional<std::vector<std::uint32_t>> order = ParseOrder(texts.order, points);
    if (!order) return;
    DataState state = series.State();
    state.points = WithOrder(series.Points(), *order);
    for (const auto column : {&PointErrors::y_values, &PointErrors::x_values}) {
      if ((state.errors.*column).Empty()) continue;
      const std::vector<double> numbers = NumbersAlong(series.Points(), state.errors.*column);
      state.errors.*column = ColumnAlong(state.points, numbers);
    }
    series.SetState(state);
  }
  series.SetGaps(ParseGaps(texts.gaps, points));
}

// The model's sections go between the fields, by their numbers.
void WriteKeys(SectionWriter& writer, const TDataSeries& series, WithPoints with_points) {
  constexpr std::array kFitSections = {kModelSection, kRunSection, kTemplateSection,
                                       kWeightSection};
  const FitSettings fit = series.Fit().Settings();
  auto section = kFitSections.begin();
  for (const Field<TDataSeries>& field : DataSeriesFields()) {
    for (; section != kFitSections.end() && *section < field.number; ++section) {
      WriteCurveFitKeys(writer, *section, fit);
    }
    WriteField(writer, field, series);
  }
  for (; section != kFitSections.end(); ++section) WriteCurveFitKeys(writer, *section, fit);
  WriteArrivals(writer, series, with_points);
  WriteErrorNumbers(writer, series, with_points);
  // Of a fit whose points are not there, nothing is left but the values.
  if (with_points == WithPoints::No) return;
  WriteLastFit(writer, series.Fit().Last(), [&series] { return MarkOf(series); });
}

OfPoints ReadKeys(SectionReader& reader, TDataSeries& series) {
  OfPoints texts;
  CurveFitReader fit;
  for (int number = reader.ReadKey(); number != 0; number = reader.ReadKey()) {
    if (CurveFitReader::Knows(number)) {
      fit.Take(number, reader);
    } else if (number == kPointOrder) {
      texts.order = reader.ReadAsString();
    } else if (number == kGaps) {
      texts.gaps = reader.ReadAsString();
    } else if (number == kYErrorNumbers) {
      texts.y_errors = reader.ReadAsString();
    } else if (number == kXErrorNumbers) {
      texts.x_errors = reader.ReadAsString();
    } else if (number == kLastFitKey) {
      texts.last_fit.Take(reader);
    } else if (!ReadField<TDataSeries>(reader, number, DataSeriesFields(), series)) {
      reader.SkipValue();
    }
  }
  // Not compiled here: a model that cannot be compiled leaves the rest of the file as good as it is.
  series.Fit().SetSettings(fit.Finish(), MarkModified::No);
  return texts;
}

}  // namespace

void WriteDataSeries(SectionWriter& writer, const TDataSeries& series, WithPoints with_points,
                     const std::function<void()>& after_block) {
  WriteKeys(writer, series, with_points);
  writer.WriteEndOfSection();
  if (with_points == WithPoints::No) {
    writer.WritePointBlockHeader(0);
    return;
  }
  writer.WritePointBlockHeader(series.PointCount());
  series.Points().ForEachChunk([&](const ChunkView& chunk) {
    for (std::size_t i = 0; i < chunk.x.size(); ++i) writer.WritePoint(chunk.x[i], chunk.y[i]);
    if (after_block) after_block();
  });
}

void ReadDataSeries(SectionReader& reader, TDataSeries& series) {
  const OfPoints texts = ReadKeys(reader, series);
  // Blocks bound the memory beside the DataSet; their result is that of single points.
  constexpr std::size_t kBlock = 65536;
  const auto points = static_cast<std::size_t>(std::max(0, reader.ReadPointBlockHeader()));
  // Errors that do not fit the points are passed over, too.
  const std::vector<double> none;
  const std::vector<double> y_errors = ParseNumberList(texts.y_errors, points).value_or(none);
  const std::vector<double> x_errors = ParseNumberList(texts.x_errors, points).value_or(none);
  const OwnErrorSpans own{y_errors, x_errors};
  std::size_t left = points;
  std::vector<double> x;
  std::vector<double> y;
  while (left > 0) {
    const std::size_t count = std::min(left, kBlock);
    x.clear();
    y.clear();
    for (std::size_t i = 0; i < count; ++i) {
      const StreamPoint point = reader.ReadPoint();
      x.push_back(point.x);
      y.push_back(point.y);
    }
    series.AddPoints(x, y, own.Part(points - left, count));
    left -= count;
  }
  TakeArrivals(texts, points, series);
  series.Fit().SetLast(
      texts.last_fit.Finish(series.Fit().Settings(), [&series] { return MarkOf(series); }));
  // As it was written, after a fit: what is shown of it need not be computed anew.
  if (series.Fit().Result()) series.Fit().Change(MarkModified::No);
}

}  // namespace tarnwick
