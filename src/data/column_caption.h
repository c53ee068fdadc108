// What the values of a DataSet are called: the column that they were read from, or what was computed from it. Knows the
// description of a source; reads nothing.
#pragma once

#include <string>
#include <string_view>

#include "data/ds_info.h"

namespace tarnwick {

/// True for an expression that leaves the values of its column as they are: empty, or `name` ("x", "y") alone.
bool IsRawColumn(const std::string& expression, std::string_view name);

/// What X or Y of a DataSet is called: the name of its column, or the expression that it is computed by with the columns' names
/// in place of X and Y ("-Z''(b)", "ln(U)", "(signal - dark)^2"; of a long one "Z''(b) (computed)").
std::string CaptionOfX(const TDSInfo& info);
std::string CaptionOfY(const TDSInfo& info);
/// `y_name` stands for the name of Y's column.
std::string CaptionOfY(const TDSInfo& info, const std::string& y_name);

/// "U" of "U (mV)" and "U [mV]": a column's name without what ends it in brackets, where anything stands before these.
std::string_view NameWithoutUnit(std::string_view name);

}  // namespace tarnwick
