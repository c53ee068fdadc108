// What stands around the names on their line. Knows texts only.
#pragma once

#include <string_view>

namespace tarnwick {

/// The inside of "[time, voltage]", what follows "VARIABLES =", "Columns are:" or the mark of "~Time", what stands before a
/// remark or the bar that ends lines of a head; else the line as it is.
std::string_view WithoutFrame(std::string_view whole);

}  // namespace tarnwick
