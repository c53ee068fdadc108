#include "data/series/point_errors.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "data/series/data_series.h"

namespace tarnwick {
namespace {

bool AreSame(double left, double right) {
  return left == right || (std::isnan(left) && std::isnan(right));
}

double ByRule(const ErrorRule& rule, const ErrorColumn& column, std::int32_t id, double value) {
  constexpr double kPercent = 100;
  switch (rule.kind) {
    case ErrorKind::Column:
      return column.Of(id);
    case ErrorKind::Constant:
      return rule.value;
    case ErrorKind::Percent:
      return std::abs(value) * (rule.value / kPercent);
    case ErrorKind::Counts:
      return std::sqrt(value);
    case ErrorKind::None:
      break;
  }
  return kUndefined;
}

double IfUsable(double error) {
  return error >= 0 && std::isfinite(error) ? error : kUndefined;
}

}  // namespace

ErrorColumn::Block::Block() : values(kBlock, kUndefined) {}

ErrorColumn::Block& ErrorColumn::EditBlock(std::size_t number) {
  if (Empty()) root_ = CowPtr(std::make_unique<Root>());
  std::vector<CowPtr<Block>>& blocks = root_.Edit().blocks;
  if (number >= blocks.size()) blocks.resize(number + 1);
  if (blocks[number].operator->() == nullptr) blocks[number] = CowPtr(std::make_unique<Block>());
  return blocks[number].Edit();
}

void ErrorColumn::Set(std::int32_t id, double number) {
  SetRun(id, {&number, 1});
}

void ErrorColumn::SetRun(std::int32_t first_id, std::span<const double> numbers) {
  while (!numbers.empty()) {
    const std::size_t place = PlaceOf(first_id);
    const std::span<const double> part = numbers.first(std::min(numbers.size(), kBlock - place));
    const bool none = std::ranges::none_of(part, [](double value) { return std::isfinite(value); });
    if (!none || FindBlock(NumberOf(first_id)) != nullptr) {
      std::ranges::transform(
          part, EditBlock(NumberOf(first_id)).values.begin() + static_cast<std::ptrdiff_t>(place),
          [](double value) { return std::isfinite(value) ? value : kUndefined; });
    }
    numbers = numbers.subspan(part.size());
    first_id += static_cast<std::int32_t>(part.size());
  }
}

bool ErrorColumn::operator==(const ErrorColumn& other) const {
  if (root_.operator->() == other.root_.operator->()) return true;
  const auto count_of = [](const ErrorColumn& column) {
    return column.Empty() ? 0 : column.root_->blocks.size();
  };
  static const Block none;
  const std::size_t count = std::max(count_of(*this), count_of(other));
  for (std::size_t number = 0; number < count; ++number) {
    const Block* const left = FindBlock(number);
    const Block* const right = other.FindBlock(number);
    if (left == right) continue;
    if (!std::ranges::equal((left != nullptr ? left : &none)->values,
                            (right != nullptr ? right : &none)->values, AreSame)) {
      return false;
    }
  }
  return true;
}

double YErrorOf(const PointErrors& errors, const Point& point) {
  return IfUsable(ByRule(errors.y, errors.y_values, point.id, point.y));
}

double XErrorOf(const PointErrors& errors, const Point& point) {
  if (errors.x.kind == ErrorKind::Counts) return kUndefined;
  return IfUsable(ByRule(errors.x, errors.x_values, point.id, point.x));
}

double YErrorAt(const TDataSeries& series, const Point& point) {
  return YErrorOf(series.Errors(), point);
}

double XErrorAt(const TDataSeries& series, const Point& point) {
  return XErrorOf(series.Errors(), point);
}

std::vector<double> NumbersAlong(const PointChain& points, const ErrorColumn& column) {
  std::vector<double> numbers;
  numbers.reserve(points.Size());
  points.ForEachChunk([&](const ChunkView& view) {
    for (std::size_t i = 0; i < view.x.size(); ++i) numbers.push_back(column.Of(view.chunk->Id(i)));
  });
  return numbers;
}

ErrorColumn ColumnAlong(const PointChain& points, std::span<const double> numbers) {
  ErrorColumn column;
  points.ForEachChunk([&](const ChunkView& view) {
    for (std::size_t i = 0; i < view.x.size() && view.first_index + i < numbers.size(); ++i) {
      column.Set(view.chunk->Id(i), numbers[view.first_index + i]);
    }
  });
  return column;
}

}  // namespace tarnwick
