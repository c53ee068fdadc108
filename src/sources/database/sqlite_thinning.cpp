#include "sources/database/sqlite_thinning.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <exception>
#include <functional>
#include <future>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <thread>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "data/packed/unpack.h"
#include "data/text/field_value.h"
#include "data/text/stored_format.h"
#include "sources/database/database_value.h"
#include "sources/database/sqlite_file.h"
#include "sources/database/statement_limit.h"
#include "sources/database/thinned_columns.h"

namespace tarnwick {
namespace {

constexpr int kStepsBetweenLooks =
    20'000;                           // of the machine that runs statements: about a millisecond
constexpr double kNarrow = 1.0 / 16;  // of the whole: looking up by an index pays
constexpr std::size_t kMostThreads = 8;
constexpr std::int64_t kRowsBetweenLooks = 1 << 16;
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr const char* kTaking = "tarnwick_take";

std::string Quoted(const std::string& name) {
  std::string text = "\"";
  for (const char c : name) text += c == '"' ? std::string("\"\"") : std::string(1, c);
  return text + '"';
}

std::string Literal(const std::string& value) {
  std::string text = "'";
  for (const char c : value) text += c == '\'' ? std::string("''") : std::string(1, c);
  return text + '\'';
}

std::string Literal(double value) {
  // A whole number would be compared as one, which is right, too, but larger ones do not fit.
  const std::string text = ShortestText(value);
  return text.find_first_of(".eE") == text.npos ? text + ".0" : text;
}

std::string FromOf(const DatabasePlace& place) {
  return place.query.empty() ? Quoted(place.table) : '(' + ReadingQuery(place.query) + ')';
}

/// A connection for reading only that stops when a progress is cancelled.
class File {
 public:
  File(const DatabasePlace& place, Progress& progress) : name_(place.Name()), progress_(progress) {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(place.address.c_str(), &opened,
                                       SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    base_.reset(opened);
    Require(result == SQLITE_OK);
    sqlite3_busy_timeout(opened, 5000);
    sqlite3_progress_handler(
        opened, kStepsBetweenLooks,
        [](void* of) { return static_cast<File*>(of)->HasToStop() ? 1 : 0; }, this);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  sqlite3* Base() const { return base_.get(); }
  void Require(bool done) const {
    if (done) return;
    if (progress_.Cancelled()) throw UnpackingCancelled("Reading " + name_ + " was cancelled");
    if (IsLate()) throw Error(TookTooLong(name_));
    throw FileError("The data base cannot be read", name_, sqlite3_errmsg(base_.get()));
  }

 private:
  struct Close {
    void operator()(sqlite3* base) const { sqlite3_close(base); }
  };
  bool IsLate() const { return std::chrono::steady_clock::now() > end_; }
  bool HasToStop() const { return progress_.Cancelled() || IsLate(); }

  std::string name_;
  Progress& progress_;
  std::chrono::steady_clock::time_point end_ = std::chrono::steady_clock::now() + StatementLimit();
  std::unique_ptr<sqlite3, Close> base_;
};

std::string TextOf(sqlite3_value* value) {
  const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  const int bytes = sqlite3_value_bytes(value);
  return text == nullptr ? std::string() : std::string(text, static_cast<std::size_t>(bytes));
}

/// NaN for none.
double NumberOf(sqlite3_value* value, ColumnFormat format) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT: {
      const double number = sqlite3_value_double(value);
      if (TakesNumbers(format)) return number;
      return ValueOfField(ShortestText(number), format).value_or(kNone);
    }
    case SQLITE_TEXT:
      return ValueOfField(TextOf(value), format).value_or(kNone);
    default:
      return kNone;
  }
}

class Statement {
 public:
  Statement(const File& file, const std::string& text) : file_(file) {
    sqlite3_stmt* made = nullptr;
    const int result = sqlite3_prepare_v2(file.Base(), text.c_str(), -1, &made, nullptr);
    statement_.reset(made);
    file.Require(result == SQLITE_OK);
  }
  bool Next() const {
    const int result = sqlite3_step(statement_.get());
    file_.Require(result == SQLITE_ROW || result == SQLITE_DONE);
    return result == SQLITE_ROW;
  }
  sqlite3_stmt* Get() const { return statement_.get(); }
  int Type(int column) const { return sqlite3_column_type(Get(), column); }

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  const File& file_;
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

using RowTaker = std::function<void(std::span<sqlite3_value* const> row)>;

/// Calls `take` for the columns of all rows: as a function of the data base, which spares it the way out and in again with each
/// row, nearly half of the time.
void HandRows(const File& file, const std::string& columns, const std::string& from,
              const RowTaker& take) {
  const auto step = [](sqlite3_context* context, int count, sqlite3_value** row) {
    (*static_cast<const RowTaker*>(sqlite3_user_data(context)))(
        {row, static_cast<std::size_t>(count)});
  };
  file.Require(sqlite3_create_function_v2(
                   file.Base(), kTaking, -1, SQLITE_UTF8, const_cast<RowTaker*>(&take), nullptr,
                   step, [](sqlite3_context*) {}, nullptr) == SQLITE_OK);
  Statement(file, std::string("SELECT ") + kTaking + '(' + columns + ") FROM " + from).Next();
}

/// How the rows of a view are best gone through.
struct Road {
  std::string from;
  std::string columns;
  bool by_number = false;  ///< X are stored numbers, so that the data base can compare them
  bool indexed = false;    ///< an index finds X
  bool covered = false;    ///< which holds every Y, too
  std::optional<std::pair<std::int64_t, std::int64_t>> keys;  ///< of a table, its first and last
};

Road RoadOf(const File& file, const ThinnedView& view) {
  Road road;
  road.from = FromOf(view.place);
  const std::string x = Quoted(view.x.name);
  road.columns = x;
  for (const ThinnedColumn& y : view.y) road.columns += ", " + Quoted(y.name);
  const std::string rows = " FROM " + road.from;
  const Statement first(file, "SELECT " + x + rows + " WHERE " + x + " IS NOT NULL LIMIT 1");
  road.by_number = TakesNumbers(view.x.format) && first.Next() && first.Type(0) != SQLITE_TEXT;
  const Statement plan(file, "EXPLAIN QUERY PLAN SELECT " + road.columns + rows + " WHERE " + x +
                                 " >= 0.5 AND " + x + " < 1.5");
  while (plan.Next()) {
    const auto* const told = reinterpret_cast<const char*>(sqlite3_column_text(plan.Get(), 3));
    const std::string_view step = told == nullptr ? "" : told;
    road.indexed = road.indexed || (road.by_number && step.starts_with("SEARCH"));
    road.covered = road.covered || step.find("COVERING") != step.npos;
  }
  if (!view.place.query.empty()) return road;
  const std::string name = Literal(view.place.table);
  const Statement table(file,
                        "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = " + name +
                            " AND sql NOT LIKE '%WITHOUT%ROWID%' AND NOT EXISTS (SELECT 1 "
                            "FROM pragma_table_info(" +
                            name + ") AS i WHERE lower(i.name) = '_rowid_')");
  if (!table.Next()) return road;
  const Statement ends(
      file, "SELECT (SELECT min(_rowid_)" + rows + "), (SELECT max(_rowid_)" + rows + ")");
  if (ends.Next() && ends.Type(0) == SQLITE_INTEGER && ends.Type(1) == SQLITE_INTEGER) {
    road.keys = {sqlite3_column_int64(ends.Get(), 0), sqlite3_column_int64(ends.Get(), 1)};
  }
  return road;
}

struct Range {
  double x_min = 0, x_max = 0;
};

/// Of all rows. By an index at once; else they are gone through.
std::optional<Range> WholeRange(const File& file, const ThinnedView& view, const Road& road) {
  const std::string x = Quoted(view.x.name);
  std::optional<Range> range;
  const auto see = [&](double value) {
    if (!std::isfinite(value)) return;
    if (!range) range = Range{value, value};
    range->x_min = std::min(range->x_min, value);
    range->x_max = std::max(range->x_max, value);
  };
  if (road.by_number) {
    // Texts come behind all numbers, infinite ones among these.
    const std::string some =
        " FROM " + road.from + " WHERE " + x + " < 9e999 AND " + x + " > -9e999";
    const Statement ends(
        file, "SELECT (SELECT min(" + x + ")" + some + "), (SELECT max(" + x + ")" + some + ")");
    if (ends.Next() && ends.Type(0) != SQLITE_NULL) {
      for (const int column : {0, 1}) see(sqlite3_column_double(ends.Get(), column));
    }
    return range;
  }
  const auto see_row = [&](std::span<sqlite3_value* const> row) {
    see(NumberOf(row[0], view.x.format));
  };
  HandRows(file, x, road.from, see_row);
  return range;
}

/// What one thread goes through: a part of the statement's WHERE.
std::vector<std::string> PartsOf(const ThinnedView& view, const Road& road, Range range,
                                 double whole) {
  const std::string x = Quoted(view.x.name);
  const bool some = std::isfinite(view.x_min) || std::isfinite(view.x_max);
  const bool by_x =
      road.indexed && some && (road.covered || range.x_max - range.x_min < whole * kNarrow);
  const std::size_t threads =
      std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMostThreads);
  std::vector<std::string> parts;
  if (by_x) {
    for (std::size_t i = 0; i < threads; ++i) {
      const double step = (range.x_max - range.x_min) / static_cast<double>(threads);
      const double from = range.x_min + step * static_cast<double>(i);
      const bool last = i + 1 == threads;
      const double to = last ? range.x_max : range.x_min + step * static_cast<double>(i + 1);
      std::string& part = parts.emplace_back(x);
      part += " >= " + Literal(from) + " AND ";
      part += x + (last ? " <= " : " < ") + Literal(to);
    }
    return parts;
  }
  // The sign keeps the index out: what it finds would be looked up row by row.
  const std::string bounds =
      !some || !road.by_number
          ? "1"
          : "+" + x + " >= " + Literal(range.x_min) + " AND +" + x + " <= " + Literal(range.x_max);
  if (!road.keys) return {bounds};
  const std::int64_t first = road.keys->first;
  const std::int64_t last = road.keys->second;
  const auto wide = static_cast<long double>(last) - static_cast<long double>(first);
  for (std::size_t i = 0; i < threads; ++i) {
    const auto key = [&](std::size_t part) {
      return std::to_string(first +
                            static_cast<std::int64_t>(wide * static_cast<long double>(part) /
                                                      static_cast<long double>(threads)));
    };
    const std::string to = i + 1 == threads ? " <= " + std::to_string(last) : " < " + key(i + 1);
    std::string& part = parts.emplace_back(bounds);
    part += " AND _rowid_ >= " + key(i);
    part += " AND _rowid_" + to;
  }
  return parts;
}

/// How far the thread that asked is, and with it the others.
class Advance {
 public:
  /// `rows` that it goes through; 0 where nobody knows. At the end `most` is done.
  Advance(Progress& progress, std::int64_t rows, std::int64_t most)
      : progress_(progress), rows_(rows), most_(most) {}

