#include "sources/arrays/array_part.h"

#include <algorithm>

#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr char kBetween = ';';

}  // namespace

std::string ArraysText(std::span<const std::string> paths) {
  std::string text;
  for (const std::string& path : paths)
    text += (text.empty() ? "" : std::string(1, kBetween)) + path;
  return text;
}

std::vector<std::string> ParseArrays(std::string_view text) {
  std::vector<std::string> paths;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(kBetween), text.size());
    const std::string_view path = TrimBlanks(text.substr(0, end));
    if (!path.empty()) paths.emplace_back(path);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return paths;
}

}  // namespace tarnwick
