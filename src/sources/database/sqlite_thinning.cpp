#include "sources/database/sqlite_thinning.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <mutex>
#include <span>
#include <thread>
#include <utility>

#include "sources/database/piece_run.h"
#include "sources/database/sqlite_file.h"
#include "sources/database/sqlite_road.h"

namespace tarnwick {
namespace {

constexpr double kNarrow = 1.0 / 16;  // of the whole: looking up by an index pays
constexpr std::int64_t kRowsBetweenLooks = 1 << 16;
constexpr std::size_t kPiecesOfWhole =
    64;  // shared by the columns of Y: what is kept of a piece grows with their square
constexpr auto kBetweenPictures = std::chrono::milliseconds(500);

bool IsOfPart(const ThinnedView& view) {
  return std::isfinite(view.x_min) || std::isfinite(view.x_max);
}

/// Without an index all rows are gone through.
std::optional<XRange> WholeRange(const SqliteFile& file, const ThinnedView& view,
                                 const SqliteRoad& road, Progress& progress) {
  if (road.indexed) return IndexedRange(file, view, road);
  std::mutex mutex;
  std::optional<XRange> whole;
  const std::vector<std::string> pieces = KeyPieces(road, PieceThreads());
  const auto go_through = [&](std::size_t piece) {
    std::optional<XRange> range;
    const auto see = [&](std::span<sqlite3_value* const> row) {
      const double x = SqliteNumber(row[0], view.x.format);
      if (!std::isfinite(x)) return;
      if (!range) range = XRange{x, x};
      range->x_min = std::min(range->x_min, x);
      range->x_max = std::max(range->x_max, x);
    };
    const SqliteFile own(view.place, progress);
    HandSqliteRows(own, SqliteName(view.x.name), road.from + " WHERE " + pieces[piece], see);
    const std::lock_guard lock(mutex);
    if (!range) return;
    if (!whole) whole = range;
    whole->x_min = std::min(whole->x_min, range->x_min);
    whole->x_max = std::max(whole->x_max, range->x_max);
  };
  RunPieces(pieces.size(), go_through, [] {});
  return whole;
}

/// Parts of the statement's WHERE.
std::vector<std::string> PiecesOf(const ThinnedView& view, const SqliteRoad& road, XRange range,
                                  double whole) {
  const std::string x = SqliteName(view.x.name);
  if (!IsOfPart(view)) {
    return KeyPieces(road, std::max(PieceThreads(), kPiecesOfWhole / view.y.size()));
  }
  std::vector<std::string> pieces;
  if (road.indexed && (road.covered || range.x_max - range.x_min < whole * kNarrow)) {
    const std::size_t threads = PieceThreads();
    for (std::size_t i = 0; i < threads; ++i) {
      const double step = (range.x_max - range.x_min) / static_cast<double>(threads);
      const double from = range.x_min + step * static_cast<double>(i);
      const bool last = i + 1 == threads;
      const double to = last ? range.x_max : range.x_min + step * static_cast<double>(i + 1);
      std::string& piece = pieces.emplace_back(x);
      piece += " >= " + SqliteLiteral(from) + " AND ";
      piece += x + (last ? " <= " : " < ") + SqliteLiteral(to);
    }
    return pieces;
  }
  pieces = KeyPieces(road, PieceThreads());
  if (!road.by_number) return pieces;
  // The sign keeps the index out: what it finds would be looked up row by row.
  const std::string bounds = " AND +" + x + " >= " + SqliteLiteral(range.x_min) + " AND +" + x +
                             " <= " + SqliteLiteral(range.x_max);
  for (std::string& piece : pieces) piece += bounds;
  return pieces;
}

/// Nothing where no row is in view.
void Begin(const ThinnedView& view, const SqliteRoad& road, std::optional<XRange> whole,
           ThinnedSoFar& so_far) {
  so_far.x_min = whole ? std::max(whole->x_min, view.x_min) : 1;
  so_far.x_max = whole ? std::min(whole->x_max, view.x_max) : 0;
  if (so_far.x_min > so_far.x_max) {
    so_far.columns.emplace(0, 0, view.columns, view.y.size());
    return;
  }
  so_far.columns.emplace(std::isfinite(view.x_min) ? view.x_min : so_far.x_min,
                         std::isfinite(view.x_max) ? view.x_max : so_far.x_max, view.columns,
                         view.y.size());
  so_far.left = PiecesOf(view, road, {so_far.x_min, so_far.x_max}, whole->x_max - whole->x_min);
  so_far.pieces = so_far.left.size();
}

/// Goes through the pieces that are left.
class Reading {
 public:
  Reading(const ThinnedView& view, const SqliteRoad& road, ThinnedSoFar& so_far,
          const ThinnedTaker& take, Progress& progress)
      : view_(view),
        road_(road),
        so_far_(so_far),
        take_(take),
        progress_(progress),
        empty_(*so_far.columns),
        pieces_(so_far.left),
        is_done_(pieces_.size(), 0) {
    empty_.Clear();
  }

