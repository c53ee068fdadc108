// How long a data base may take for one statement. Knows the environment; knows no data base.
#pragma once

#include <chrono>
#include <string>

namespace tarnwick {

/// What TARNWICK_DB_TIMEOUT says, in whole seconds from 1; else ten minutes.
std::chrono::milliseconds StatementLimit();

/// What there is to say when it was passed; `place` as messages name it.
std::string TookTooLong(const std::string& place);

}  // namespace tarnwick
