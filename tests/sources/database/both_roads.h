// What a data base picks and what reading row by row picks, compared over random tables and row choices.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "sources/database/database_place.h"

namespace tarnwick::testing {

/// `make` runs the statements that make the table "t" anew, which the places read; `texts`: where numbers stand some texts do.
void ExpectSameByBothRoads(
    bool texts, int tables, const std::vector<DatabasePlace>& places,
    const std::function<void(const std::vector<std::string>& statements)>& make);

/// Of random views of such tables: the ends and extremes of every column are those of all rows, and every row is one of them.
void ExpectThinnedShowsEveryExtreme(
    bool texts, int tables, const std::vector<DatabasePlace>& places,
    const std::function<void(const std::vector<std::string>& statements)>& make);

/// Adds the same places read through that driver of ODBC, whose connection the words name; none where it is not installed.
void AddThroughOdbc(const std::string& words, std::vector<DatabasePlace>& places);

}  // namespace tarnwick::testing
