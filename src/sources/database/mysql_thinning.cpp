#include "sources/database/mysql_thinning.h"

#include <QStringList>
#include <cmath>
#include <vector>

#include "base/number_text.h"
#include "sources/database/server_query.h"

namespace tarnwick {
namespace {

constexpr NumberWords kWords = {
    .number = "(%1 + 0e0)",
    .truth = "(%1 + 0e0)",
    .days = "(TIMESTAMPDIFF(MICROSECOND, '1970-01-01', %1) / 8.64e10 + 25569)"};
constexpr double kDaysTo1970 = 25569;
constexpr double kMicrosecondsOfDay = 8.64e10;

/// As a number of double precision: without an exponent it would be a decimal one.
QString Literal(double value) {
  const QString text = QString::fromStdString(ShortestText(value));
  return text.contains('E', Qt::CaseInsensitive) ? text : text + "e0";
}

/// Compares the column itself, so that an index serves.
QString Bound(const AskedColumn& x, const char* comparison, double value) {
  if (!std::isfinite(value)) return {};
  const double microseconds = std::round((value - kDaysTo1970) * kMicrosecondsOfDay);
  const QString bound = x.is_time ? QString("TIMESTAMPADD(MICROSECOND, %1, '1970-01-01')")
                                        .arg(QString::number(microseconds, 'f', 0))
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
    return server_.Thinned(Bounds(), [&](const ColumnsOfX& x) { return Statement(RowsWith(x)); });
  }

 private:
  QString Bounds() const {
    return " AND " + x_.name + " IS NOT NULL" + Bound(x_, ">=", view_.x_min) +
           Bound(x_, "<=", view_.x_max);
  }

  /// "y" and the number of a Y.
  static QString Y(std::size_t i) { return "y" + QString::number(i); }

  /// All rows of the view as x, y0, y1, …, and c, the column that they fall into.
  QString RowsWith(const ColumnsOfX& x) const {
    QStringList numbers = {x_.number + " AS x"}, some;
    for (std::size_t i = 0; i < ys_.size(); ++i) {
      numbers.append(ys_[i].number + " AS " + Y(i));
      some.append(ys_[i].name + " IS NOT NULL");
    }
    const QString column =
        QString("CAST(LEAST(%1, GREATEST(0, FLOOR((x - %2) * %3))) AS SIGNED) AS c")
            .arg(QString::number(view_.columns - 1), Literal(x.min), Literal(x.per_x));
    return "(SELECT numbers.*, " + column + " FROM (SELECT " + numbers.join(", ") + " FROM " +
           server_.Source() + " WHERE (" + some.join(" OR ") + ')' + Bounds() + ") AS numbers)";
  }

  /// A group's extremes are known before the rows that they belong to, so that the groups are joined to the rows again; of
  /// several such rows one is taken, as a text that holds it whole.
  QString Statement(const QString& rows) const {
    QStringList extremes = {"MIN(x) AS lx", "MAX(x) AS hx"}, values = {"r.x"};
    QStringList names = {"x"};
    for (std::size_t i = 0; i < ys_.size(); ++i) {
      extremes.append(QString("MIN(%1) AS l%1, MAX(%1) AS h%1").arg(Y(i)));
      values.append("IFNULL(r." + Y(i) + ", 'NULL')");
      names.append(Y(i));
    }
    const QString row = "CONCAT_WS(',', " + values.join(", ") + ')';
    QStringList picked = {"MIN(g.n)"}, is_extreme;
    for (const QString& name : names) {
      is_extreme.append(QString("r.%1 IN (g.l%1, g.h%1)").arg(name));
      for (const char* const end : {"l", "h"}) {
        picked.append(QString("MIN(CASE WHEN r.%1 = g.%2%1 THEN %3 END)").arg(name, end, row));
      }
    }
    return "SELECT " + picked.join(", ") + " FROM (SELECT c, COUNT(*) AS n, " +
           extremes.join(", ") + " FROM " + rows + " AS all_rows GROUP BY c) AS g JOIN " + rows +
           " AS r ON r.c = g.c AND (" + is_extreme.join(" OR ") + ") GROUP BY g.c";
  }

  const ThinnedView& view_;
  ServerQuery server_;
  const AskedColumn& x_;
  const std::vector<AskedColumn>& ys_;
};

}  // namespace

ThinnedRows FetchThinnedOfMysql(const ThinnedView& view, const DatabaseConnection& connection,
                                Progress& progress) {
  return Query(view, connection, progress).Answer();
}

}  // namespace tarnwick
