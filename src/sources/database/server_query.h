// One question to a server for the rows of a view, and the columns that it names. Knows connections and what a server says of
// columns; knows no dialect's way to thin.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "base/progress.h"
#include "sources/database/database_rows.h"
#include "sources/database/thinned_view.h"

namespace tarnwick {

/// A column as a server is asked for it.
struct AskedColumn {
  QString name;           ///< quoted
  QString number;         ///< its value as a number of double precision
  bool is_time = false;   ///< a moment, whose number is a day
  bool is_whole = false;  ///< a whole number, which an index finds only beside whole numbers
};

/// How a dialect turns values into numbers; "%1" is the column.
struct NumberWords {
  const char* number;
  const char* truth;
  const char* days;
};

/// Where the columns of a view lie.
struct ColumnsOfX {
  double min = 0;
  double max = 0;
  double per_x = 0;  ///< columns in one unit of X
};

class ServerQuery {
 public:
  /// Asks for the columns of the view. Throws Error, also for columns that are read as texts, which no server compares as we read
  /// them. View, connection and progress outlive the query.
  ServerQuery(const ThinnedView& view, const NumberWords& words,
              const DatabaseConnection& connection, Progress& progress);

  const AskedColumn& X() const { return x_; }
  const std::vector<AskedColumn>& Ys() const { return ys_; }
  /// The table's name, or the query in brackets with a name.
  const QString& Source() const { return source_; }
  /// The rows of the view that a statement picks: groups, each with how many rows fell into a column of the view and rows of it
  /// as lists of numbers, X and every Y at their ends. `where`, " AND …": the rows that count. Throws FileError, and
  /// UnpackingCancelled.
  ThinnedRows Thinned(const QString& where,
                      const std::function<QString(const ColumnsOfX&)>& statement);
  /// The rows that a statement answers, each as such a list.
  ThinnedRows Listed(const ColumnsOfX& x, const QString& statement);
  /// From end to end of the view, or of the rows where it has none. Nothing without rows.
  std::optional<ColumnsOfX> Columns(const QString& where);
  /// How the server would answer a statement, in its own words.
  QString Plan(const QString& statement);
  /// About how many rows its table has, where the server knows without counting.
  std::optional<std::int64_t> GuessedRows();

 private:
  QStringList Answers(const QString& statement);
  void Run(const QString& statement);
  bool Next();
  AskedColumn Asked(const QSqlRecord& record, const ThinnedColumn& column,
                    const NumberWords& words) const;
  [[noreturn]] void Fail(const DatabaseFailure& failure) const;

  const ThinnedView& view_;
  Progress& progress_;
  const DatabaseConnection& connection_;
  DatabaseRows rows_;
  QString source_;
  AskedColumn x_;
  std::vector<AskedColumn> ys_;
};

}  // namespace tarnwick
