#include "data/guess/aligned_table.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "base/ascii.h"
#include "data/fields/field_kind.h"
#include "data/fields/line_words.h"
#include "data/fields/text_lines.h"
#include "data/names/number_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestRows = 4;
constexpr std::size_t kMostColumns = 200;
constexpr double kAgreement = 0.9;  // share of a column's fields that keep its edge, or are values

/// A column as far as the rows show it: characters [begin, end) that some field of it takes.
struct Span {
  std::int32_t begin = 0;
  std::int32_t end = 0;
  bool values = false;  ///< some field of it is a value
};

bool IsSignOf(const LineWord& sign, const LineWord& number) {
  constexpr std::int32_t kMostBlanks = 2;
  return (sign.text == "+" || sign.text == "-") && number.begin - sign.end <= kMostBlanks &&
         IsDigit(number.text.front());
}

/// Signs that stand alone and the numbers behind them as one word each.
std::vector<LineWord> WithSigns(std::vector<LineWord> words) {
  for (std::size_t i = 0; i + 1 < words.size(); ++i) {
    if (!IsSignOf(words[i], words[i + 1])) continue;
    const LineWord& number = words[i + 1];
    words[i].end = number.end;
    words[i].text = {
        words[i].text.data(),
        static_cast<std::size_t>(number.text.data() + number.text.size() - words[i].text.data())};
    words.erase(words.begin() + static_cast<std::ptrdiff_t>(i) + 1);
  }
  return words;
}

/// The spans that a word shares characters with or touches, as places [first, behind) among them.
std::pair<std::size_t, std::size_t> Touched(const LineWord& word, const std::vector<Span>& spans) {
  const auto first =
      std::ranges::find_if(spans, [&](const Span& span) { return span.end >= word.begin; });
  const auto behind =
      std::find_if(first, spans.end(), [&](const Span& span) { return span.begin > word.end; });
  return {static_cast<std::size_t>(first - spans.begin()),
          static_cast<std::size_t>(behind - spans.begin())};
}

bool Overlap(const LineWord& word, const Span& span) {
  return word.begin < span.end && span.begin < word.end;
}

/// Puts a word where it belongs; false where that is not plain. Words of text may run over what seemed several columns.
bool Place(const LineWord& word, FieldKind kind, std::vector<Span>& spans) {
  const auto [first, behind] = Touched(word, spans);
  const auto at = spans.begin() + static_cast<std::ptrdiff_t>(first);
  if (first == behind) {
    if (spans.size() == kMostColumns) return false;
    spans.insert(at, {word.begin, word.end, IsValue(kind)});
    return true;
  }
  const auto last = spans.begin() + static_cast<std::ptrdiff_t>(behind) - 1;
  const bool text =
      kind == FieldKind::Text && std::none_of(at, last + 1, [](const Span& s) { return s.values; });
  if (!text && (at != last || !Overlap(word, *at))) return false;
  *at = {std::min(at->begin, word.begin), std::max(last->end, word.end),
         at->values || IsValue(kind)};
  spans.erase(at + 1, last + 1);
  return true;
}

/// Words of one row that stand in one column.
struct PlacedField {
  std::size_t column = 0;
  std::size_t words = 0;
  std::int32_t begin = 0;
  std::int32_t end = 0;
  std::string_view first_word = {};
};

std::vector<PlacedField> FieldsOf(std::span<const LineWord> words, const std::vector<Span>& spans) {
  std::vector<PlacedField> fields;
  for (const LineWord& word : words) {
    const auto found =
        std::ranges::find_if(spans, [&](const Span& span) { return Overlap(word, span); });
    const auto column = static_cast<std::size_t>(found - spans.begin());
    if (fields.empty() || fields.back().column != column) {
      fields.push_back({column, 0, word.begin, word.end, word.text});
    }
    ++fields.back().words;
    fields.back().end = word.end;
  }
  return fields;
}

using Places = std::map<std::int32_t, std::size_t>;

bool Agree(const Places& places, std::size_t fields) {
  return std::ranges::any_of(places, [fields](const auto& place) {
    return static_cast<double>(place.second) >= kAgreement * static_cast<double>(fields);
  });
}

/// What the fields of a column have in common.
struct Edges {
  std::size_t fields = 0;
  std::size_t unread = 0;  ///< texts
  Places begins = {};
  Places ends = {};
  Places points = {};

