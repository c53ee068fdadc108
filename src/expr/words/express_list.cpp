#include "expr/words/express_list.h"

#include <algorithm>

namespace tarnwick {
namespace {

constexpr std::size_t kCapacity = 30;

int Folded(char c) {
  return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : static_cast<unsigned char>(c);
}

}  // namespace

TExpressList::TExpressList() : TSortedCollection(kCapacity) {}

int TExpressList::Compare(std::string_view name1, std::string_view name2) const {
  const std::size_t common = std::min(name1.size(), name2.size());
  for (std::size_t i = 0; i < common; ++i) {
    const int order = Folded(name1[i]) - Folded(name2[i]);
    if (order != 0) return order;
  }
  return static_cast<int>(name1.size() > name2.size()) -
         static_cast<int>(name1.size() < name2.size());
}

TExprWord* TExpressList::Find(std::string_view name) const {
  const SearchResult place = Search(name);
  return place.found ? items_[place.index] : nullptr;
}

}  // namespace tarnwick
