#include "sources/postgres_thinning.h"

#include <QSqlField>
#include <QSqlRecord>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "base/error.h"
#include "base/number_text.h"
#include "data/packed/unpack.h"
#include "data/text/stored_format.h"
#include "sources/database_rows.h"
#include "sources/database_statement.h"
#include "sources/database_value.h"
#include "sources/thinned_columns.h"

namespace tarnwick {
namespace {

constexpr const char* kDays =
    "(extract(epoch FROM %1::timestamp)::double precision / 86400 + 25569)";
constexpr double kDaysTo1970 = 25569;

/// A column as the server is asked for it.
struct Asked {
  QString name;    ///< quoted
  QString number;  ///< its value as a number of double precision, finite or null
  bool is_time = false;
};

Asked AskedFor(const DatabaseConnection& connection, const QSqlRecord& record,
               const ThinnedColumn& column) {
  int at = 0;
  while (at < record.count() && record.fieldName(at).toStdString() != column.name) ++at;
  if (at == record.count()) throw Error("There is no column \"" + column.name + '"');
  const QMetaType type = record.field(at).metaType();
  Asked asked{.name = connection.QuotedColumn(column.name), .number = {}};
  asked.is_time = type.id() == QMetaType::QDateTime || type.id() == QMetaType::QDate;
  if (!asked.is_time && (!IsStoredNumber(type) || !TakesNumbers(column.format))) {
    throw Error("The server cannot compare the values of the column \"" + column.name +
                "\", which are read as texts: its table cannot be thinned there; sample "
                "its rows instead");
  }
  asked.number = type.id() == QMetaType::Bool ? "(" + asked.name + ")::int::double precision"
                 : asked.is_time              ? QString(kDays).replace("%1", asked.name)
                                              : "(" + asked.name + ")::double precision";
  return asked;
}

QString Literal(double value) {
  return "'" + QString::fromStdString(ShortestText(value)) + "'::double precision";
}

/// Compares the column itself, so that an index serves.
QString Bound(const Asked& x, const char* comparison, double value) {
  if (!std::isfinite(value)) return {};
  const QString bound = x.is_time ? QString("(timestamp 'epoch' + interval '1 second' * %1)")
                                        .replace("%1", Literal((value - kDaysTo1970) * 86400))
                                  : Literal(value);
  return " AND " + x.name + ' ' + comparison + ' ' + bound;
}

/// "{1.5,NULL,3}" as numbers.
std::vector<double> Numbers(const QString& array) {
  std::vector<double> numbers;
  for (const QString& part : array.mid(1, array.size() - 2).split(',')) {
    bool is_number = false;
    const double number = part.toDouble(&is_number);
    numbers.push_back(is_number ? number : std::numeric_limits<double>::quiet_NaN());
  }
  return numbers;
}

class Query {
 public:
  Query(const ThinnedView& view, Progress& progress)
      : view_(view),
        progress_(progress),
        connection_(view.place),
        rows_(connection_, view.place.Name()) {
    source_ =
        view.place.query.empty()
            ? connection_.Quoted(view.place.table)
            : "(" + QString::fromStdString(ReadingQuery(view.place.query)) + ") AS tarnwick_rows";
    Run("SELECT * FROM " + source_ + " LIMIT 0");
    const QSqlRecord record = rows_.Record();
    x_ = AskedFor(connection_, record, view.x);
    for (const ThinnedColumn& y : view.y) ys_.push_back(AskedFor(connection_, record, y));
  }

