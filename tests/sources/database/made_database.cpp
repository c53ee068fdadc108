#include "made_database.h"

#include "support/run_statements.h"

namespace tarnwick::testing {

void MadeDatabase::Run(const std::vector<std::string>& statements) const {
  RunStatements(file_, statements);
}

}  // namespace tarnwick::testing
