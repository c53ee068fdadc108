#include "sources/database/database_supplier.h"

#include <QSqlField>
#include <QSqlRecord>
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "base/error.h"
#include "base/word_list.h"
#include "data/import/import_file.h"
#include "data/packed/unpack.h"
#include "data/text/stored_format.h"
#include "sources/database/database_value.h"

namespace tarnwick {
namespace {

constexpr std::int64_t kDenseSteps =
    16;  // up to this going through all rows of a file beats looking for each

/// Nothing is opened for a query that is refused.
DatabasePlace Readable(DatabasePlace place) {
  if (!place.query.empty()) RequireReadingQuery(place.query);
  return place;
}

std::int32_t Narrow(std::int64_t rows) {
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(rows, std::numeric_limits<std::int32_t>::max() - 1));
}

}  // namespace

TDBSupplier::TDBSupplier(DatabasePlace place, Progress& progress)
    : place_(Readable(std::move(place))),
      name_(place_.Name()),
      connection_(place_),
      opened_(connection_, name_) {
  table_.is_query = !place_.query.empty();
  table_.from = table_.is_query ? QString::fromStdString(ReadingQuery(place_.query))
                                : connection_.Quoted(place_.table);
  table_.row_key = RowKey();
  if (!Open(1, 1, progress)) throw UnpackingCancelled("Opening " + name_ + " was cancelled");
  const QSqlRecord record = opened_.rows.Record();
  for (int i = 0; i < record.count(); ++i) types_.push_back(record.field(i).metaType());
  names_ = opened_.rows.ColumnNames();
  opened_.fields.resize(names_.size());
  std::iota(opened_.fields.begin(), opened_.fields.end(), 0);
}

/// Under its first name that no column has taken.
QString TDBSupplier::RowKey() const {
  if (connection_.Dialect().transport != RowTransport::InProcess || table_.is_query) return {};
  QSqlQuery query(connection_.Handle());
  const QString is_table =
      QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'table' AND lower(name) = lower(?)");
  if (!query.prepare(is_table)) return {};
  query.bindValue(0, QString::fromStdString(place_.table));
  if (!query.exec() || !query.next()) return {};
  const QSqlRecord columns = connection_.Handle().record(QString::fromStdString(place_.table));
  for (const char* const name : {"rowid", "_rowid_", "oid"}) {
    if (columns.contains(QLatin1String(name))) continue;
    const bool has = query.exec(QString("SELECT %1 FROM %2 LIMIT 0").arg(name, table_.from));
    return has ? QLatin1String(name) : QString();
  }
  return {};
}

QString TDBSupplier::ColumnName(std::int32_t column) const {
  return connection_.QuotedColumn(names_[static_cast<std::size_t>(column)]);
}

AskedRows TDBSupplier::Asked() const {
  AskedRows asked = table_;
  for (const std::int32_t column : columns_) asked.columns.append(ColumnName(column));
  if (order_ >= 0 && table_.row_key.isEmpty() && !HasOrder()) asked.order = ColumnName(order_);
  return asked;
}

bool TDBSupplier::HasOrder() const {
  return table_.is_query && OrdersItself(place_.query);
}

/// What a kind of data base does not know, or a query's own columns forbid, is done without: all is read then.
bool TDBSupplier::Open(std::int64_t first, std::int64_t every, Progress& progress) const {
  opened_.is_open = true;
  opened_.at_end = false;
  try {
    if (!columns_.empty() && (connection_.Dialect().keeps_order || !HasOrder())) {
      try {
        return OpenPlanned(first, every, progress);
      } catch (const DatabaseFailure&) {
        if (progress.Cancelled() || !connection_.IsAlive()) throw;
      }
    }
    return OpenPlain(progress);
  } catch (const DatabaseFailure& failure) {
    opened_.is_open = false;
    if (progress.Cancelled()) return false;
    Fail(failure.error);
  }
}

bool TDBSupplier::OpenPlain(Progress& progress) const {
  opened_.first = opened_.every = 1;
  opened_.row = -1;
  opened_.fields.resize(names_.size());
  std::iota(opened_.fields.begin(), opened_.fields.end(), 0);
  return opened_.rows.Open(AllRowsOf(table_), progress);
}

