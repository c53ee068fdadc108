#include "desk/document/whole_reading.h"

#include <QTimer>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "base/error.h"
#include "data/packed/unpack.h"
#include "desk/document/document.h"
#include "desk/work/latest_work.h"
#include "graph/graph_update.h"
#include "graph/series_of_whole.h"
#include "sources/database/database_source.h"
#include "sources/database/session_passwords.h"

namespace tarnwick {
namespace {

bool SameTable(const ThinnedView& one, const ThinnedView& other) {
  return one.place.Text() == other.place.Text() && one.x == other.x;
}

/// Of one Y those that have it.
ThinnedRows RowsOf(const ThinnedRows& rows, std::size_t y) {
  ThinnedRows some{.x = {}, .y = {{}}, .rows = rows.rows};
  for (std::size_t i = 0; i < rows.x.size(); ++i) {
    if (std::isnan(rows.y[y][i])) continue;
    some.x.push_back(rows.x[i]);
    some.y[0].push_back(rows.y[y][i]);
  }
  return some;
}

/// "y", "z", in quotes
std::string NamesOf(const std::vector<const TSeries*>& all) {
  std::string names;
  for (const TSeries* const series : all) {
    names += (names.empty() ? "\"" : ", \"") + series->SeriesName() + '"';
  }
  return names;
}

std::string NamesOf(const std::vector<TSeries*>& whole, const std::vector<std::size_t>& places) {
  std::vector<const TSeries*> some;
  some.reserve(places.size());
  for (const std::size_t place : places) some.push_back(whole[place]);
  return NamesOf(some);
}

constexpr int kBusyMs = 200;
constexpr const char* kMissing = "spikes may be missing until then";

}  // namespace

bool WholeReading::Table::operator==(const Table& other) const {
  return SameTable(view, other.view) && view.y == other.view.y && places == other.places;
}

struct WholeReading::Reading {
  Table table;
  std::shared_ptr<ThinnedSoFar> so_far = std::make_shared<ThinnedSoFar>();
  bool begun = false;
  bool failed = false;
};

WholeReading::WholeReading(Document& document, std::function<Stretch(std::size_t place)> view,
                           std::function<void(std::size_t place)> replaced, QObject* parent)
    : QObject(parent),
      document_(document),
      view_(std::move(view)),
      replaced_(std::move(replaced)),
      asking_(new LatestWork(this)),
      passwords_(document.GetPrompt()) {}

WholeReading::~WholeReading() = default;

bool WholeReading::IsWanted() const {
  return reading_ || !Coarse().empty() || CoarseNames() != left_coarse_;
}

bool WholeReading::IsRunning() const {
  return asking_->IsRunning();
}

void WholeReading::GiveUp() {
  asking_->GiveUp();
}

std::vector<WholeReading::Table> WholeReading::Coarse() const {
  std::vector<Table> tables;
  const std::vector<TSeries*> whole = SeriesOfWhole(document_.WholeGraph());
  for (std::size_t place = 0; place < whole.size(); ++place) {
    const TSeries& series = *whole[place];
    if (!IsCoarse(series.Source()) || WasEdited(document_, series)) continue;
    const ThinnedView view = WholeViewOf(series.Source());
    const auto same = std::ranges::find_if(
        tables, [&](const Table& table) { return SameTable(table.view, view); });
    if (same == tables.end()) {
      tables.push_back({view, {place}});
    } else {
      same->view.y.push_back(view.y.front());
      same->places.push_back(place);
    }
  }
  return tables;
}

void WholeReading::GoOn() {
  const std::vector<Table> tables = Coarse();
  if (tables.empty()) return Abandon();
  const bool same = reading_ && reading_->table == tables.front();
  if (same && (IsRunning() || reading_->failed)) return;
  if (!same) {
    reading_ = std::make_unique<Reading>();
    reading_->table = tables.front();
  }
  const Table table = reading_->table;
  if (!std::exchange(reading_->begun, true)) {
    Tell("a coarse first picture of " +
         NamesOf(SeriesOfWhole(document_.WholeGraph()), table.places) +
         ": every row is being read, " + kMissing);
  }
  asking_->BeginInParts(
      [this, table, so_far = reading_->so_far](
          Progress& progress, const LatestWork::Interim& tell) -> LatestWork::Answer {
        const auto take = [&](const ThinnedRows& rows, double share) {
          tell([this, table, rows, share] { Take(table, rows, share); });
        };
        try {
          const ThinnedRows rows = FetchThinnedInPieces(table.view, *so_far, take, progress);
          return [this, table, rows] { Take(table, rows, 1); };
        } catch (const UnpackingCancelled&) {
          return [] {};
        } catch (const PasswordWanted& closed) {
          return [this, table, closed] {
            if (!passwords_.Ask(closed)) return TakeTrouble(table, closed.what());
            GoOn();
          };
        } catch (const Error& error) {
          return [this, table, text = std::string(error.what())] { TakeTrouble(table, text); };
        }
      });
}

/// Nothing can be read: there is nothing coarse, or it was edited.
void WholeReading::Abandon() {
  GiveUp();
  reading_.reset();
  if (std::string names = CoarseNames(); names != left_coarse_) {
    left_coarse_ = std::move(names);
    if (left_coarse_.empty()) return;
    Tell("the picture of " + left_coarse_ +
         " stays coarse, spikes may be missing: its points are not those that were read, "
         "refreshing reads them anew");
  }
}

std::string WholeReading::CoarseNames() const {
  std::vector<const TSeries*> coarse;
  for (const TSeries* const series : SeriesOfWhole(document_.WholeGraph())) {
    if (IsCoarse(series->Source())) coarse.push_back(series);
  }
  return NamesOf(coarse);
}

void WholeReading::Take(const Table& table, const ThinnedRows& rows, double share) {
  // What is being edited or read must not change meanwhile.
  if (document_.History().IsOpen() || document_.Work().IsRunning()) {
    if (share < 1) return;
    QTimer::singleShot(kBusyMs, this, [this, table, rows] { Take(table, rows, 1); });
    return;
  }
  const std::vector<Table> wanted = Coarse();
  // What was edited or read anew meanwhile is asked for again by its own change.
  if (std::ranges::find(wanted, table) == wanted.end()) return;
  const std::vector<TSeries*> whole = SeriesOfWhole(document_.WholeGraph());
  std::vector<PointsOfFile> points;
  std::string shown;
  {
    const GraphUpdate update(document_.WholeGraph());
    for (std::size_t y = 0; y < table.places.size(); ++y) {
      const std::size_t place = table.places[y];
      TSeries& series = *whole[place];
      const ThinnedRows of_y = RowsOf(rows, y);
      const Stretch view = view_(place);
      const PointChain before = series.Points();
      if (share >= 1) series.Source().RowSamplingFrequency = 1;
      ReplacePoints(
          series, share < 1 ? WithMoreRows(before, of_y, view) : WithEveryRow(before, of_y, view));
      points.push_back({series.Source().DatasourceInfo, series.Points()});
      replaced_(place);
      shown += (shown.empty() ? "" : "; ") +
               ShownRows(series, static_cast<std::int64_t>(of_y.x.size()), rows.rows);
    }
  }
  if (share < 1) {
    shown = "a coarse first picture of " + NamesOf(whole, table.places) +
            ": every row is being read, " + std::to_string(std::lround(share * 100)) + " % are, " +
            kMissing;
  }
  document_.Files().TakeView(points, shown);
  if (share < 1) return;
  reading_.reset();
  GoOn();
}

void WholeReading::TakeTrouble(const Table& table, const std::string& trouble) {
  if (reading_) reading_->failed = true;
  const std::vector<TSeries*> whole = SeriesOfWhole(document_.WholeGraph());
  const auto is_gone = [&](std::size_t place) { return place >= whole.size(); };
  if (std::ranges::any_of(table.places, is_gone)) return;
  Tell("the picture of " + NamesOf(whole, table.places) +
       " stays coarse, spikes may be missing: " + trouble);
}

void WholeReading::Tell(const std::string& text) {
  document_.Files().TakeView({}, text);
}

}  // namespace tarnwick
