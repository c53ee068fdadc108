#include "data/guess/worded_table.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "base/ascii.h"
#include "data/fields/field_kind.h"
#include "data/fields/line_words.h"
#include "data/guess/column_judge.h"

namespace tarnwick {
namespace {

using Lines = std::span<const std::string_view>;

constexpr std::size_t kFewestRows = 6;
constexpr std::size_t kMostFields = 40;
constexpr std::size_t kMostLabels = 3;  // words that differ from row to row
constexpr std::string_view kMarks = "=:;,()[]|";
constexpr std::string_view kPartingMarks = ",;|";

bool IsNumber(std::string_view word) {
  const FieldKind kind = KindOfField(word);
  return kind == FieldKind::Number || kind == FieldKind::Date;
}

/// The marks on both sides of the numbers within a word: "=" and ")" of "(lr=0.5)". Those that part fields by themselves count
/// at its end or before a letter only.
std::string MarksBesideNumbers(std::string_view word) {
  const auto parts = [](char mark) { return kPartingMarks.find(mark) != kPartingMarks.npos; };
  std::string marks;
  for (std::size_t begin = 0; begin < word.size();) {
    const std::size_t end = std::min(word.find_first_of(kMarks, begin), word.size());
    if (end > begin && IsNumber(word.substr(begin, end - begin))) {
      if (begin > 0 && !parts(word[begin - 1])) marks += word[begin - 1];
      const bool at_end = end + 1 == word.size();
      // "A=5,B=7"
      const bool before_name =
          begin > 0 && word[begin - 1] == '=' && end + 1 < word.size() && IsLetter(word[end + 1]);
      if (end < word.size() && (at_end || before_name || !parts(word[end]))) marks += word[end];
    }
    begin = end + 1;
  }
  return marks;
}

/// Marks that part words from numbers in many lines, and are part of no number and no date.
std::string MarksThatPart(Lines lines, const TextLayout& layout) {
  std::map<char, std::size_t> parts;
  std::string within;
  for (const std::string_view line : lines) {
    if (!IsDataLine(line, layout)) continue;
    std::string seen;
    for (const LineWord& word : WordsOfLine(line)) {
      if (IsNumber(word.text)) {
        within += word.text;
      } else {
        seen += MarksBesideNumbers(word.text);
      }
    }
    for (const char mark : kMarks) parts[mark] += seen.find(mark) == seen.npos ? 0 : 1;
  }
  std::string marks;
  for (const auto& [mark, count] : parts) {
    if (count >= kFewestRows && within.find(mark) == within.npos) marks += mark;
  }
  return marks;
}

TextLayout PartedBy(std::string_view separators, const TextLayout& layout) {
  TextLayout parted = layout;
  for (std::uint8_t& kind : parted.kinds) {
    if (kind == TextLayout::kSeparator) kind = TextLayout::kPlain;
  }
  for (const char c : separators) {
    parted.kinds[static_cast<unsigned char>(c)] = TextLayout::kSeparator;
  }
  parted.merge = true;
  parted.width = 0;
  parted.cuts.clear();
  return parted;
}

/// A line's fields, and which of them are numbers: "wwNwN". Without any where it has too many fields.
struct WordedLine {
  std::vector<std::string_view> fields;
  std::string shape;
};

WordedLine ReadLine(std::string_view line, const TextLayout& layout) {
  WordedLine read;
  FieldCursor cursor(line, layout);
  while (const std::optional<std::string_view> field = cursor.Next()) {
    if (read.fields.size() == kMostFields) return {};
    read.fields.push_back(*field);
    read.shape += IsNumber(*field) ? 'N' : 'w';
  }
  return read;
}

/// Rows of one shape.
struct Group {
  std::size_t first = 0;
  std::size_t last = 0;
  std::size_t rows = 0;
  WordedLine row;             ///< the first
  std::vector<bool> differs;  ///< the field is not that of the first row everywhere
  bool labels = true;         ///< what differs might label a row

