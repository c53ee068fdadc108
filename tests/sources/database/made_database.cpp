#include "made_database.h"

#include "run_statements.h"

namespace tarnwick::testing {

void MadeDatabase::Run(const std::vector<std::string>& statements) const {
  const auto name = [this](QSqlDatabase& base) {
    base.setDatabaseName(QString::fromStdString(file_));
  };
  RunStatements("QSQLITE", name, statements);
}

}  // namespace tarnwick::testing