  void Run() {
    try {
      RunPieces(
          pieces_.size(), [this](std::size_t piece) { GoThrough(piece); }, [this] { Show(); });
    } catch (...) {
      Leave();
      throw;
    }
    Leave();
  }

 private:
  void GoThrough(std::size_t piece) {
    const SqliteFile file(view_.place, progress_);
    file.Require(!progress_.Cancelled());
    ThinnedColumns columns = empty_;
    std::vector<double> row(1 + view_.y.size());
    std::int64_t seen = 0;
    const bool asks = std::this_thread::get_id() == asker_;
    const auto add = [&](std::span<sqlite3_value* const> values) {
      if (asks && ++seen % kRowsBetweenLooks == 0) Advance();
      row[0] = SqliteNumber(values[0], view_.x.format);
      if (!(row[0] >= so_far_.x_min && row[0] <= so_far_.x_max)) return;
      for (std::size_t y = 1; y < row.size(); ++y) {
        row[y] = SqliteNumber(values[y], view_.y[y - 1].format);
      }
      columns.Add(row.data());
    };
    HandSqliteRows(file, road_.columns, road_.from + " WHERE " + pieces_[piece], add);
    const std::lock_guard lock(mutex_);
    so_far_.columns->Merge(columns);
    is_done_[piece] = 1;
    ++done_;
  }

  double Share() const {
    const std::size_t before = so_far_.pieces - pieces_.size();
    return static_cast<double>(before + done_) / static_cast<double>(so_far_.pieces);
  }

  void Advance() {
    const auto most = static_cast<double>(MostThinnedRows(view_.columns));
    progress_.Advance(static_cast<std::int64_t>(Share() * most));
  }

  void Show() {
    Advance();
    const auto now = std::chrono::steady_clock::now();
    if (!take_ || now - shown_ < kBetweenPictures) return;
    std::unique_lock lock(mutex_);
    const ThinnedRows rows = so_far_.columns->Rows();
    lock.unlock();
    take_(rows, Share());
    shown_ = std::chrono::steady_clock::now();
  }

  void Leave() {
    so_far_.left.clear();
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
      if (is_done_[i] == 0) so_far_.left.push_back(pieces_[i]);
    }
  }

  const ThinnedView& view_;
  const SqliteRoad& road_;
  ThinnedSoFar& so_far_;
  const ThinnedTaker& take_;
  Progress& progress_;
  ThinnedColumns empty_;
  const std::vector<std::string> pieces_;
  std::vector<char> is_done_;
  std::atomic<std::size_t> done_ = 0;
  std::mutex mutex_;  // of what pieces come together in
  const std::thread::id asker_ = std::this_thread::get_id();
  std::chrono::steady_clock::time_point shown_ = std::chrono::steady_clock::now();
};

}  // namespace

ThinnedRows FetchThinnedOfSqlite(const ThinnedView& view, ThinnedSoFar& so_far,
                                 const ThinnedTaker& take, Progress& progress) {
  RequireSqliteFile(view.place.address);
  const SqliteFile file(view.place, progress);
  const SqliteRoad road = RoadOf(file, view);
  if (!so_far.columns) Begin(view, road, WholeRange(file, view, road, progress), so_far);
  if (!so_far.left.empty()) Reading(view, road, so_far, take, progress).Run();
  return so_far.columns->Rows();
}

}  // namespace tarnwick
