#include "desk/document/document_told.h"

#include <algorithm>
#include <iterator>

namespace tarnwick {

void DocumentTold::Add(const ImportTold& told) {
  ImportTold all = closed_ ? ImportTold() : told_;
  for (const ToldClause& clause : told) {
    if (std::ranges::find(all, clause) == all.end()) all.push_back(clause);
  }
  if (!told.empty()) Replace(all);
}

std::optional<std::int32_t> DocumentTold::OtherTable() const {
  const auto clause = std::ranges::find_if(
      told_, [](const ToldClause& one) { return one.other_table.has_value(); });
  return closed_ || clause == told_.end() ? std::nullopt : clause->other_table;
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

void DocumentTold::GoBackTo(const ImportTold& told) {
  const auto of_view = [](const ToldClause& clause) { return clause.about == ToldAbout::Thinning; };
  ImportTold all = told;
  const bool was_thinned = std::erase_if(all, of_view) > 0;
  if (was_thinned && IsAbout(told_, ToldAbout::Thinning)) {
    std::ranges::copy_if(told_, std::back_inserter(all), of_view);
  } else if (was_thinned) {
    std::ranges::copy_if(told, std::back_inserter(all), of_view);
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
