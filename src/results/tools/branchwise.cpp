#include "results/tools/branchwise.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "data/series/line_breaks.h"
#include "graph/line_way.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostTold = 4;  // parts of which each is told by itself

/// One branch or piece as a DataSet by itself.
struct Part {
  std::unique_ptr<TSeries> series;
  bool falls = false;  // X does along the line
};

/// What is told of each part: once where it is the same of all.
class ToldOfParts {
 public:
  void Add(std::string told) { told_.push_back(std::move(told)); }

  std::string Text(const char* part) const {
    if (std::ranges::adjacent_find(told_, std::not_equal_to<>()) == told_.end())
      return told_.empty() ? "" : told_.front();
    std::string text;
    const std::size_t named = told_.size() > kMostTold ? 1 : told_.size();
    for (std::size_t i = 0; i < named; ++i) {
      AddSentence(text, std::string(part) + " " + std::to_string(i + 1) + " of " +
                            std::to_string(told_.size()) + ": " + told_[i]);
    }
    return text;
  }

 private:
  std::vector<std::string> told_;
};

std::string Named(const TSeries& series) {
  return "\"" + series.SeriesName() + "\"";
}

std::string CountedOf(std::size_t count, const char* what) {
  return Counted(static_cast<std::int64_t>(count), what);
}

std::string CountedBranches(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " branch" : " branches");
}

LineWay WithoutBreaks(LineWay way) {
  way.breaks.clear();
  return way;
}

/// The points of `piece` in order of X, with their ids and by them their errors and gaps.
Part PartOf(const TSeries& source, const std::vector<Point>& along, const LinePiece& piece) {
  const auto begin = along.begin() + static_cast<std::ptrdiff_t>(piece.begin);
  std::vector<Point> points(begin, begin + static_cast<std::ptrdiff_t>(piece.Size()));
  Part part;
  part.falls = points.front().x > points.back().x;
  std::ranges::stable_sort(points, {}, &Point::x);
  const BaseLine line = source.GetBaseLine();
  DataState state = source.State();
  state.settings.AutoZero = false;
  state.settings.ZeroValue = line.offset;
  state.settings.BaseLineSlope = line.slope;
  state.settings.DuplicatesAllowed = true;
  state.points.Clear();
  for (const Point& point : points) state.points.Append(point);
  PointsEdited(state);
  part.series = std::make_unique<TSeries>();
  part.series->SetState(state);
  return part;
}

std::vector<Part> PartsOf(const TSeries& source, const LineWay& way,
                          const std::vector<LinePiece>& pieces) {
  const std::vector<Point> along = PointsAlong(source.Points(), way);
  std::vector<Part> parts;
  parts.reserve(pieces.size());
  for (const LinePiece& piece : pieces) parts.push_back(PartOf(source, along, piece));
  return parts;
}

/// The branches of another input that belong to those of the source; empty where it has one value at each X.
std::vector<Part> BranchesBeside(const std::vector<Part>& parts, const TSeries& source,
                                 const TSeries& other) {
  if (!TurnsBack(other)) return {};
  const LineWay way = WithoutBreaks(WayToCompute(other));
  std::vector<Part> beside = PartsOf(other, way, BranchesOf(way, other.Points()));
  if (!std::ranges::equal(parts, beside, {}, &Part::falls, &Part::falls)) {
    throw Error("X of " + Named(source) + " has " + CountedBranches(parts.size()) + ", that of " +
                Named(other) + " " + std::to_string(beside.size()) +
                ": they do not belong together.");
  }
  return beside;
}

/// Puts what was computed of the parts together.
class Joined {
 public:
  Joined(const TSeries& source, const LineWay& way, const std::vector<Point>& along)
      : source_(source), way_(way), along_(along) {}

  void Take(const TSeries& made, const LinePiece& piece, bool falls) {
    const std::size_t first = x_.size();
    if (std::ranges::binary_search(way_.breaks, piece.begin) && first > 0) breaks_.push_back(first);
    std::vector<Point> points = PointsAlong(made.Points(), {});
    if (falls) std::ranges::reverse(points);
    for (const Point& point : points) {
      x_.push_back(point.x);
      y_.push_back(point.y);
      if (HasYErrors(made.Errors())) y_errors_.push_back(YErrorAt(made, point));
      if (HasXErrors(made.Errors())) x_errors_.push_back(XErrorAt(made, point));
    }
    KeepGapsWithin(piece, first, falls);
    if (names_.XDataColumn.empty()) names_ = made.Source();
  }

  bool Empty() const { return x_.empty(); }

