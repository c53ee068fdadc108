#include "sources/database/database_statement.h"

#include <string>

#include "base/number_text.h"
#include "base/text_encoding.h"

namespace tarnwick {
namespace {

constexpr const char* kNumber =
    "tarnwick_row";  // no column has that name, or the statement is refused

QString Source(const AskedRows& asked) {
  return asked.is_query ? '(' + asked.from + ") AS tarnwick_rows" : asked.from;
}

QString Columns(const AskedRows& asked) {
  return asked.columns.isEmpty() ? QStringLiteral("*") : asked.columns.join(QLatin1String(", "));
}

/// Rows that agree in all that is read are the same: what is asked for settles every order.
QString Order(const AskedRows& asked) {
  if (!asked.row_key.isEmpty()) return " ORDER BY " + asked.row_key;
  if (asked.order.isEmpty()) return {};
  QStringList by = {asked.order};
  for (const QString& column : asked.columns) {
    if (column != asked.order) by.append(column);
  }
  return " ORDER BY " + by.join(QLatin1String(", "));
}

bool IsBlank(char c) {
  return std::string_view(" \n\t\r").find(c) != std::string_view::npos;
}

}  // namespace

bool OrdersItself(std::string_view query) {
  const std::string lower = LowerAscii(query);
  int depth = 0;
  char quote = 0;
  for (std::size_t i = 0; i < lower.size(); ++i) {
    const char c = lower[i];
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '\'' || c == '"' || c == '`') {
      quote = c;
    } else if (c == '(') {
      ++depth;
    } else if (c == ')') {
      --depth;
    } else if (depth == 0 && i > 0 && IsBlank(lower[i - 1]) && lower.compare(i, 5, "order") == 0) {
      std::size_t next = i + 5;
      while (next < lower.size() && IsBlank(lower[next])) ++next;
      if (next > i + 5 && lower.compare(next, 2, "by") == 0) return true;
    }
  }
  return false;
}

QString AllRowsOf(const AskedRows& asked) {
  if (asked.is_query && asked.columns.isEmpty()) return asked.from;
  return "SELECT " + Columns(asked) + " FROM " + Source(asked) + Order(asked);
}

QString SomeRowsOf(const AskedRows& asked, std::int64_t first, std::int64_t every) {
  const QString numbered = QString("SELECT %1, row_number() OVER (%2) AS %3 FROM %4")
                               .arg(Columns(asked), Order(asked).trimmed(), kNumber, Source(asked));
  const QString from = QString::number(first);
  QString statement = "SELECT " + Columns(asked) + " FROM (" + numbered +
                      ") AS numbered_rows WHERE " + kNumber + " >= " + from;
  if (every > 1) {
    statement += QString(" AND MOD(%1 - %2, %3) = 0").arg(kNumber, from, QString::number(every));
  }
  return statement + " ORDER BY " + kNumber;
}

QString RowBehindKey(const AskedRows& asked) {
  return "SELECT " + asked.row_key + ", " + Columns(asked) + " FROM " + Source(asked) + " WHERE " +
         asked.row_key + " >= ? ORDER BY " + asked.row_key + " LIMIT 1 OFFSET ?";
}

QString CountOf(const AskedRows& asked) {
  const QString from = asked.is_query ? '(' + asked.from + ") AS counted_rows" : asked.from;
  return "SELECT COUNT(*) FROM " + from;
}

QString CountUpTo(const AskedRows& asked, std::int64_t most) {
  return QString("SELECT COUNT(*) FROM (SELECT 1 FROM %1 LIMIT %2) AS first_rows")
      .arg(Source(asked), QString::number(most));
}

QString GuessOfRows(const DatabaseDialect& dialect, QString from) {
  if (dialect.guess == nullptr) return {};
  return QString(dialect.guess).arg(from.replace('\'', QLatin1String("''")));
}

QString CountBelow(const AskedRows& asked, const DatabaseDialect& dialect, const QString& column,
                   double bound) {
  const QString limit = QString::fromStdString(ShortestText(bound));
  if (!asked.row_key.isEmpty()) {
    // A text may be read as a number: the rows before the first that is none, or large enough.
    const QString first =
        QString(
            "SELECT %1 FROM %2 WHERE %3 IS NOT NULL AND (typeof(%3) NOT IN ('integer', 'real') "
            "OR CAST(%3 AS REAL) >= %4) ORDER BY %1 LIMIT 1")
            .arg(asked.row_key, Source(asked), column, limit);
    return QString("SELECT COUNT(*) FROM %1 WHERE %2 < ifnull((%3), 9223372036854775807)")
        .arg(Source(asked), asked.row_key, first);
  }
  if (dialect.number == nullptr || asked.order != column) return {};
  QString below = QString(dialect.number).arg(column) + " < " + limit;
  if (dialect.nulls_first) below += " OR " + column + " IS NULL";
  return "SELECT COUNT(*) FROM " + Source(asked) + " WHERE " + below;
}

}  // namespace tarnwick