  void Add(const PlacedField& field) {
    ++fields;
    ++begins[field.begin];
    ++ends[field.end];
    const std::size_t point = field.first_word.find('.');
    ++points[point == field.first_word.npos ? field.end
                                            : field.begin + static_cast<std::int32_t>(point)];
    unread += field.words > 1 || KindOfField(field.first_word) == FieldKind::Text ? 1 : 0;
  }
  bool AtLeft() const { return Agree(begins, fields); }
  bool AtRight() const { return Agree(ends, fields); }
  bool Aligned() const { return AtLeft() || AtRight() || Agree(points, fields); }
  bool HoldsValues() const {
    return static_cast<double>(unread) <= (1 - kAgreement) * static_cast<double>(fields);
  }
};

/// Where to cut between two columns: as far from the edge that may still grow as can be.
std::int32_t CutBetween(const Span& left, const Edges& left_edges, const Span& right,
                        const Edges& right_edges) {
  if (right_edges.AtLeft() && !right_edges.AtRight()) return right.begin;
  if (!left_edges.AtLeft() || left_edges.AtRight()) return left.end;
  return (left.end + right.begin + 1) / 2;
}

/// Whether a sign that stands alone belongs to the number behind it, or for what is missing.
enum class LoneSigns : std::uint8_t { AreMissing, AreOfNumbers };

/// Learns the columns from the rows and finds where the table ends.
class AlignedSearch {
 public:
  AlignedSearch(std::span<const std::string_view> lines, const TextLayout& by_blanks,
                LoneSigns signs)
      : lines_(lines), by_blanks_(by_blanks), signs_(signs) {}

  std::optional<AlignedTable> Run(const FoundTable& seed) {
    for (std::size_t i = seed.first; i < seed.behind; ++i) {
      if (!IsRow(i)) continue;
      if (!TakeLine(i)) return std::nullopt;
    }
    for (std::size_t i = seed.first; i < seed.behind; ++i) {
      if (IsDataLine(lines_[i], by_blanks_) && !IsRow(i) && Belongs(i)) TakeLine(i);
    }
    const std::size_t found = rows_.size();
    const std::size_t behind = ExtendDown(seed.behind);
    const std::size_t first = NamesColumns(seed) ? seed.first : ExtendUp(seed.first);
    grown_ = std::any_of(rows_.begin() + static_cast<std::ptrdiff_t>(found), rows_.end(),
                         [this](std::size_t line) { return IsRow(line); });
    if (rows_.size() < kFewestRows || spans_.size() < 2) return std::nullopt;
    return Judge(first, behind);
  }

 private:
  bool IsRow(std::size_t line) const {
    return ShapeOf(lines_[line], by_blanks_).kind == LineShape::Kind::Row;
  }

  std::vector<LineWord> WordsOf(std::size_t line) const {
    std::vector<LineWord> words = WordsOfLine(lines_[line]);
    return signs_ == LoneSigns::AreOfNumbers ? WithSigns(std::move(words)) : words;
  }

  /// False, and nothing learnt, when the line does not stand in the columns.
  bool TakeLine(std::size_t line) {
    if (lines_[line].find('\t') != std::string_view::npos) return false;
    std::vector<Span> spans = spans_;
    for (const LineWord& word : WordsOf(line)) {
      if (!Place(word, KindOfField(word.text), spans)) return false;
    }
    spans_ = std::move(spans);
    rows_.push_back(line);
    return true;
  }

  /// A line beside the table belongs to it when it stands in its columns and its texts stand among texts.
  bool Belongs(std::size_t line) const {
    for (const LineWord& word : WordsOf(line)) {
      const bool among_values = std::ranges::any_of(
          spans_, [&](const Span& span) { return span.values && Overlap(word, span); });
      if (among_values && KindOfField(word.text) == FieldKind::Text) return false;
    }
    return true;
  }

  /// The line above the table has a number for each column but the first: "  1990  1991  1992".
  bool NamesColumns(const FoundTable& seed) const {
    if (seed.first == 0) return false;
    std::vector<std::string> fields(1);
    for (const LineWord& word : WordsOfLine(lines_[seed.first - 1])) fields.emplace_back(word.text);
    return fields.size() == static_cast<std::size_t>(seed.fields) && AreNumbersAcross(fields);
  }

  bool IsBlank(std::size_t line) const { return TrimBlankBytes(lines_[line]).empty(); }

  /// Takes lines from `from` on as long as they belong, a few of text between them apart; answers how far.
  std::size_t ExtendDown(std::size_t from) {
    std::size_t reached = from;
    int strays = 0;
    for (std::size_t i = from; i < lines_.size() && !IsBlank(i); ++i) {
      if (!IsDataLine(lines_[i], by_blanks_)) continue;
      if (Belongs(i) && TakeLine(i)) {
        reached = i + 1;
        strays = 0;
      } else if (IsRow(i) || ++strays > kStrayLines) {
        break;
      }
    }
    return reached;
  }

