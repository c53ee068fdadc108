#include "data/doubts/doubt.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tarnwick {

void AddDoubts(Doubts doubts, std::vector<std::string>& notes) {
  std::ranges::stable_sort(doubts, {}, &Doubt::about);
  std::ptrdiff_t ahead = 0;
  for (Doubt& doubt : doubts) {
    const bool last = doubt.about == DoubtAbout::Values;
    notes.insert(last ? notes.end() : notes.begin() + ahead++, std::move(doubt.text));
  }
}

}  // namespace tarnwick