  std::unique_ptr<TSeries> Series() const {
    auto series = std::make_unique<TSeries>();
    series->SetDuplicatesAllowed(source_.DuplicatesAllowed() || !way_.order.empty());
    series->Source().XDataColumn = names_.XDataColumn;
    series->Source().YDataColumn = names_.YDataColumn;
    PointErrors errors;
    if (!y_errors_.empty()) errors.y.kind = ErrorKind::Column;
    if (!x_errors_.empty()) errors.x.kind = ErrorKind::Column;
    series->SetErrors(std::move(errors));
    series->AddPoints(x_, y_, {y_errors_, x_errors_});
    BreakBefore(*series, breaks_);
    return series;
  }

 private:
  /// Breaks the line where no point came out between those at a gap of the source inside the piece.
  void KeepGapsWithin(const LinePiece& piece, std::size_t first, bool falls) {
    const double sign = falls ? -1 : 1;
    for (const std::size_t gap : way_.breaks) {
      if (gap <= piece.begin || gap >= piece.end) continue;
      const double left = sign * along_[gap - 1].x, right = sign * along_[gap].x;
      std::size_t place = first;
      while (place < x_.size() && sign * x_[place] < right) ++place;
      if (place > first && place < x_.size() && sign * x_[place - 1] <= left)
        breaks_.push_back(place);
    }
  }

  const TSeries& source_;
  const LineWay& way_;
  const std::vector<Point>& along_;
  TDSInfo names_;
  std::vector<double> x_, y_, y_errors_, x_errors_;
  std::vector<std::size_t> breaks_;
};

Computed ComputeParts(const Tool& tool, const ToolInput& input, const LineWay& way,
                      const std::vector<LinePiece>& pieces) {
  TSeries& source = input.Source();
  const std::vector<Point> along = PointsAlong(source.Points(), way);
  const std::vector<Part> parts = PartsOf(source, way, pieces);
  std::vector<std::vector<Part>> beside;
  for (std::size_t i = 1; i < input.series.size(); ++i)
    beside.push_back(BranchesBeside(parts, source, *input.series[i]));
  Joined joined(source, way, along);
  ToldOfParts told;
  std::size_t too_short = 0, points_left_out = 0;
  for (std::size_t k = 0; k < parts.size(); ++k) {
    ToolInput of_part = input;
    for (std::size_t i = 0; i < input.series.size(); ++i) {
      if (i == 0) of_part.series[i] = parts[k].series.get();
      if (i > 0 && !beside[i - 1].empty()) of_part.series[i] = beside[i - 1][k].series.get();
    }
    if (tool.narrow != nullptr && !tool.narrow(of_part.settings, pieces[k].Size(), along.size())) {
      ++too_short;
      points_left_out += pieces[k].Size();
      continue;
    }
    Computed made = tool.compute(of_part);
    joined.Take(*made.series, pieces[k], parts[k].falls);
    told.Add(std::move(made.told));
  }
  if (joined.Empty()) throw Error("No branch or piece of " + Named(source) + " has points enough.");
  Computed computed{joined.Series(), told.Text(way.order.empty() ? "Piece" : "Branch")};
  if (too_short > 0)
    AddSentence(computed.told, CountedOf(points_left_out, "point") +
                                   " left out, whose branch or piece is too short.");
  return computed;
}

std::string TellTurns(const TSeries& source, AlongLine along, std::size_t branches) {
  if (!TurnsBack(source) || along == AlongLine::Each) return {};
  const std::string turns = "X of " + Named(source) + " turns back: ";
  switch (along) {
    case AlongLine::InX:
      return turns + "its points were taken in order of X, those of all branches together.";
    case AlongLine::Follows:
    case AlongLine::Across:
      return turns + "its points were taken in the order in which they came.";
    default:
      return turns + "each of its " + CountedBranches(branches) + " was taken by itself.";
  }
}

std::string TellGaps(const TSeries& source, AlongLine along, const LineWay& way) {
  const bool apart = along == AlongLine::Pieces || along == AlongLine::Follows;
  if ((!apart && along != AlongLine::Across) || way.breaks.empty()) return {};
  return BrokenAt(source, way.breaks.size()) +
         (apart ? ": nothing was taken across." : ": this goes straight across.");
}

}  // namespace

Computed ComputeAlongLine(const Tool& tool, const ToolInput& input) {
  const TSeries& source = input.Source();
  const AlongLine along = tool.along(input);
  const LineWay way = WayToCompute(source);
  const bool by_parts = along == AlongLine::Branches || along == AlongLine::Pieces;
  std::vector<LinePiece> pieces;
  if (by_parts && !way.IsPlain()) {
    pieces = BranchesOf(along == AlongLine::Pieces ? way : WithoutBreaks(way), source.Points());
  }
  Computed made = pieces.empty() ? tool.compute(input) : ComputeParts(tool, input, way, pieces);
  AddSentence(made.told, TellTurns(source, along, pieces.size()));
  AddSentence(made.told, TellGaps(source, along, way));
  if (along != AlongLine::InX && tool.x == ResultX::OfSource)
    made.line_order = source.Style().line_order;
  return made;
}

}  // namespace tarnwick