  ThinnedRows Answer() {
    const std::optional<std::pair<double, double>> range = Range();
    if (!range) return {.x = {}, .y = std::vector<std::vector<double>>(ys_.size())};
    const auto [x_min, x_max] = *range;
    const double per_x = x_max > x_min ? view_.columns / (x_max - x_min) : 0;
    ThinnedColumns columns(x_min, x_max, view_.columns, ys_.size());
    QStringList numbers = {x_.number + " AS x"}, row = {"x"}, some;
    for (std::size_t i = 0; i < ys_.size(); ++i) {
      const QString y = "y" + QString::number(i);
      numbers.append(ys_[i].number + " AS " + y);
      row.append(y);
      some.append(Finite(y));
    }
    const QString whole = "ARRAY[" + row.join(", ") + ']';
    QStringList picked = {"min(" + whole + ')', "max(" + whole + ')'};
    for (std::size_t i = 0; i < ys_.size(); ++i) {
      const QString y = "y" + QString::number(i);
      const QString by_y = "(ARRAY[" + y + "] || " + whole + ") FILTER (WHERE " + Finite(y) + ')';
      for (const char* const extreme : {"min", "max"}) picked.append(extreme + by_y);
    }
    const QString column =
        QString("least(%1, greatest(0, floor((x - %2) * %3)))::int")
            .arg(QString::number(view_.columns - 1), Literal(x_min), Literal(per_x));
    Run("SELECT count(*), " + picked.join(", ") + " FROM (SELECT " + numbers.join(", ") + " FROM " +
        source_ + " WHERE true" + Bounds() + ") AS numbers WHERE " + Finite("x") + " AND (" +
        some.join(" OR ") + ") GROUP BY " + column);
    while (Next()) {
      columns.Count(rows_.Value(0).toLongLong());
      for (int i = 1; i < 1 + picked.size(); ++i) {
        std::vector<double> values = Numbers(rows_.Value(i).toString());
        if (i > 2 && !values.empty()) values.erase(values.begin());  // what it was ordered by
        if (values.size() == 1 + ys_.size()) columns.AddPicked(values);
      }
    }
    return columns.Rows();
  }

 private:
  static QString Finite(const QString& number) {
    return "(" + number + " > '-Infinity' AND " + number + " < 'Infinity')";
  }
  QString Bounds() const { return Bound(x_, ">=", view_.x_min) + Bound(x_, "<=", view_.x_max); }

  /// Of the view; of all rows where it has none.
  std::optional<std::pair<double, double>> Range() {
    if (std::isfinite(view_.x_min) && std::isfinite(view_.x_max))
      return {{view_.x_min, view_.x_max}};
    const QString number = QString(x_.number).replace(x_.name, "e");
    // By an index at once; infinite numbers have no place in a view.
    const QString finite =
        x_.is_time ? " AND isfinite(" + x_.name + ')'
                   : " AND " + x_.name + " > '-Infinity' AND " + x_.name + " < 'Infinity'";
    const auto end = [&](const char* extreme) {
      return QString("(SELECT %1 FROM (SELECT %2(%3) AS e FROM %4 WHERE true%5) AS ends)")
          .arg(number, extreme, x_.name, source_, Bounds() + finite);
    };
    Run("SELECT " + end("min") + ", " + end("max"));
    if (!Next() || rows_.Value(0).isNull()) return std::nullopt;
    const double low = rows_.Value(0).toDouble(), high = rows_.Value(1).toDouble();
    return {{std::isfinite(view_.x_min) ? view_.x_min : low,
             std::isfinite(view_.x_max) ? view_.x_max : high}};
  }

  void Run(const QString& statement) {
    bool done = false;
    try {
      done = rows_.Open(statement, progress_);
    } catch (const DatabaseFailure& failure) {
      if (!progress_.Cancelled()) Fail(failure);
    }
    if (!done) throw UnpackingCancelled("Reading " + view_.place.Name() + " was cancelled");
  }
  bool Next() {
    try {
      return rows_.Next();
    } catch (const DatabaseFailure& failure) {
      Fail(failure);
    }
  }
  [[noreturn]] void Fail(const DatabaseFailure& failure) const {
    throw FileError("The data base cannot be read", view_.place.Name(),
                    connection_.TextOf(failure.error));
  }

  const ThinnedView& view_;
  Progress& progress_;
  DatabaseConnection connection_;
  DatabaseRows rows_;
  QString source_;
  Asked x_;
  std::vector<Asked> ys_;
};

}  // namespace

ThinnedRows FetchThinnedOfPostgres(const ThinnedView& view, Progress& progress) {
  return Query(view, progress).Answer();
}

}  // namespace tarnwick
