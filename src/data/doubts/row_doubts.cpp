#include "data/doubts/row_doubts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/ascii.h"
#include "base/text_encoding.h"
#include "base/word_list.h"
#include "data/columns/counted_rows.h"
#include "data/fields/field_kind.h"
#include "data/fields/field_value.h"
#include "data/fields/text_fields.h"
#include "data/fields/text_lines.h"
#include "data/names/argument_names.h"
#include "data/names/names_judge.h"
#include "data/names/names_line.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostLines = 4000;
constexpr std::size_t kMostFields = 10'000;  // whose values are read
constexpr std::size_t kLongestQuote = 40;    // of a line

struct Line {
  std::string_view text;
  std::size_t number = 0;  ///< from 1
};

/// The lines of a text as the table parts them.
struct HeldLines {
  const ImportSource& source;
  TextLayout layout;
  std::vector<Line> head;     ///< data lines and others above the rows
  std::vector<Line> rows;     ///< those that are read
  std::vector<Line> remarks;  ///< behind the first row
  bool whole = false;         ///< there are no more rows than these
};

HeldLines Hold(const ImportSource& source, std::string_view text, char line_end) {
  HeldLines held{source, TextLayout(source.info, line_end), {}, {}, {}, false};
  const auto headers = static_cast<std::size_t>(std::max(source.info.FileHasHeaders, 0));
  const auto table = static_cast<std::size_t>(std::max(source.info.TableLines, 0));
  const std::size_t behind = table > 0 ? headers + table : std::string_view::npos;
  LineWalker walker(text, line_end);
  std::size_t number = 0;
  while (!walker.AtEnd() && number < behind && number < headers + kMostLines) {
    const Line line{walker.Next(), ++number};
    if (number <= headers) {
      held.head.push_back(line);
    } else if (IsDataLine(line.text, held.layout)) {
      held.rows.push_back(line);
    } else if (!held.rows.empty() && !TrimBlankBytes(line.text).empty()) {
      held.remarks.push_back(line);
    }
  }
  held.whole = walker.AtEnd() || number >= behind;
  return held;
}

std::string QuotedLine(const Line& line) {
  std::string text = Utf8FromText(TrimBlankBytes(line.text));
  if (text.size() > kLongestQuote) text = text.substr(0, text.find(' ', kLongestQuote / 2)) + " …";
  return "line " + std::to_string(line.number) + ", \"" + text + '"';
}

std::string OfMany(std::size_t lines) {
  return lines == 1 ? "" : " (the first of " + std::to_string(lines) + " such lines)";
}

bool HoldsNames(const TDSInfo& info, const Line& line) {
  const auto number = static_cast<std::int32_t>(line.number);
  return number == info.NamesLine || number == info.UnitsLine ||
         (info.NamesLine == 0 && number == 1);
}

std::vector<FieldKind> KindsOf(const Line& line, const TextLayout& layout) {
  std::vector<FieldKind> kinds;
  for (const std::string& text : FieldTexts(line.text, layout)) kinds.push_back(KindOfField(text));
  return kinds;
}

/// Whole numbers may count the rows and the columns.
bool MayCount(const Line& line, const HeldLines& held) {
  const std::vector<std::string> fields = FieldTexts(line.text, held.layout);
  const std::string rows = std::to_string(held.rows.size());
  const std::string columns = std::to_string(held.source.columns.size());
  return std::ranges::any_of(
      fields, [&](const std::string& text) { return text == rows || text == columns; });
}

/// A row that lacks its first or its last field is no line of the head: its values are gone.
void DoubtLineAbove(const HeldLines& held, Doubts& doubts) {
  if (held.head.empty() || held.rows.empty()) return;
  const Line& line = held.head.back();
  if (HoldsNames(held.source.info, line) || !IsDataLine(line.text, held.layout)) return;
  const std::vector<FieldKind> kinds = KindsOf(line, held.layout);
  const std::vector<FieldKind> row = KindsOf(held.rows.front(), held.layout);
  const bool lacks = kinds.size() + 1 == row.size() &&
                     (std::ranges::equal(kinds, std::span(row).first(kinds.size())) ||
                      std::ranges::equal(kinds, std::span(row).last(kinds.size())));
  if (!lacks || std::ranges::none_of(kinds, &IsValue) || MayCount(line, held)) return;
  doubts.push_back({DoubtAbout::Rows, QuotedLine(line) +
                                          ", is left out: it is a row without one of its fields "
                                          "perhaps (--headers " +
                                          std::to_string(line.number - 1) + " has it read)"});
}

std::size_t FilledFields(std::string_view line, const TextLayout& layout) {
  FieldCursor cursor(line, layout);
  std::size_t count = 0, filled = 0;
  while (const std::optional<std::string_view> field = cursor.Next()) {
    ++count;
    if (!TrimBlankBytes(*field).empty()) filled = count;
  }
  return filled;
}

