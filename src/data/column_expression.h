// The column expressions of a DataSet as functions of a row's raw X and Y. Knows the expression engine; nothing of rows and
// suppliers.
#pragma once

#include "data/loader.h"

namespace tarnwick {

/// Compiles XColExpr and YColExpr with the variables X and Y. "X" for X, "Y" for Y and empty texts give empty functions.
/// A value that comes out undefined, or an integer division without result, is no value. Throws Error with the engine's
/// message, the place and the expression.
ColumnTransforms CompileColumnExpressions(const TDataSeries& series);

}  // namespace tarnwick
