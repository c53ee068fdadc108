// The column expressions of a DataSet as functions of a row's values. Knows the expression engine and what columns are
// called; nothing of rows and how they are read.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "data/import/loader.h"

namespace tarnwick {

/// Compiles XColExpr and YColExpr with the variables X and Y and the columns `column_names`, called as
/// ColumnOfVariable says. "X" for X, "Y" for Y and empty texts give empty transforms. A value that comes out undefined,
/// or an integer division without result, is no value. Throws Error with the engine's message, the place and the
/// expression, and where a name stands for no column and is not assigned.
ColumnTransforms CompileColumnExpressions(const TDataSeries& series,
                                          const std::vector<std::string>& column_names);

/// Why a text is no column expression, and the byte of it at which that shows, where there is one.
struct ColumnTrouble {
  std::string why;
  std::optional<std::size_t> place;
};

/// Nothing for a text that compiles.
std::optional<ColumnTrouble> TroubleOfColumnExpression(
    const std::string& text, const std::vector<std::string>& column_names);

}  // namespace tarnwick
