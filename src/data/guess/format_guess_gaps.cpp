#include "data/guess/format_guess_gaps.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <map>

#include "data/fields/text_lines.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tarnwick {
namespace {

constexpr std::size_t kWordBytes = 64;
constexpr std::size_t kProgressBytes = 16 << 20;
constexpr double kAgreement = 0.75;  // of the rows: a table may have a closing line of its own

/// Which of 64 bytes are separators, line ends, and returns that may belong to one; the first byte is the lowest bit.
struct ByteMarks {
  std::uint64_t separators = 0;
  std::uint64_t ends = 0;
  std::uint64_t returns = 0;
};

/// Marks bytes, many at once where the machine can and there is but one separator.
class ByteMarker {
 public:
  explicit ByteMarker(const TextLayout& layout) : layout_(layout) {
    int separators = 0;
    for (int byte = 0; byte < 256; ++byte) {
      const char c = static_cast<char>(byte);
      if (!layout.IsSeparator(c)) continue;
      separator_ = c;
      ++separators;
    }
    single_ = separators == 1;
  }

  ByteMarks Mark(const char* bytes) const {
#if defined(__SSE2__)
    if (single_) return MarkFast(bytes);
#endif
    ByteMarks marks;
    for (std::size_t i = 0; i < kWordBytes; ++i) {
      const std::uint64_t bit = std::uint64_t{1} << i;
      if (layout_.IsSeparator(bytes[i])) marks.separators |= bit;
      if (bytes[i] == layout_.line_end) marks.ends |= bit;
      if (bytes[i] == '\r') marks.returns |= bit;
    }
    return marks;
  }

 private:
#if defined(__SSE2__)
  static std::uint64_t Equal(__m128i bytes, char c, std::size_t shift) {
    const int bits = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)));
    return static_cast<std::uint64_t>(static_cast<unsigned>(bits)) << shift;
  }

  ByteMarks MarkFast(const char* bytes) const {
    ByteMarks marks;
    for (std::size_t i = 0; i < kWordBytes; i += 16) {
      const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + i));
      marks.separators |= Equal(here, separator_, i);
      marks.ends |= Equal(here, layout_.line_end, i);
      marks.returns |= Equal(here, '\r', i);
    }
    return marks;
  }
#endif

  const TextLayout& layout_;
  char separator_ = 0;
  bool single_ = false;
};

/// Goes through a text word by word and counts along each line the places where an empty field shows: a separator behind
/// a separator or at either end of the line. Only lines where that count is unusual are looked at more closely: markers
/// may enclose separators.
class GapSearch {
 public:
  GapSearch(const LineCount& common, std::string_view text, const TextLayout& layout)
      : common_(common),
        usual_(common.EmptyFields()),
        text_(text),
        layout_(layout),
        marker_(layout) {}

  bool Run(Progress& progress) {
    // The last word is filled up with line ends, so that the text's end ends a line as well.
    for (std::size_t from = 0; from <= text_.size(); from += kWordBytes) {
      if (from % kProgressBytes == 0 && !progress.Advance(static_cast<std::int64_t>(from))) {
        return false;
      }
      if (from + kWordBytes <= text_.size()) {
        if (FindIn(text_.data() + from, from)) return true;
        continue;
      }
      std::array<char, kWordBytes> rest;
      rest.fill(layout_.line_end);
      std::memcpy(rest.data(), text_.data() + from, text_.size() - from);
      if (FindIn(rest.data(), from)) return true;
    }
    return false;
  }

 private:
  bool FindIn(const char* bytes, std::size_t from) {
    const ByteMarks marks = marker_.Mark(bytes);
    const std::uint64_t behind_separator = marks.separators << 1 | separator_before_;
    const std::uint64_t behind_end = marks.ends << 1 | end_before_;
    const std::uint64_t places =
        (behind_separator & (marks.separators | marks.ends | marks.returns)) |
        (behind_end & marks.separators);
    separator_before_ = marks.separators >> (kWordBytes - 1);
    end_before_ = marks.ends >> (kWordBytes - 1);
    // Nearly every word of a table without gaps ends here.
    if (places == 0 && empty_ == 0 && usual_ == 0) return false;
    return FindByLines(places, marks.ends, from);
  }

  bool FindByLines(std::uint64_t places, std::uint64_t ends, std::size_t from) {
    for (; ends != 0; ends &= ends - 1) {
      const std::uint64_t line = ends ^ (ends - 1);  // up to the line end and with it
      empty_ += std::popcount(places & line);
      places &= ~line;
      const bool unusual = empty_ != usual_;
      empty_ = 0;
      const auto end = from + static_cast<std::size_t>(std::countr_zero(ends));
      if (unusual && end <= text_.size() && IsGap(end)) return true;
    }
    empty_ += std::popcount(places);
    return false;
  }

  bool IsGap(std::size_t end) const {
    const std::size_t before = end == 0 ? text_.npos : text_.rfind(layout_.line_end, end - 1);
    const char* const begin = text_.data() + (before == text_.npos ? 0 : before + 1);
    const std::string_view line = LineView(begin, text_.data() + end);
    return IsDataLine(line, layout_) && IsGapBeside(CountLine(line, layout_), common_);
  }

  const LineCount common_;
  const std::int64_t usual_;  // empty fields of a usual row
  std::string_view text_;
  const TextLayout& layout_;
  ByteMarker marker_;
  std::uint64_t separator_before_ = 0;
  std::uint64_t end_before_ = 1;
  std::int64_t empty_ = 0;  // empty fields of the line at hand so far
};

}  // namespace

LineCount CountLine(std::string_view line, const TextLayout& layout) {
  LineCount count;
  FieldCursor cursor(line, layout);
  while (const std::optional<std::string_view> field = cursor.Next()) {
    ++count.separators;
    if (!field->empty()) ++count.fields;
  }
  count.separators = std::max<std::int64_t>(count.separators - 1, 0);
  return count;
}

bool IsGapBeside(const LineCount& line, const LineCount& common) {
  return line.separators == common.separators && line.fields != common.fields && line.fields > 0;
}

std::optional<LineCount> CommonCount(std::span<const std::string_view> rows, std::string_view text,
                                     const TextLayout& layout) {
  struct Kind {
    std::int64_t rows = 0;
    std::int64_t most_fields = 0;
  };
  std::map<std::int64_t, Kind> kinds;  // by the number of separators
  for (const std::string_view row : rows) {
    const char* const stop = FindLineEnd(row.data(), text.data() + text.size(), layout.line_end);
    const LineCount count = CountLine(LineView(row.data(), stop), layout);
    Kind& kind = kinds[count.separators];
    ++kind.rows;
    kind.most_fields = std::max(kind.most_fields, count.fields);
  }
  for (const auto& [separators, kind] : kinds) {
    const bool agreed =
        static_cast<double>(kind.rows) >= kAgreement * static_cast<double>(rows.size());
    if (agreed && separators > 0) return LineCount{separators, kind.most_fields};
  }
  return std::nullopt;
}

bool HasGapBeside(const LineCount& common, std::string_view text, const TextLayout& layout,
                  Progress& progress) {
  return GapSearch(common, text, layout).Run(progress);
}

}  // namespace tarnwick