  void AddRow() {
    if (++seen_ % kRowsBetweenLooks != 0 || rows_ == 0) return;
    const double share = static_cast<double>(seen_) / static_cast<double>(rows_);
    progress_.Advance(static_cast<std::int64_t>(std::min(share, 1.0) * static_cast<double>(most_)));
  }

 private:
  Progress& progress_;
  std::int64_t rows_;
  std::int64_t most_;
  std::int64_t seen_ = 0;
};

void GoThrough(const ThinnedView& view, const Road& road, const std::string& part, Range range,
               Progress& progress, ThinnedColumns& columns, Advance* advance = nullptr) {
  const File file(view.place, progress);
  std::vector<double> row(1 + view.y.size());
  const auto add = [&](std::span<sqlite3_value* const> values) {
    if (advance != nullptr) advance->AddRow();
    row[0] = NumberOf(values[0], view.x.format);
    if (!(row[0] >= range.x_min && row[0] <= range.x_max)) return;
    for (std::size_t y = 1; y < row.size(); ++y) {
      row[y] = NumberOf(values[y], view.y[y - 1].format);
    }
    columns.Add(row.data());
  };
  HandRows(file, road.columns, road.from + " WHERE " + part, add);
}

/// That a view of the whole goes through, as the keys tell; 0 where nobody knows.
std::int64_t RowsOf(const ThinnedView& view, const Road& road) {
  if (!road.keys || std::isfinite(view.x_min) || std::isfinite(view.x_max)) return 0;
  const auto [first, last] = *road.keys;
  return first > 0 ? last - first + 1 : 0;
}

}  // namespace

ThinnedRows FetchThinnedOfSqlite(const ThinnedView& view, Progress& progress) {
  RequireSqliteFile(view.place.address);
  const File file(view.place, progress);
  const Road road = RoadOf(file, view);
  const std::optional<Range> whole = WholeRange(file, view, road);
  const std::size_t ys = view.y.size();
  if (!whole) return {.x = {}, .y = std::vector<std::vector<double>>(ys)};
  const Range range{std::max(whole->x_min, view.x_min), std::min(whole->x_max, view.x_max)};
  if (range.x_min > range.x_max) return {.x = {}, .y = std::vector<std::vector<double>>(ys)};
  const double x_min = std::isfinite(view.x_min) ? view.x_min : range.x_min;
  const double x_max = std::isfinite(view.x_max) ? view.x_max : range.x_max;
  const std::vector<std::string> parts = PartsOf(view, road, range, whole->x_max - whole->x_min);
  std::vector<ThinnedColumns> found(parts.size(), ThinnedColumns(x_min, x_max, view.columns, ys));
  std::vector<std::future<void>> threads;
  for (std::size_t i = 1; i < parts.size(); ++i) {
    threads.push_back(std::async(std::launch::async, [&, i] {
      GoThrough(view, road, parts[i], range, progress, found[i]);
    }));
  }
  const auto sharing = static_cast<std::int64_t>(parts.size());
  Advance advance(progress, RowsOf(view, road) / sharing, MostThinnedRows(view.columns));
  std::exception_ptr trouble;
  try {
    GoThrough(view, road, parts[0], range, progress, found[0], &advance);
  } catch (...) {
    trouble = std::current_exception();
  }
  for (std::future<void>& thread : threads) thread.wait();
  if (trouble) std::rethrow_exception(trouble);
  for (std::future<void>& thread : threads) thread.get();
  for (std::size_t i = 1; i < found.size(); ++i) found[0].Merge(found[i]);
  return found[0].Rows();
}

}  // namespace tarnwick
