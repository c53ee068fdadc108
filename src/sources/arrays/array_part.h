// Which arrays of a file are read, as one text that a DataSet's description keeps. Knows the form of that text; opens nothing.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// Paths one behind the other, ";" between them: "/run/time;/run/voltage".
std::string ArraysText(std::span<const std::string> paths);
/// Reads back what ArraysText wrote; blanks around a path do not count.
std::vector<std::string> ParseArrays(std::string_view text);

}  // namespace tarnwick