  /// The same upwards, where names stand and end the table.
  std::size_t ExtendUp(std::size_t from) {
    std::size_t reached = from;
    for (std::size_t i = from; i > 0 && !IsBlank(i - 1); --i) {
      if (!IsDataLine(lines_[i - 1], by_blanks_)) continue;
      if (!Belongs(i - 1) || !TakeLine(i - 1)) break;
      reached = i - 1;
    }
    return reached;
  }

  std::optional<AlignedTable> Judge(std::size_t first, std::size_t behind) const {
    std::vector<Edges> edges(spans_.size());
    // A row in which counting words finds another column.
    bool shifted = signs_ == LoneSigns::AreOfNumbers;
    for (const std::size_t row : rows_) {
      std::size_t words = 0;
      for (const PlacedField& field : FieldsOf(WordsOf(row), spans_)) {
        edges[field.column].Add(field);
        shifted = shifted || field.column != words;
        words += field.words;
      }
    }
    const bool aligned = std::ranges::all_of(edges, &Edges::Aligned);
    bool values = false;
    for (std::size_t i = 0; i < spans_.size(); ++i) {
      if (spans_[i].values && !edges[i].HoldsValues()) return std::nullopt;
      values = values || spans_[i].values;
    }
    if ((!shifted && !grown_) || !aligned || !values) return std::nullopt;
    AlignedTable table{first, behind, {0}};
    for (std::size_t i = 1; i < spans_.size(); ++i) {
      table.cuts.push_back(CutBetween(spans_[i - 1], edges[i - 1], spans_[i], edges[i]));
    }
    return table;
  }

  std::span<const std::string_view> lines_;
  const TextLayout& by_blanks_;
  const LoneSigns signs_;
  std::vector<Span> spans_;
  std::vector<std::size_t> rows_;
  bool grown_ = false;  // rows beside the seed belong to the table as well
};

/// All rows have "+" or "-" alone at one place, some this and some that, and a number right behind it: "+  6 49 55.03".
bool HasLoneSigns(std::span<const std::string_view> lines, const TextLayout& by_blanks,
                  const FoundTable& seed) {
  std::vector<std::int32_t> places;
  bool plus = false, minus = false;
  std::size_t rows = 0;
  for (const std::string_view line : lines.subspan(seed.first, seed.behind - seed.first)) {
    if (ShapeOf(line, by_blanks).kind != LineShape::Kind::Row) continue;
    const std::vector<LineWord> words = WordsOfLine(line);
    std::vector<std::int32_t> here;
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
      if (!IsSignOf(words[i], words[i + 1])) continue;
      here.push_back(words[i].begin);
      (words[i].text == "+" ? plus : minus) = true;
    }
    if (here.empty() || (rows > 0 && here != places)) return false;
    places = std::move(here);
    ++rows;
  }
  return rows >= kFewestRows && plus && minus;
}

/// Most tables of words have as many on every line: they need no second look.
bool IsRagged(std::span<const std::string_view> lines, const TextLayout& by_blanks,
              const FoundTable& seed) {
  constexpr std::int32_t kMost = 1000;
  constexpr std::size_t kBeside = 4;  // lines beyond the table found
  const std::size_t from = seed.first - std::min(seed.first, kBeside);
  const std::size_t to = std::min(seed.behind + kBeside, lines.size());
  return std::ranges::any_of(lines.subspan(from, to - from), [&](std::string_view line) {
    return IsDataLine(line, by_blanks) && CountFields(line, by_blanks, kMost) != seed.fields;
  });
}

}  // namespace

std::optional<AlignedTable> FindAlignedTable(std::span<const std::string_view> lines,
                                             const TextLayout& by_blanks, const FoundTable& seed) {
  if (HasLoneSigns(lines, by_blanks, seed)) {
    return AlignedSearch(lines, by_blanks, LoneSigns::AreOfNumbers).Run(seed);
  }
  if (!IsRagged(lines, by_blanks, seed)) return std::nullopt;
  return AlignedSearch(lines, by_blanks, LoneSigns::AreMissing).Run(seed);
}

bool CutsWords(std::string_view text, const TextLayout& by_blanks,
               std::span<const std::int32_t> cuts) {
  LineWalker walker(text, by_blanks.line_end);
  while (!walker.AtEnd()) {
    const std::string_view line = walker.Next();
    const auto cut = [&](std::int32_t place) {
      const auto at = static_cast<std::size_t>(place);
      return at > 0 && at < line.size() && !IsBlankByte(line[at - 1]) && !IsBlankByte(line[at]);
    };
    const bool ascii =
        std::ranges::all_of(line, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    const bool some = ascii && std::ranges::any_of(cuts, cut);
    if (some && ShapeOf(line, by_blanks).kind == LineShape::Kind::Row) return true;
  }
  return false;
}

}  // namespace tarnwick
