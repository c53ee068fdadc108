#include "sources/database/statement_limit.h"

#include <QtGlobal>

namespace tarnwick {
namespace {

constexpr int kUsualSeconds = 600;

}  // namespace

std::chrono::milliseconds StatementLimit() {
  const int said = qEnvironmentVariableIntValue("TARNWICK_DB_TIMEOUT");
  return std::chrono::seconds(said > 0 ? said : kUsualSeconds);
}

std::string TookTooLong(const std::string& place) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(StatementLimit()).count();
  return "The data base did not answer within " + std::to_string(seconds) +
         " s (TARNWICK_DB_TIMEOUT sets another limit): " + place;
}

}  // namespace tarnwick