  void Take(std::size_t line, WordedLine read) {
    if (rows == 0) {
      first = line;
      row = std::move(read);
      differs.assign(row.fields.size(), false);
    } else {
      for (std::size_t i = 0; i < differs.size(); ++i) {
        if (read.fields[i] == row.fields[i]) continue;
        differs[i] = true;
        constexpr std::string_view kOfSentences = ".,;!?\"'";
        labels = labels && (row.shape[i] == 'N' ||
                            kOfSentences.find(read.fields[i].back()) == kOfSentences.npos);
      }
    }
    last = line;
    ++rows;
  }
};

bool HasLetter(std::string_view text) {
  return std::ranges::any_of(text, &IsLetter);
}

/// Words name the numbers, and some number is worth a plot.
bool NamesItsNumbers(const Group& group) {
  std::size_t named = 0, labels = 0, numbers = 0;
  for (std::size_t i = 0; i < group.differs.size(); ++i) {
    const bool word = group.row.shape[i] == 'w';
    named += word && !group.differs[i] && HasLetter(group.row.fields[i]) ? 1 : 0;
    labels += word && group.differs[i] ? 1 : 0;
    numbers += !word && group.differs[i] ? 1 : 0;
  }
  return named > 0 && labels <= kMostLabels && numbers > 0 && group.labels;
}

bool GoOnEvenly(std::span<const double> values) {
  constexpr double kEven = 1e-6;  // of a step
  const double step = values.size() > 1 ? values[1] - values[0] : 0;
  for (std::size_t i = 2; i < values.size(); ++i) {
    if (std::abs(values[i] - values[i - 1] - step) > kEven * std::abs(step)) return false;
  }
  return true;
}

/// All that changes is a number that counts the rows, or goes on in even steps.
bool OnlyCounts(const Group& group, Lines lines, const TextLayout& layout) {
  std::vector<std::string_view> rows;
  for (std::size_t i = group.first; i <= group.last; ++i) {
    if (ReadLine(lines[i], layout).shape == group.row.shape) rows.push_back(lines[i]);
  }
  std::vector<ColumnGuess> columns = JudgeColumns(rows, layout);
  std::erase_if(columns, [](const ColumnGuess& column) {
    return !column.has_numbers || column.IsConstant();
  });
  return columns.empty() || (columns.size() == 1 && GoOnEvenly(columns.front().Successive()));
}

/// Hardly other lines among the rows, and not too many around them.
bool Prevails(const Group& group, Lines lines, const TextLayout& layout) {
  std::size_t all = 0, among = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!IsDataLine(lines[i], layout)) continue;
    ++all;
    among += i >= group.first && i <= group.last ? 1 : 0;
  }
  return 4 * group.rows >= 3 * among && 3 * group.rows >= all;
}

}  // namespace

std::optional<WordedTable> FindWordedTable(Lines lines, const TextLayout& layout) {
  const std::string separators = " \t" + MarksThatPart(lines, layout);
  const TextLayout parted = PartedBy(separators, layout);
  std::map<std::string, Group> groups;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!IsDataLine(lines[i], parted)) continue;
    WordedLine read = ReadLine(lines[i], parted);
    if (read.shape.find('N') == std::string::npos) continue;
    Group& group = groups[read.shape];
    group.Take(i, std::move(read));
  }
  const auto most =
      std::ranges::max_element(groups, {}, [](const auto& group) { return group.second.rows; });
  if (most == groups.end() || most->second.rows < kFewestRows) return std::nullopt;
  const Group& group = most->second;
  if (!NamesItsNumbers(group) || !Prevails(group, lines, parted) ||
      OnlyCounts(group, lines, parted)) {
    return std::nullopt;
  }
  FoundTable table;
  table.first = group.first;
  table.behind = group.last + 1;
  table.fields = static_cast<std::int32_t>(group.row.fields.size());
  table.rows = group.rows;
  table.weight = static_cast<double>(group.rows);
  return WordedTable{table, separators};
}

}  // namespace tarnwick
