#include "sources/database/server_query.h"

#include <QSqlField>
#include <QSqlRecord>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <span>

#include "base/error.h"
#include "data/packed/unpack.h"
#include "data/text/stored_format.h"
#include "sources/database/database_statement.h"
#include "sources/database/database_value.h"
#include "sources/database/thinned_columns.h"

namespace tarnwick {
namespace {

/// "{1.5,NULL,3}", or without brackets, as numbers.
std::vector<double> NumbersOf(QString list) {
  list.remove('{').remove('}');
  std::vector<double> numbers;
  for (const QString& part : list.split(',')) {
    bool is_number = false;
    const double number = part.toDouble(&is_number);
    numbers.push_back(is_number ? number : std::numeric_limits<double>::quiet_NaN());
  }
  return numbers;
}

bool IsWholeNumber(QMetaType type) {
  constexpr int kTypes[] = {QMetaType::Int,       QMetaType::UInt,  QMetaType::LongLong,
                            QMetaType::ULongLong, QMetaType::Short, QMetaType::UShort};
  return std::ranges::find(kTypes, type.id()) != std::end(kTypes);
}

}  // namespace

ServerQuery::ServerQuery(const ThinnedView& view, const NumberWords& words,
                         const DatabaseConnection& connection, Progress& progress)
    : view_(view),
      progress_(progress),
      connection_(connection),
      rows_(connection_, view.place.Name()) {
  source_ =
      view.place.query.empty()
          ? connection_.Quoted(view.place.table)
          : "(" + QString::fromStdString(ReadingQuery(view.place.query)) + ") AS tarnwick_rows";
  Run("SELECT * FROM " + source_ + " LIMIT 0");
  const QSqlRecord record = rows_.Record();
  x_ = Asked(record, view.x, words);
  for (const ThinnedColumn& y : view.y) ys_.push_back(Asked(record, y, words));
}

AskedColumn ServerQuery::Asked(const QSqlRecord& record, const ThinnedColumn& column,
                               const NumberWords& words) const {
  int at = 0;
  while (at < record.count() && record.fieldName(at).toStdString() != column.name) ++at;
  if (at == record.count()) throw Error("There is no column \"" + column.name + '"');
  const QMetaType type = record.field(at).metaType();
  AskedColumn asked{.name = connection_.QuotedColumn(column.name), .number = {}};
  asked.is_time = type.id() == QMetaType::QDateTime || type.id() == QMetaType::QDate;
  asked.is_whole = IsWholeNumber(type);
  if (!asked.is_time && (!IsStoredNumber(type) || !TakesNumbers(column.format))) {
    throw Error("The server cannot compare the values of the column \"" + column.name +
                "\", which are read as texts: its table cannot be thinned there; sample "
                "its rows instead");
  }
  const char* const number = type.id() == QMetaType::Bool ? words.truth
                             : asked.is_time              ? words.days
                                                          : words.number;
  asked.number = QString(number).replace("%1", asked.name);
  return asked;
}

std::optional<ColumnsOfX> ServerQuery::Columns(const QString& where) {
  double low = view_.x_min;
  double high = view_.x_max;
  if (!std::isfinite(low) || !std::isfinite(high)) {
    // Of the column itself, so that an index gives it at once.
    const auto end = [&](const char* extreme) {
      return QString("(SELECT %1 FROM (SELECT %2(%3) AS e FROM %4 WHERE 1 = 1%5) AS ends)")
          .arg(QString(x_.number).replace(x_.name, "e"), extreme, x_.name, source_, where);
    };
    Run("SELECT " + end("min") + ", " + end("max"));
    if (!Next() || rows_.Value(0).isNull()) return std::nullopt;
    if (!std::isfinite(low)) low = rows_.Value(0).toDouble();
    if (!std::isfinite(high)) high = rows_.Value(1).toDouble();
  }
  return ColumnsOfX{low, high, high > low ? view_.columns / (high - low) : 0};
}

void ServerQuery::Run(const QString& statement) {
  bool done = false;
  try {
    done = rows_.Open(statement, progress_);
  } catch (const DatabaseFailure& failure) {
    if (!progress_.Cancelled()) Fail(failure);
  }
  if (!done) throw UnpackingCancelled("Reading " + view_.place.Name() + " was cancelled");
}

bool ServerQuery::Next() {
  try {
    return rows_.Next();
  } catch (const DatabaseFailure& failure) {
    Fail(failure);
  }
}

ThinnedRows ServerQuery::Thinned(const QString& where,
                                 const std::function<QString(const ColumnsOfX&)>& statement) {
  const std::optional<ColumnsOfX> x = Columns(where);
  if (!x) return {.x = {}, .y = std::vector<std::vector<double>>(ys_.size())};
  ThinnedColumns columns(x->min, x->max, view_.columns, ys_.size());
  const std::size_t width = 1 + ys_.size();
  Run(statement(*x));
  while (Next()) {
    columns.Count(rows_.Value(0).toLongLong());
    for (int i = 1; i < rows_.Record().count(); ++i) {
      const std::vector<double> numbers = NumbersOf(rows_.Value(i).toString());
      if (numbers.size() >= width) columns.AddPicked(std::span(numbers).last(width));
    }
  }
  return columns.Rows();
}

ThinnedRows ServerQuery::Listed(const ColumnsOfX& x, const QString& statement) {
  ThinnedColumns columns(x.min, x.max, view_.columns, ys_.size());
  Run(statement);
  while (Next()) {
    const std::vector<double> numbers = NumbersOf(rows_.Value(0).toString());
    if (numbers.size() == 1 + ys_.size()) columns.Add(numbers.data());
  }
  return columns.Rows();
}

/// The first column of what it answers.
QStringList ServerQuery::Answers(const QString& statement) {
  rows_.Close();
  QSqlQuery query(connection_.Handle());
  if (!connection_.Execute(query, statement, view_.place.Name(), progress_)) {
    throw UnpackingCancelled("Reading " + view_.place.Name() + " was cancelled");
  }
  QStringList answers;
  while (query.next()) answers.append(query.value(0).toString());
  return answers;
}

QString ServerQuery::Plan(const QString& statement) {
  return Answers("EXPLAIN " + statement).join('\n');
}

std::optional<std::int64_t> ServerQuery::GuessedRows() {
  const QString statement = GuessOfRows(connection_.Dialect(), source_);
  const QStringList answers = statement.isEmpty() ? QStringList() : Answers(statement);
  if (answers.isEmpty() || answers.front().toDouble() < 0) return std::nullopt;
  return static_cast<std::int64_t>(answers.front().toDouble());
}

void ServerQuery::Fail(const DatabaseFailure& failure) const {
  connection_.RefuseReading(view_.place, failure.error);
}

}  // namespace tarnwick
