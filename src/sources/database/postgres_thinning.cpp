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

QString Literal(double value) {
  return "'" + QString::fromStdString(ShortestText(value)) + "'::double precision";
}

/// Compares the column itself, so that an index serves.
QString Bound(const AskedColumn& x, const char* comparison, double value) {
  if (!std::isfinite(value)) return {};
  const QString bound = x.is_time ? QString("(timestamp 'epoch' + interval '1 second' * %1)")
                                        .replace("%1", Literal((value - kDaysTo1970) * 86400))
                                  : Literal(value);
  return " AND " + x.name + ' ' + comparison + ' ' + bound;
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

 private:
  QString Statement(const ColumnsOfX& x) const {
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
            .arg(QString::number(view_.columns - 1), Literal(x.min), Literal(x.per_x));
    return "SELECT count(*), " + picked.join(", ") + " FROM (SELECT " + numbers.join(", ") +
           " FROM " + server_.Source() + " WHERE true" + Bounds() + ") AS numbers WHERE " +
           Finite("x") + " AND (" + some.join(" OR ") + ") GROUP BY " + column;
  }

  static QString Finite(const QString& number) {
    return "(" + number + " > '-Infinity' AND " + number + " < 'Infinity')";
  }
  QString Bounds() const { return Bound(x_, ">=", view_.x_min) + Bound(x_, "<=", view_.x_max); }

  /// Infinite numbers have no place in a view.
  QString FiniteX() const {
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

}  // namespace tarnwick
