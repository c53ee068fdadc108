#include "data/import/listed.h"

namespace tarnwick {

std::string Listed(std::span<const std::string> texts, std::size_t most) {
  const std::size_t shown = texts.size() <= most ? texts.size() : most - 1;
  std::string list;
  for (std::size_t i = 0; i < shown; ++i) {
    const bool last = i > 0 && i + 1 == texts.size();
    list += (i == 0 ? "" : last ? " and " : ", ") + texts[i];
  }
  if (shown < texts.size()) list += " and " + std::to_string(texts.size() - shown) + " more";
  return list;
}

}  // namespace tarnwick
