#include "data/columns/sign_columns.h"

#include <algorithm>
#include <cstddef>

#include "data/names/text_names.h"

namespace tarnwick {

bool AreSigns(const std::vector<std::string>& texts) {
  return std::ranges::all_of(
      texts, [](const std::string& text) { return text == "+" || text == "-" || text.empty(); });
}

std::vector<std::string> SignsLeftOut(const ImportSource& source) {
  std::vector<std::string> clauses;
  const std::size_t columns = std::min(source.samples.size(), source.columns.size());
  for (std::size_t i = 0; i + 1 < columns; ++i) {
    const std::vector<std::string>& texts = source.samples[i];
    const auto column = static_cast<std::int32_t>(i);
    const bool negative = std::ranges::find(texts, "-") != texts.end();
    // Under a name "-" stands for what is missing, or for a direction.
    const bool named = source.NameOf(column) != UnnamedColumn(column);
    if (named || source.columns[i].has_numbers || !source.columns[i + 1].has_numbers || !negative ||
        !AreSigns(texts)) {
      continue;
    }
    clauses.push_back("the signs in " + source.Quoted(column) +
                      " are left out: " + source.Quoted(column + 1) + " is read without them");
  }
  return clauses;
}

}  // namespace tarnwick
