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

void DocumentTold::ReadAgain(const ImportTold& told) {
  ImportTold all = told;
  for (const ToldClause& clause : told_) {
    const bool holds = clause.about == ToldAbout::Guessing || clause.about == ToldAbout::Errors ||
                       clause.about == ToldAbout::Outdated;
    if (holds && std::ranges::find(all, clause) == all.end()) all.push_back(clause);
  }
  Replace(all);
}

void DocumentTold::Replace(const ImportTold& told) {
  closed_ = closed_ && std::ranges::all_of(told, [this](const ToldClause& clause) {
              return std::ranges::find(told_, clause) != told_.end();
            });
  told_ = told;
}

}  // namespace tarnwick
