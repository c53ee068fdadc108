#include "data/guess/touching_fields.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "base/ascii.h"
#include "base/number_text.h"
#include "data/fields/line_words.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestRows = 4;

/// The numbers of a row: where each ends, and which touch the one before.
struct NumberRow {
  std::vector<std::int32_t> ends;
  std::vector<std::pair<double, double>> touching;
};

bool IsOfNumber(char c) {
  constexpr std::string_view kOthers = "+-.eEdD";
  return IsDigit(c) || kOthers.find(c) != kOthers.npos;
}

/// Where the next number begins within a word: at a sign behind a digit or a point, which dates and exponents have otherwise.
std::size_t NextSign(std::string_view word) {
  for (std::size_t i = 1; i < word.size(); ++i) {
    if (word[i] == '-' && (IsDigit(word[i - 1]) || word[i - 1] == '.')) return i;
  }
  return word.npos;
}

/// Nothing for a line that holds anything but numbers; those that touch have decimals, as days and months have not.
std::optional<NumberRow> NumbersOf(std::string_view line) {
  NumberRow row;
  for (const LineWord& word : WordsOfLine(line)) {
    std::string_view rest = word.text;
    if (!std::ranges::all_of(rest, &IsOfNumber) || std::ranges::none_of(rest, &IsDigit)) {
      return std::nullopt;
    }
    std::int32_t at = word.begin;
    std::optional<double> before;
    while (!rest.empty()) {
      const std::string_view part = rest.substr(0, NextSign(rest));
      const std::optional<double> number = ParseNumber(part);
      const bool alone = part.size() == word.text.size();
      if (!alone && (!number || part.find('.') == part.npos)) return std::nullopt;
      if (before && number) row.touching.emplace_back(*before, *number);
      before = number;
      at += static_cast<std::int32_t>(part.size());
      row.ends.push_back(at);
      rest.remove_prefix(part.size());
    }
  }
  return row.ends.size() > 1 ? std::optional(std::move(row)) : std::nullopt;
}

/// "0.0-0.5" above "0.5-1.0": from one number to the other.
bool AreRanges(const std::vector<NumberRow>& rows) {
  return std::ranges::all_of(rows,
                             [](const NumberRow& row) {
                               return !row.touching.empty() &&
                                      std::ranges::all_of(row.touching, [](const auto& pair) {
                                        return std::abs(pair.second) > pair.first &&
                                               pair.first >= 0;
                                      });
                             }) &&
         std::ranges::adjacent_find(rows, [](const NumberRow& row, const NumberRow& next) {
           return next.touching.front().first < std::abs(row.touching.front().second);
         }) == rows.end();
}

std::vector<std::int32_t> CutsBehind(const std::vector<std::int32_t>& ends) {
  std::vector<std::int32_t> cuts{0};
  cuts.insert(cuts.end(), ends.begin(), ends.end() - 1);
  return cuts;
}

/// Collects the runs while the lines go by.
class TouchingSearch {
 public:
  void Take(std::size_t line, std::optional<NumberRow> row) {
    const bool fits = row && !rows_.empty() && row->ends == rows_.front().ends;
    if (!fits) Finish();
    if (!row) return;
    if (rows_.empty()) first_ = line;
    behind_ = line + 1;
    rows_.push_back(std::move(*row));
  }

  void Finish() {
    const bool touch =
        std::ranges::any_of(rows_, [](const NumberRow& row) { return !row.touching.empty(); });
    if (touch && rows_.size() >= kFewestRows && rows_.size() > most_ && !AreRanges(rows_)) {
      most_ = rows_.size();
      const auto rows = static_cast<double>(most_);
      const auto fields = static_cast<std::int32_t>(rows_.front().ends.size());
      best_ = CutTable{{first_, behind_, fields, most_, 0, rows}, CutsBehind(rows_.front().ends)};
    }
    rows_.clear();
  }

  std::optional<CutTable> Best() { return std::move(best_); }

 private:
  std::vector<NumberRow> rows_;
  std::size_t first_ = 0;
  std::size_t behind_ = 0;
  std::size_t most_ = 0;
  std::optional<CutTable> best_;
};

/// A sign behind a digit, before decimals: most texts hold none.
bool MayTouch(std::string_view line) {
  const std::size_t sign = NextSign(line);
  return sign != line.npos && line.find('.', sign) != line.npos && line.find('.') < sign;
}

}  // namespace

std::optional<CutTable> FindTouchingTable(std::span<const std::string_view> lines,
                                          const TextLayout& layout) {
  if (std::ranges::none_of(lines, &MayTouch)) return std::nullopt;
  TouchingSearch search;
  std::size_t rows = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!IsDataLine(lines[i], layout)) continue;
    std::optional<NumberRow> row = NumbersOf(lines[i]);
    rows += row ? 1 : 0;
    search.Take(i, std::move(row));
  }
  search.Finish();
  std::optional<CutTable> best = search.Best();
  // In other lines of numbers they end elsewhere: these places are none of columns.
  const bool most = best && 4 * best->table.rows >= 3 * rows;
  return most ? std::move(best) : std::nullopt;
}

}  // namespace tarnwick
