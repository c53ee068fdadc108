#include "data/text/row_index.h"

#include <algorithm>

#include "data/fields/text_lines.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tarnwick {
namespace {

constexpr std::size_t kStride = 2048;  // bytes of text per entry of the index
constexpr std::size_t kProgressBytes = 16 << 20;

bool RowBeginsAt(std::string_view text, std::size_t at, const TextLayout& layout) {
  const char* const end = text.data() + text.size();
  for (const char* c = text.data() + at; c < end && *c != layout.line_end; ++c) {
    if (!IsBlankByte(*c)) return !layout.BeginsComment(c, end);
  }
  return false;
}

/// Line starts in text[from, to) with from > 0, found byte by byte.
std::int64_t CountSlowly(std::string_view text, std::size_t from, std::size_t to,
                         const TextLayout& layout) {
  std::int64_t rows = 0;
  for (std::size_t at = from; at < to; ++at) {
    if (text[at - 1] == layout.line_end && RowBeginsAt(text, at, layout)) ++rows;
  }
  return rows;
}

#if defined(__SSE2__)
/// A byte in all places of a word.
struct SpreadByte {
  __m128i word;
};

/// Bytes that a comment may begin with.
std::vector<SpreadByte> CommentBytes(const TextLayout& layout) {
  std::vector<SpreadByte> bytes;
  for (int byte = 0; byte < 256; ++byte) {
    const auto c = static_cast<char>(byte);
    const bool comment = (layout.Of(c) & (TextLayout::kComment | TextLayout::kLongComment)) != 0;
    if (comment) bytes.push_back({_mm_set1_epi8(c)});
  }
  return bytes;
}

/// The same, sixteen bytes at a time. A line that begins with a blank or a comment character is looked at singly; of the
/// others only the line ends need counting.
std::int64_t CountFast(std::string_view text, std::size_t& from, std::size_t to,
                       const TextLayout& layout) {
  const __m128i line_end = _mm_set1_epi8(layout.line_end);
  const std::vector<SpreadByte> marks = CommentBytes(layout);
  const __m128i blank = _mm_set1_epi8(' ');
  std::int64_t rows = 0;
  while (to - from >= 16) {
    __m128i sums = _mm_setzero_si128();
    for (int round = 0; round < 255 && to - from >= 16; ++round, from += 16) {
      const char* const at = text.data() + from;
      const __m128i before = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at - 1));
      const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
      const __m128i starts = _mm_cmpeq_epi8(before, line_end);
      const __m128i blanks = _mm_cmpeq_epi8(_mm_min_epu8(here, blank), here);
      __m128i unusual = blanks;
      for (const SpreadByte& mark : marks)
        unusual = _mm_or_si128(unusual, _mm_cmpeq_epi8(here, mark.word));
      const __m128i doubtful = _mm_and_si128(starts, unusual);
      sums = _mm_sub_epi8(sums, _mm_andnot_si128(doubtful, starts));
      auto bits = static_cast<unsigned>(_mm_movemask_epi8(doubtful));
      for (; bits != 0; bits &= bits - 1) {
        const auto offset = static_cast<std::size_t>(__builtin_ctz(bits));
        if (RowBeginsAt(text, from + offset, layout)) ++rows;
      }
    }
    const __m128i total = _mm_sad_epu8(sums, _mm_setzero_si128());
    rows += _mm_cvtsi128_si64(total) + _mm_cvtsi128_si64(_mm_unpackhi_epi64(total, total));
  }
  return rows;
}
#else
std::int64_t CountFast(std::string_view, std::size_t&, std::size_t, const TextLayout&) {
  return 0;
}
#endif

}  // namespace

RowIndex::RowIndex(std::string_view text, const TextLayout& layout)
    : text_(text), layout_(layout) {}

std::int64_t RowIndex::CountRows(std::string_view text, std::size_t from, std::size_t to,
                                 const TextLayout& layout) {
  std::int64_t rows = 0;
  if (from == 0 && to > 0) {
    rows += RowBeginsAt(text, 0, layout) ? 1 : 0;
    from = 1;
  }
  if (from >= to) return rows;
  rows += CountFast(text, from, to, layout);
  return rows + CountSlowly(text, from, to, layout);
}

bool RowIndex::Build(Progress& progress) {
  rows_ = 0;
  rows_before_.clear();
  rows_before_.reserve(text_.size() / kStride + 1);
  for (std::size_t from = 0; from < text_.size(); from += kStride) {
    if (from % kProgressBytes == 0 && !progress.Advance(static_cast<std::int64_t>(from))) {
      rows_before_.clear();
      rows_ = 0;
      return false;
    }
    rows_before_.push_back(rows_);
    rows_ += CountRows(text_, from, std::min(from + kStride, text_.size()), layout_);
  }
  return true;
}

const char* RowIndex::RowBegin(std::int64_t row) const {
  const auto behind = std::upper_bound(rows_before_.begin(), rows_before_.end(), row);
  const auto stride = static_cast<std::size_t>(behind - rows_before_.begin()) - 1;
  std::int64_t left = row - rows_before_[stride];
  const char* const end = text_.data() + text_.size();
  const char* at = text_.data() + stride * kStride;
  if (stride > 0 && at[-1] != layout_.line_end) at = FindLineEnd(at, end, layout_.line_end) + 1;
  for (;; at = FindLineEnd(at, end, layout_.line_end) + 1) {
    if (!RowBeginsAt(text_, static_cast<std::size_t>(at - text_.data()), layout_)) continue;
    if (left-- == 0) return at;
  }
}

}  // namespace tarnwick
