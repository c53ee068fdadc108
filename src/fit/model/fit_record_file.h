// The stored form of what a model remembers of its last fit: rows of text under one key, each a word and its value. Knows what
// is written and that what is read may be damaged; nothing of DataSets or files.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fit/model/fit_record.h"
#include "stream/section_reader.h"
#include "stream/section_writer.h"

namespace tarnwick {

/// The key of every row.
inline constexpr int kLastFitKey = 80;

/// Asked only where the points are those of a fit.
using MarkPoints = std::function<PointsMark()>;

/// Nothing without a record.
void WriteLastFit(SectionWriter& writer, const LastFit& last, const MarkPoints& points);

/// Collects a fit from its rows as they come. Rows of words that are not known are passed over; where one makes no sense, or is
/// missing, all are.
class LastFitReader {
 public:
  /// Reads the pending value. Throws StreamError.
  void Take(SectionReader& reader);
  /// The fit beside the model that the file has now, and its points: it holds where both are those that it left. Damaged
  /// where rows came that make no fit.
  LastFit Finish(const FitSettings& model, const MarkPoints& points) const;

 private:
  bool TakeRow(std::string_view word, std::string_view value);
  bool TakeParameter(std::string_view value);
  bool TakeMember(std::string_view value);
  bool TakePoints(std::string_view value);
  bool MakesSense() const;
  FitSettings ModelBeside(const FitSettings& present) const;

  std::int32_t rows_ = 0;
  std::optional<std::int32_t> announced_;  // rows that there should be
  bool damaged_ = false;
  bool model_changed_ = false, points_changed_ = false;
  std::optional<PointsMark> points_;
  FitSettings model_;  // with what of it is stored
  FitResult result_;
  FitOfSeveral together_;
};

}  // namespace tarnwick
