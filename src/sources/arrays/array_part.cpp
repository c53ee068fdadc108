#include "sources/arrays/array_part.h"

#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr char kBetween = ';';

}  // namespace

std::string ArraysText(std::span<const std::string> paths) {
  std::string text;
  for (const std::string& path : paths) text += (text.empty() ? "" : std::string(1, kBetween)) + path;
  return text;
}

std::vector<std::string> ParseArrays(std::string_view text) {
  std::vector<std::string> paths;
  while (!text.empty()) {
    const std::string_view path = TrimBlanks(text.substr(0, text.find(kBetween)));
    if (!path.empty()) paths.emplace_back(path);
    text.remove_prefix(std::min(text.size(), text.find(kBetween) == text.npos ? text.size() : text.find(kBetween) + 1));
  }
  return paths;
}

}  // namespace tarnwick
