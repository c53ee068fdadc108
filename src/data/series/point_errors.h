// The errors of a DataSet's points, of Y and of X: a rule for each and what columns gave. Plain values that share their memory
// when copied; knows ids and numbers, no file and no picture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "base/undefined.h"
#include "data/points/cow_ptr.h"
#include "data/points/point_chain.h"

namespace tarnwick {

class TDataSeries;

/// Where the errors of Y (or X) come from, as stored.
enum class ErrorKind : std::uint8_t {
  None = 0,
  Column = 1,    ///< each point has its own, or none
  Constant = 2,  ///< the same for all
  Percent = 3,   ///< of the value's size
  Counts = 4,    ///< the square root of stored Y; of Y only
};

struct ErrorRule {
  ErrorKind kind = ErrorKind::None;
  double value = 0;  ///< the error itself, or the percentage
  bool operator==(const ErrorRule&) const = default;
};

/// One number for each point that has one, found by the point's id. Copies share their blocks until one is edited.
class ErrorColumn {
 public:
  bool Empty() const { return root_.operator->() == nullptr; }
  /// NaN for a point that has none.
  double Of(std::int32_t id) const {
    const Block* const block = FindBlock(NumberOf(id));
    return block == nullptr ? kUndefined : block->values[PlaceOf(id)];
  }
  /// What is not finite takes the point's number away; ids are above 0.
  void Set(std::int32_t id, double number);
  /// Of the ids first_id, first_id + 1, …
  void SetRun(std::int32_t first_id, std::span<const double> numbers);
  /// True when every point has the same number, or none, in both. Quick for copies.
  bool operator==(const ErrorColumn& other) const;

 private:
  static constexpr std::size_t kBlock = 2048;
  struct Block : CowCounted {
    Block();
    std::unique_ptr<Block> Clone() const { return std::make_unique<Block>(*this); }
    std::vector<double> values;
  };
  struct Root : CowCounted {
    std::unique_ptr<Root> Clone() const { return std::make_unique<Root>(*this); }
    std::vector<CowPtr<Block>> blocks;
  };

  static std::size_t NumberOf(std::int32_t id) { return static_cast<std::size_t>(id) / kBlock; }
  static std::size_t PlaceOf(std::int32_t id) { return static_cast<std::size_t>(id) % kBlock; }
  // Null where no point of the block has a number.
  const Block* FindBlock(std::size_t number) const {
    if (Empty() || number >= root_->blocks.size()) return nullptr;
    return root_->blocks[number].operator->();
  }
  Block& EditBlock(std::size_t number);

  CowPtr<Root> root_;  // none while there are no numbers
};

/// Rules and columns of both. A column says something only where its rule is ErrorKind::Column.
struct PointErrors {
  ErrorRule y, x;
  ErrorColumn y_values, x_values;
  bool operator==(const PointErrors&) const = default;
};

/// The errors that points bring with them: each as long as the points are many, or empty. NaN for none.
struct OwnErrorSpans {
  std::span<const double> y, x;

  OwnErrorSpans Part(std::size_t first, std::size_t count) const {
    return {y.empty() ? y : y.subspan(first, count), x.empty() ? x : x.subspan(first, count)};
  }
};

/// The error of a point; NaN where it has none that can be used: finite and not below 0. Y is the stored one.
double YErrorOf(const PointErrors& errors, const Point& point);
double XErrorOf(const PointErrors& errors, const Point& point);
double YErrorAt(const TDataSeries& series, const Point& point);
double XErrorAt(const TDataSeries& series, const Point& point);

inline bool HasYErrors(const PointErrors& errors) {
  return errors.y.kind != ErrorKind::None;
}
inline bool HasXErrors(const PointErrors& errors) {
  return errors.x.kind != ErrorKind::None;
}

/// The column's numbers in the order of the chain, NaN for none, and the column for points with those numbers.
std::vector<double> NumbersAlong(const PointChain& points, const ErrorColumn& column);
ErrorColumn ColumnAlong(const PointChain& points, std::span<const double> numbers);

}  // namespace tarnwick
