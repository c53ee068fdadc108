// What a file must be to be opened as a data base of SQLite. Opens none.
#pragma once

#include <string>

namespace tarnwick {

/// Throws FileError for a file that is missing, that cannot be read, or that is no data base.
void RequireSqliteFile(const std::string& file);

}  // namespace tarnwick
