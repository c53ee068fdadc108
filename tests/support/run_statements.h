// Statements that fill a data base of the tests' own.
#pragma once

#include <QSqlDatabase>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace tarnwick::testing {

/// Runs them over a connection of that driver of Qt, which `name` tells where it leads; what fails is a failure of the test.
void RunStatements(const char* driver, const std::function<void(QSqlDatabase& base)>& name,
                   const std::vector<std::string>& statements);

/// The same over a file of SQLite, which is made where it is not there.
void RunStatements(const std::filesystem::path& file, const std::vector<std::string>& statements);

}  // namespace tarnwick::testing
