// Statements that fill a data base of the tests' own.
#pragma once

#include <QSqlDatabase>
#include <functional>
#include <string>
#include <vector>

namespace tarnwick::testing {

/// Runs them over a connection of that driver of Qt, which `name` tells where it leads; what fails is a failure of the test.
void RunStatements(const char* driver, const std::function<void(QSqlDatabase& base)>& name,
                   const std::vector<std::string>& statements);

}  // namespace tarnwick::testing