bool TDBSupplier::OpenPlanned(std::int64_t first, std::int64_t every, Progress& progress) const {
  const AskedRows asked = Asked();
  const bool steps = !asked.row_key.isEmpty() && every > kDenseSteps;
  const bool here = connection_.Dialect().transport == RowTransport::InProcess;
  std::ranges::fill(opened_.fields, -1);
  int field = steps ? 1 : 0;  // behind the key
  for (const std::int32_t column : columns_) {
    opened_.fields[static_cast<std::size_t>(column)] = field++;
  }
  const bool all = !steps && (here || (first == 1 && every == 1));
  opened_.first = all ? 1 : first;
  opened_.every = all ? 1 : every;
  opened_.row = opened_.first - 1 - opened_.every;
  if (all) return opened_.rows.Open(AllRowsOf(asked), progress);
  if (!steps) return opened_.rows.Open(SomeRowsOf(asked, first, every), progress);
  opened_.rows.OpenSteps(RowBehindKey(asked), StepsThrough(first, every));
  return true;
}

/// Where no key is left out they are counted off; else the rows between are passed.
KeySteps TDBSupplier::StepsThrough(std::int64_t first, std::int64_t every) const {
  QSqlQuery ends(connection_.Handle());
  const QString statement = QString("SELECT (SELECT min(%1) FROM %2), (SELECT max(%1) FROM %2)")
                                .arg(table_.row_key, table_.from);
  if (counted_ && ends.exec(statement) && ends.next() && !ends.isNull(0)) {
    const std::int64_t low = ends.value(0).toLongLong();
    const bool is_dense =
        ends.value(1).toDouble() - static_cast<double>(low) + 1 == static_cast<double>(*counted_);
    if (is_dense) return {.first_key = low + first - 1, .key_step = every};
  }
  return {.first_key = std::numeric_limits<std::int64_t>::min(),
          .first_skip = first - 1,
          .key_step = 1,
          .skip = every - 1};
}

bool TDBSupplier::Expect(const RowPlan& plan, Progress& progress) {
  columns_.clear();
  for (const ColumnRequest& request : plan.columns) {
    const bool asked = std::ranges::count(columns_, request.column) > 0;
    if (Exists(request.column) && !asked) columns_.push_back(request.column);
  }
  order_ = Exists(plan.x_column) ? plan.x_column : -1;
  const bool is_open = Open(plan.first, plan.every, progress);
  // Nothing is asked on the side any more.
  if (counted_ || guessed_) opened_.rows.StreamParts();
  return is_open;
}

std::int64_t TDBSupplier::RowsBelow(std::int32_t column, ColumnFormat format, double bound,
                                    Progress& progress) {
  if (!Exists(column) || !TakesNumbers(format) || !std::isfinite(bound)) return 0;
  const QMetaType type = types_[static_cast<std::size_t>(column)];
  if (table_.row_key.isEmpty() && !IsStoredNumber(type)) return 0;
  order_ = column;
  const QString statement = CountBelow(Asked(), connection_.Dialect(), ColumnName(column), bound);
  if (statement.isEmpty()) return 0;
  opened_.is_open = false;
  try {
    return opened_.rows.Number(statement, progress);
  } catch (const DatabaseFailure& failure) {
    if (progress.Cancelled() || connection_.IsAlive()) return 0;
    Fail(failure.error);
  }
}

void TDBSupplier::Fail(const QSqlError& error) const {
  connection_.RefuseReading(place_, error);
}

void TDBSupplier::MoveUnder(Progress* progress) {
  moving_ = progress;
  opened_.rows.MoveUnder(progress);
}

/// Stands on the current row, by other rows where those that are open leave it out.
void TDBSupplier::Settle() const {
  if (opened_.is_open && opened_.row == row_) return;
  const bool behind = opened_.row > row_;
  const bool left_out = (row_ + 1 - opened_.first) % opened_.every != 0;
  if (!opened_.is_open || behind || left_out || row_ + 1 < opened_.first) {
    NoProgress unseen;
    Open(row_ + 1, 1, unseen);
  }
  try {
    while (!opened_.at_end && opened_.row < row_) {
      opened_.at_end = !opened_.rows.Next();
      opened_.row += opened_.every;
    }
  } catch (const DatabaseFailure& failure) {
    opened_.at_end = moving_ != nullptr && moving_->Cancelled();
    if (opened_.at_end) return;
    opened_.is_open = false;
    Fail(failure.error);
  }
}

