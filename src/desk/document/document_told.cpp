#include "desk/document/document_told.h"

#include <algorithm>

namespace tarnwick {

void DocumentTold::Add(const ImportTold& told) {
  ImportTold all = closed_ ? ImportTold() : told_;
  for (const ToldClause& clause : told) {
    if (std::ranges::find(all, clause) == all.end()) all.push_back(clause);
  }
  if (!told.empty()) Replace(all);
}

void DocumentTold::Drop(ToldAbout about) {
  std::erase_if(told_, [about](const ToldClause& clause) { return clause.about == about; });
}

void DocumentTold::Replace(const ImportTold& told) {
  if (told == told_) return;
  told_ = told;
  closed_ = false;
}

}  // namespace tarnwick
