#include "data/names/placed_names.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "data/fields/line_words.h"
#include "data/names/names_judge.h"
#include "data/names/names_line.h"

namespace tarnwick {
namespace {

using Names = std::vector<std::string>;

constexpr std::size_t kFewestRows = 3;
constexpr std::size_t kMostWordsMore = 3;
constexpr std::size_t kMostWordsOfName = 3;

/// Characters [begin, end) that a column takes in all rows.
struct Place {
  std::int32_t begin = 0;
  std::int32_t end = 0;
};

/// Where the columns stand; nothing where they share characters or a row has others.
std::vector<Place> PlacesOf(std::span<const std::string_view> rows, std::size_t columns) {
  std::vector<Place> places;
  for (const std::string_view row : rows.first(std::min(rows.size(), kRowsOfPlaces))) {
    const std::vector<LineWord> words = WordsOfLine(row);
    if (words.size() != columns || row.find('\t') != row.npos) return {};
    if (places.empty()) places.assign(columns, {words.back().end, 0});
    for (std::size_t i = 0; i < columns; ++i) {
      places[i].begin = std::min(places[i].begin, words[i].begin);
      places[i].end = std::max(places[i].end, words[i].end);
    }
  }
  const auto touch = [](Place one, Place next) { return next.begin < one.end; };
  if (std::ranges::adjacent_find(places, touch) != places.end()) places.clear();
  return places;
}

std::int32_t Shared(const LineWord& word, Place place) {
  return std::min(word.end, place.end) - std::max(word.begin, place.begin);
}

bool SharesEnd(const LineWord& word, Place place) {
  return std::abs(word.begin - place.begin) <= 1 || std::abs(word.end - place.end) <= 1;
}

}  // namespace

std::optional<Names> NamesByPlace(std::string_view line, std::span<const std::string_view> rows,
                                  const TextLayout& layout, std::int32_t columns) {
  if (columns < 3 || rows.size() < kFewestRows || !layout.IsSeparator(' ') || layout.ByPlace() ||
      line.find('\t') != line.npos) {
    return std::nullopt;
  }
  const auto wanted = static_cast<std::size_t>(columns);
  const std::string text = WithBlankedMarks(line, layout);
  const std::vector<LineWord> words = WordsOfLine(text);
  if (words.size() + 1 < wanted || words.size() > wanted + kMostWordsMore) return std::nullopt;
  const std::vector<Place> places = PlacesOf(rows, wanted);
  if (places.empty()) return std::nullopt;
  Names names(wanted);
  std::vector<std::size_t> counts(wanted);
  std::size_t in_line = 0;
  for (const LineWord& word : words) {
    const auto over =
        std::ranges::max_element(places, {}, [&](Place place) { return Shared(word, place); });
    if (Shared(word, *over) <= 0) return std::nullopt;
    const auto at = static_cast<std::size_t>(over - places.begin());
    names[at] += (names[at].empty() ? "" : " ") + NameText(word.text, layout);
    in_line += SharesEnd(word, *over) ? 1 : 0;
    if (++counts[at] > kMostWordsOfName) return std::nullopt;
  }
  const bool lacks = std::any_of(names.begin() + 1, names.end(),
                                 [](const std::string& name) { return name.empty(); });
  if (lacks || 2 * in_line < words.size()) return std::nullopt;
  const bool named = AreNames(names, line) && !AreSetting(names) && !AreUnits(names);
  return named ? std::optional(std::move(names)) : std::nullopt;
}

}  // namespace tarnwick
