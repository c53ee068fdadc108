#include "sources/database/postgres_thinning.h"

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <limits>

#include "base/number_text.h"
#include "sources/database/server_query.h"

namespace tarnwick {
namespace {

constexpr NumberWords kWords = {
    .number = "(%1)::double precision",
    .truth = "(%1)::int::double precision",
    .days = "(extract(epoch FROM %1::timestamp)::double precision / 86400 + 25569)"};
constexpr double kDaysTo1970 = 25569;
constexpr double kMostWhole = 9e18;  // of a bigint; all are on one side of what is larger
constexpr int kSeeks = 1024;

QString Literal(double value) {
  return "'" + QString::fromStdString(ShortestText(value)) + "'::double precision";
}

/// A number as the column's own type has it, so that an index serves; `whole` is how it becomes a whole one.
QString Beside(const AskedColumn& x, const QString& number, const char* whole) {
  if (x.is_time) {
    return QString("(timestamp 'epoch' + interval '1 second' * ((%1 - %2) * 86400))")
        .arg(number, QString::number(kDaysTo1970));
  }
  return x.is_whole ? QString("%1(%2)::bigint").arg(whole, number) : number;
}

/// Compares the column itself.
QString Bound(const AskedColumn& x, const char* comparison, double value) {
  if (!std::isfinite(value) || (x.is_whole && std::abs(value) > kMostWhole)) return {};
  const char* const whole = comparison[0] == '>' ? "ceil" : "floor";
  return " AND " + x.name + ' ' + comparison + ' ' + Beside(x, Literal(value), whole);
}

class Query {
 public:
  Query(const ThinnedView& view, const DatabaseConnection& connection, Progress& progress)
      : view_(view),
        server_(view, kWords, connection, progress),
        x_(server_.X()),
        ys_(server_.Ys()) {}

  ThinnedRows Answer() {
    return server_.Thinned(Bounds() + FiniteX(), [&](const ColumnsOfX& x) { return Statement(x); });
  }

  std::optional<std::int64_t> CoarseRows() {
    const std::optional<std::int64_t> rows = server_.GuessedRows();
    if (!rows || *rows <= kMostRowsAtOnce) return std::nullopt;
    const QString plan = server_.Plan(RowsFrom(Beside(x_, Literal(0), "ceil")));
    return plan.contains("Index") && !plan.contains("Sort") ? rows : std::nullopt;
  }

  std::optional<ThinnedRows> Coarse() {
    const std::optional<ColumnsOfX> x = server_.Columns(FiniteX());
    if (!x) return std::nullopt;
    const QString at = QString("(%1 + tarnwick_seek * %2)")
                           .arg(Literal(x->min), Literal((x->max - x->min) / kSeeks));
    const QString row = "SELECT ARRAY[" + Names().join(", ") + "] FROM ";
    QString statement = row + "generate_series(0, " + QString::number(kSeeks - 1) +
                        ") AS tarnwick_seek CROSS JOIN LATERAL (" +
                        RowsFrom(Beside(x_, at, "floor")) + ") AS found";
    // What is rounded may pass the ends.
    for (const char* const direction : {"ASC", "DESC"}) {
      statement += " UNION ALL " + row + '(' + Rows("true" + FiniteX(), direction) + ") AS ends";
    }
    return server_.Listed(*x, statement);
  }

 private:
  QString RowsFrom(const QString& from) const {
    return Rows(x_.name + " >= " + from + FiniteX(), "ASC");
  }

  /// A few rows in an order of X.
  QString Rows(const QString& where, const char* direction) const {
    return "SELECT " + Numbers().join(", ") + " FROM " + server_.Source() + " WHERE " + where +
           " ORDER BY " + x_.name + ' ' + direction + " LIMIT 4";
  }

  /// Of X and every Y as numbers; no column has them, or it would stand behind one of these in an order.
  QStringList Names() const {
    QStringList names = {"tarnwick_x"};
    for (std::size_t i = 0; i < ys_.size(); ++i) names.append("tarnwick_y" + QString::number(i));
    return names;
  }

  QStringList Numbers() const {
    const QStringList names = Names();
    QStringList numbers = {x_.number + " AS " + names[0]};
    for (qsizetype i = 1; i < names.size(); ++i) {
      numbers.append(ys_[static_cast<std::size_t>(i - 1)].number + " AS " + names[i]);
    }
    return numbers;
  }

  QString Statement(const ColumnsOfX& x) const {
    const QStringList names = Names();
    QStringList some;
    for (const QString& y : names.mid(1)) some.append(Finite(y));
    const QString whole = "ARRAY[" + names.join(", ") + ']';
    QStringList picked = {"min(" + whole + ')', "max(" + whole + ')'};
    for (const QString& y : names.mid(1)) {
      const QString by_y = "(ARRAY[" + y + "] || " + whole + ") FILTER (WHERE " + Finite(y) + ')';
      for (const char* const extreme : {"min", "max"}) picked.append(extreme + by_y);
    }
    const QString column =
        QString("least(%1, greatest(0, floor((%4 - %2) * %3)))::int")
            .arg(QString::number(view_.columns - 1), Literal(x.min), Literal(x.per_x), names[0]);
    return "SELECT count(*), " + picked.join(", ") + " FROM (SELECT " + Numbers().join(", ") +
           " FROM " + server_.Source() + " WHERE true" + Bounds() + ") AS numbers WHERE " +
           Finite(names[0]) + " AND (" + some.join(" OR ") + ") GROUP BY " + column;
  }

  static QString Finite(const QString& number) {
    return "(" + number + " > '-Infinity' AND " + number + " < 'Infinity')";
  }
  QString Bounds() const { return Bound(x_, ">=", view_.x_min) + Bound(x_, "<=", view_.x_max); }

  /// Infinite numbers have no place in a view.
  QString FiniteX() const {
    if (x_.is_whole) return " AND " + x_.name + " IS NOT NULL";
    return x_.is_time ? " AND isfinite(" + x_.name + ')' : " AND " + Finite(x_.name);
  }

  const ThinnedView& view_;
  ServerQuery server_;
  const AskedColumn& x_;
  const std::vector<AskedColumn>& ys_;
};

}  // namespace

ThinnedRows FetchThinnedOfPostgres(const ThinnedView& view, const DatabaseConnection& connection,
                                   Progress& progress) {
  return Query(view, connection, progress).Answer();
}

std::optional<std::int64_t> CoarseRowsOfPostgres(const ThinnedView& view,
                                                 const DatabaseConnection& connection,
                                                 Progress& progress) {
  return Query(view, connection, progress).CoarseRows();
}

std::optional<ThinnedRows> FetchCoarseOfPostgres(const ThinnedView& view,
                                                 const DatabaseConnection& connection,
                                                 Progress& progress) {
  return Query(view, connection, progress).Coarse();
}

}  // namespace tarnwick