bool TDBSupplier::AtEnd() const {
  Settle();
  return opened_.at_end;
}

bool TDBSupplier::NextRow() {
  SkipRows(1);
  return opened_.at_end;
}

void TDBSupplier::FirstRow() {
  row_ = 0;
}

void TDBSupplier::SkipRows(std::int32_t rows) {
  if (rows <= 0 || AtEnd()) return;
  row_ += rows;
  Settle();
  if (opened_.at_end) opened_.row = row_ = std::min(row_, counted_.value_or(opened_.row));
}

std::int32_t TDBSupplier::CurrentRow() const {
  return Narrow(row_ + 1);
}

bool TDBSupplier::CountRows(Progress& progress) {
  if (counted_) return !progress.Cancelled();
  opened_.is_open = false;
  try {
    const std::int64_t rows = opened_.rows.Number(CountOf(table_), progress);
    if (progress.Cancelled()) return false;
    counted_ = rows;
  } catch (const DatabaseFailure& failure) {
    if (progress.Cancelled()) return false;
    Fail(failure.error);
  }
  return true;
}

std::int32_t TDBSupplier::RowCount() {
  NoProgress unseen;
  CountRows(unseen);
  return Narrow(*counted_);
}

std::int64_t TDBSupplier::Size() const {
  if (counted_) return *counted_;
  NoProgress unseen;
  if (!guessed_) guessed_ = GuessSize(unseen);
  return *guessed_;
}

void TDBSupplier::GuessRows(Progress& progress) {
  if (!counted_ && !guessed_) guessed_ = GuessSize(progress);
  if (progress.Cancelled()) throw UnpackingCancelled("Opening " + name_ + " was cancelled");
}

/// On a connection's side, so that the rows that are open stay so.
std::int64_t TDBSupplier::GuessSize(Progress& progress) const {
  QSqlQuery query(connection_.Handle());
  if (!table_.row_key.isEmpty()) {
    const QString statement =
        QString("SELECT (SELECT max(%1) FROM %2) - (SELECT min(%1) FROM %2) + 1")
            .arg(table_.row_key, table_.from);
    if (query.exec(statement) && query.next())
      return std::max<std::int64_t>(query.value(0).toLongLong(), 0);
  }
  const QString guess =
      table_.is_query ? QString() : GuessOfRows(connection_.Dialect(), table_.from);
  if (!guess.isEmpty() && query.exec(guess) && query.next() && query.value(0).toDouble() >= 0) {
    return query.value(0).toLongLong();
  }
  const QString count =
      connection_.Dialect().limits ? CountUpTo(table_, kMostWholeRows + 1) : CountOf(table_);
  connection_.Execute(query, count, name_, progress);
  return query.next() ? query.value(0).toLongLong() : 0;
}

bool TDBSupplier::Exists(std::int32_t column) const {
  return column >= 0 && static_cast<std::size_t>(column) < names_.size();
}

bool TDBSupplier::IsColumn(std::int32_t column) const {
  return Exists(column) && !AtEnd();
}

QVariant TDBSupplier::Stored(std::int32_t column) const {
  const int field = opened_.fields[static_cast<std::size_t>(column)];
  return field >= 0 ? opened_.rows.Value(field) : QVariant();
}

std::optional<double> TDBSupplier::ReadValue(std::int32_t column, ColumnFormat format) {
  AskFor(column);
  if (column == kRowNumberColumn && !AtEnd()) return static_cast<double>(row_ + 1);
  return IsColumn(column) ? StoredNumber(Stored(column), format) : std::nullopt;
}

bool TDBSupplier::HasValue(std::int32_t column) {
  AskFor(column);
  return (column == kRowNumberColumn && !AtEnd()) || (IsColumn(column) && !Stored(column).isNull());
}

/// A column that no plan named is asked for from here on.
void TDBSupplier::AskFor(std::int32_t column) {
  const bool asked = columns_.empty() || std::ranges::count(columns_, column) > 0;
  if (asked || !Exists(column)) return;
  columns_.push_back(column);
  opened_.is_open = false;
}

std::string TDBSupplier::Place() const {
  return "row " + std::to_string(row_ + 1);
}

std::string TDBSupplier::TextAt(std::int32_t column) {
  return IsColumn(column) ? StoredText(Stored(column)) : std::string();
}

}  // namespace tarnwick
