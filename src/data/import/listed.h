// Names in a sentence. Knows words only.
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace tarnwick {

/// "a, b and c"; of more than `most` the first and "and 4 more".
std::string Listed(std::span<const std::string> texts, std::size_t most);

}  // namespace tarnwick
