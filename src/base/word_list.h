// Words listed in a sentence, and sentences put together. Knows texts only.
#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>

namespace tarnwick {

/// "a, b and c"; of more than `most` the first and "and 4 more".
std::string Listed(std::span<const std::string> words,
                   std::size_t most = std::numeric_limits<std::size_t>::max());

/// The words with `between` them.
std::string Joined(std::span<const std::string> words, std::string_view between);

/// Puts a sentence behind others; nothing for an empty one.
void AddSentence(std::string& text, std::string_view sentence);

}  // namespace tarnwick
