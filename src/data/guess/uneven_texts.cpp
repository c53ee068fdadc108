#include "data/guess/uneven_texts.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/ascii.h"
#include "data/fields/line_words.h"

namespace tarnwick {
namespace {

constexpr std::size_t kContinuedLines = 2;  // that make sure
constexpr std::size_t kFewestBehindPlus = 5;

}  // namespace

bool ContinueAtStrokes(std::span<const std::string_view> lines) {
  const auto continued =
      static_cast<std::size_t>(std::ranges::count_if(lines, [](std::string_view line) {
        return line.ends_with('\\') && !line.ends_with("\\\\");  // two end a row that is typeset
      }));
  return continued >= kContinuedLines && 2 * continued >= lines.size();
}

bool ContinueBehindPlus(std::span<const std::string_view> lines) {
  const auto begin_with = [&lines](std::string_view mark) {
    return static_cast<std::size_t>(std::ranges::count_if(
        lines, [mark](std::string_view line) { return line.starts_with(mark); }));
  };
  const std::size_t continued = begin_with("+ ");
  return continued >= kFewestBehindPlus && 2 * continued >= lines.size() &&
         continued < lines.size() && begin_with("- ") == 0;
}

bool AreListsOfManyLengths(std::span<const std::string_view> lines, const TextFormat& format) {
  constexpr std::size_t kFewestLengths = 8;
  if (!format.is_table || format.separators.find(',') == std::string::npos ||
      format.separators.find(' ') != std::string::npos) {
    return false;
  }
  std::set<std::ptrdiff_t> lengths;
  std::size_t longer = 0, shorter = 0;
  std::ptrdiff_t last = 0;
  for (const std::string_view line : lines) {
    const std::ptrdiff_t length = std::ranges::count(line, ',');
    // Quoted texts hold commas, too.
    if (line.find('"') != line.npos) return false;
    longer += length > last ? 1 : 0;
    shorter += length < last ? 1 : 0;
    lengths.insert(std::exchange(last, length));
  }
  return lengths.size() >= kFewestLengths && 3 * longer >= lines.size() &&
         3 * shorter >= lines.size();
}

bool AreBytesInHexadecimal(std::span<const std::string_view> lines) {
  constexpr std::size_t kFewestLines = 5, kBytes = 3;
  std::size_t of_bytes = 0, with_letters = 0;
  for (const std::string_view line : lines) {
    const std::vector<LineWord> words = WordsOfLine(line);
    const auto is_byte = [](const LineWord& word) {
      return word.text.size() == 2 &&
             word.text.find_first_not_of("0123456789abcdefABCDEF") == word.text.npos;
    };
    const auto has_letter = [](const LineWord& word) {
      return std::ranges::any_of(word.text, &IsLetter);
    };
    if (words.size() < kBytes || !std::ranges::all_of(words, is_byte)) continue;
    ++of_bytes;
    with_letters += std::ranges::any_of(words, has_letter) ? 1 : 0;
  }
  return of_bytes >= kFewestLines && 10 * of_bytes >= 9 * lines.size() &&
         2 * with_letters >= of_bytes;
}

bool AreListsUnderKeys(std::span<const std::string_view> lines) {
  constexpr std::size_t kFewestLists = 3;
  std::size_t lists = 0, within = 0;
  bool open = false;
  for (const std::string_view line : lines) {
    const std::size_t bracket = line.find("= [");
    const bool begins =
        bracket != line.npos && IsLetter(line.front()) && line.find(']') == line.npos;
    lists += begins ? 1 : 0;
    open = begins || open;
    within += open ? 1 : 0;
    open = open && !line.ends_with(']');
  }
  return lists >= kFewestLists && 2 * within > lines.size();
}

}  // namespace tarnwick