/// A few rows with more fields than all others: what stands behind the one too many is in the wrong column.
void DoubtLongRows(const HeldLines& held, Doubts& doubts) {
  constexpr std::size_t kShare = 50;  // of more of them the guess tells
  if (held.layout.ByPlace()) return;
  std::vector<std::size_t> counts;
  counts.reserve(held.rows.size());
  for (const Line& row : held.rows) counts.push_back(FilledFields(row.text, held.layout));
  if (counts.size() < kShare / 2) return;
  std::vector<std::size_t> sorted = counts;
  std::ranges::sort(sorted);
  const std::size_t most = sorted[sorted.size() / 2];
  const auto is_long = [&](std::size_t count) { return count > most; };
  const auto found = static_cast<std::size_t>(std::ranges::count_if(counts, is_long));
  if (found == 0 || kShare * found > counts.size()) return;
  const auto at = std::ranges::find_if(counts, is_long);
  const Line& row = held.rows[static_cast<std::size_t>(at - counts.begin())];
  doubts.push_back({DoubtAbout::Rows, "line " + std::to_string(row.number) + " has " +
                                          std::to_string(*at) + " fields where the others have " +
                                          std::to_string(most) + OfMany(found) +
                                          ": its values may stand in the wrong columns"});
}

/// "United Kingdom": words with one blank between them. Where the first rows have no names, that is a remark of any sort.
bool IsPhrase(const std::vector<std::string>& words, std::string_view text) {
  return Joined(words, " ") == TrimBlankBytes(text);
}

/// "#Time v(2)" between rows whose X is called "Freq".
void DoubtNamesBetween(const HeldLines& held, Doubts& doubts) {
  const std::vector<std::string>& names = held.source.supplier->ColumnNames();
  const auto begins_with_letter = [](const std::string& word) {
    return !word.empty() &&
           (IsLetter(word.front()) || static_cast<unsigned char>(word.front()) >= 0x80);
  };
  const bool named = HasNamedColumns(held.source);
  std::size_t found = 0;
  const Line* first = nullptr;
  for (const Line& remark : held.remarks) {
    const std::string_view bare = WithoutCommentMarks(remark.text, held.layout);
    const std::vector<std::string> words = NameTexts(bare, held.layout);
    if (words.size() < 2 || words.size() != names.size()) continue;
    if (!std::ranges::all_of(words, begins_with_letter) || !AreNames(words, remark.text)) continue;
    if (!named && !NamesArgument(words.front()) && IsPhrase(words, bare)) continue;
    // "# x, green" below "x, red" names the next run.
    if (LowerAscii(words.front()) == LowerAscii(names.front())) continue;
    if (++found == 1) first = &remark;
  }
  if (first == nullptr) return;
  doubts.push_back({DoubtAbout::Rows, QuotedLine(*first) + OfMany(found) +
                                          ", seems to name other columns for the rows behind it"});
}

/// What a column holds in all rows but the last.
struct Total {
  double sum = 0, low = 0, high = 0;
  std::size_t count = 0;
  std::optional<double> last;

  void Add(double value) {
    low = count == 0 ? value : std::min(low, value);
    high = count == 0 ? value : std::max(high, value);
    sum += value;
    ++count;
  }
};

std::vector<Total> TotalsOf(const HeldLines& held) {
  const ImportSource& source = held.source;
  std::vector<Total> totals(source.columns.size());
  std::string buffer;
  for (const Line& row : held.rows) {
    FieldCursor cursor(row.text, held.layout);
    for (std::size_t i = 0; i < totals.size(); ++i) {
      const std::optional<std::string_view> field = cursor.Next();
      if (!field) break;
      const ColumnGuess& column = source.columns[i];
      if (!column.has_numbers || column.is_date) continue;
      const auto value = ValueOfField(FieldText(*field, held.layout, buffer), column.format);
      if (&row == &held.rows.back()) {
        totals[i].last = value;
      } else if (value) {
        totals[i].Add(*value);
      }
    }
  }
  return totals;
}

/// "Total 35 120": two columns at least, and all that vary but one, end with their sum; or with their mean.
void DoubtSums(const HeldLines& held, Doubts& doubts) {
  constexpr std::size_t kFewestRows = 6;
  constexpr double kSums = 1e-6, kMeans = 1e-3;  // of the sum, of how far values go
  const std::size_t fields = held.rows.size() * held.source.columns.size();
  if (!held.whole || held.rows.size() < kFewestRows || fields > kMostFields) return;
  std::size_t sums = 0, means = 0, others = 0;
  for (const Total& total : TotalsOf(held)) {
    if (!total.last || total.count < kFewestRows - 1 || total.high == total.low) continue;
    const double mean = total.sum / static_cast<double>(total.count);
    const bool sum = std::abs(*total.last - total.sum) <= kSums * std::abs(total.sum);
    const bool is_mean = std::abs(*total.last - mean) <= kMeans * (total.high - total.low);
    sums += sum ? 1 : 0;
    means += is_mean ? 1 : 0;
    others += sum || is_mean ? 0 : 1;
  }
  if (others > 1 || std::max(sums, means) < 2) return;
  doubts.push_back({DoubtAbout::Rows, std::string("the last row holds the ") +
                                          (sums >= means ? "sums" : "means") +
                                          " of the rows above it (--rows 6,1 leaves it out)"});
}

}  // namespace

Doubts DoubtsOfRows(const ImportSource& source, const TextFormat& format, std::string_view text,
                    char line_end) {
  const HeldLines held = Hold(source, text, line_end);
  Doubts doubts;
  if (format.values_above == 0 && format.other_tables.empty()) DoubtLineAbove(held, doubts);
  DoubtLongRows(held, doubts);
  DoubtNamesBetween(held, doubts);
  DoubtSums(held, doubts);
  return doubts;
}

}  // namespace tarnwick
