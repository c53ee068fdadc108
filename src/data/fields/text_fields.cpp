#include "data/fields/text_fields.h"

#include <algorithm>

#include "base/text_encoding.h"
#include "data/fields/column_cuts.h"

namespace tarnwick {
namespace {

bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// Behind the marker that closes the one at `open`, or null when there is none.
const char* BehindClosing(const char* open, const char* end) {
  for (const char* at = open + 1; at < end; ++at) {
    if (*at != *open) continue;
    if (at + 1 == end || at[1] != *open) return at + 1;
    ++at;
  }
  return nullptr;
}

}  // namespace

std::string_view TrimBlankBytes(std::string_view text) {
  while (!text.empty() && IsBlankByte(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlankByte(text.back())) text.remove_suffix(1);
  return text;
}

TextLayout::TextLayout(const TDSInfo& info, char line_end_byte)
    : missing(info.MissingValues),
      merge(info.MergeSeparators),
      width(info.DivideTextByWidth ? std::max(info.ColumnWidth, 1) : 0),
      cuts(ParseColumnCuts(info.ColumnCuts).value_or(std::vector<std::int32_t>())),
      line_end(line_end_byte) {
  std::string_view marks = TrimBlankBytes(info.CommentMarks);
  while (!marks.empty()) {
    const std::string_view mark = marks.substr(0, marks.find(' '));
    std::uint8_t& kind = kinds[static_cast<unsigned char>(mark.front())];
    kind |= mark.size() == 1 ? kComment : kLongComment;
    if (mark.size() > 1) long_comments.emplace_back(mark);
    marks = TrimBlankBytes(marks.substr(mark.size()));
  }
  for (const char c : info.TextMarkers) kinds[static_cast<unsigned char>(c)] = kMarker;
  for (const char c : info.TextSeparators) kinds[static_cast<unsigned char>(c)] = kSeparator;
}

bool TextLayout::BeginsLongComment(const char* at, const char* end) const {
  const std::string_view text(at, static_cast<std::size_t>(end - at));
  return std::any_of(long_comments.begin(), long_comments.end(),
                     [text](const std::string& mark) { return text.starts_with(mark); });
}

std::string_view TextLayout::CommentMark(const char* at, const char* end) const {
  const std::string_view text(at, static_cast<std::size_t>(end - at));
  if (text.empty()) return {};
  if ((Of(*at) & kComment) != 0) return text.substr(0, 1);
  if ((Of(*at) & kLongComment) == 0) return {};
  for (const std::string& mark : long_comments) {
    if (text.starts_with(mark)) return text.substr(0, mark.size());
  }
  return {};
}

bool IsDataLine(std::string_view line, const TextLayout& layout) {
  line = TrimBlankBytes(line);
  return !line.empty() && !layout.BeginsComment(line.data(), line.data() + line.size());
}

FieldCursor::FieldCursor(std::string_view line, const TextLayout& layout)
    : layout_(layout), at_(line.data()), end_(line.data() + line.size()), more_(!line.empty()) {
  if (!layout.ByPlace()) return;
  const auto is_ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  characters_are_bytes_ = std::all_of(line.begin(), line.end(), is_ascii) || !IsValidUtf8(line);
  if (layout.cuts.empty()) return;
  PassCharacters(layout.cuts.front());
  more_ = at_ < end_;
}

std::optional<std::string_view> FieldCursor::Next() {
  if (!more_) return std::nullopt;
  if (layout_.ByPlace()) return NextByPlace();
  if (layout_.merge) {
    while (at_ < end_ && layout_.IsSeparator(*at_)) ++at_;
    if (at_ == end_) {
      more_ = false;
      return std::nullopt;
    }
  }
  const char* const begin = at_;
  const char* const field_end = FieldEnd(begin);
  more_ = field_end < end_;
  at_ = more_ ? field_end + 1 : end_;
  return std::string_view(begin, static_cast<std::size_t>(field_end - begin));
}

std::string_view FieldCursor::NextByPlace() {
  const char* const begin = at_;
  if (layout_.cuts.empty()) {
    PassCharacters(layout_.width);
    more_ = at_ < end_;
  } else if (++cut_ < layout_.cuts.size()) {
    PassCharacters(layout_.cuts[cut_] - layout_.cuts[cut_ - 1]);
    more_ = at_ < end_;
  } else {
    at_ = end_;
    more_ = false;
  }
  return {begin, static_cast<std::size_t>(at_ - begin)};
}

void FieldCursor::PassCharacters(std::int64_t count) {
  if (characters_are_bytes_) {
    at_ += std::min<std::ptrdiff_t>(count, end_ - at_);
    return;
  }
  for (; count > 0 && at_ < end_; --count) {
    do {
      ++at_;
    } while (at_ < end_ && IsContinuation(*at_));
  }
}

const char* FieldCursor::FieldEnd(const char* begin) const {
  const char* at = begin;
  while (at < end_ && IsBlankByte(*at) && !layout_.IsSeparator(*at)) ++at;
  if (at < end_ && layout_.IsMarker(*at)) {
    const char* const closed = BehindClosing(at, end_);
    if (closed != nullptr) at = closed;
  }
  while (at < end_ && !layout_.IsSeparator(*at)) ++at;
  return at;
}

std::optional<std::string_view> FieldAt(std::string_view line, const TextLayout& layout,
                                        std::int32_t column) {
  if (column < 0) return std::nullopt;
  FieldCursor cursor(line, layout);
  std::optional<std::string_view> field = cursor.Next();
  for (; field && column > 0; --column) field = cursor.Next();
  return field;
}

std::int32_t CountFields(std::string_view line, const TextLayout& layout, std::int32_t limit) {
  FieldCursor cursor(line, layout);
  std::int32_t count = 0;
  while (count < limit && cursor.Next()) ++count;
  return count;
}

std::string_view FieldText(std::string_view field, const TextLayout& layout, std::string& buffer) {
  const std::string_view text = TrimBlankBytes(field);
  if (text.size() < 2 || !layout.IsMarker(text.front())) return text;
  const char marker = text.front();
  const char* const closed = BehindClosing(text.data(), text.data() + text.size());
  if (closed != text.data() + text.size()) return text;
  const std::string_view inside = text.substr(1, text.size() - 2);
  if (inside.find(marker) == inside.npos) return TrimBlankBytes(inside);
  buffer.clear();
  for (std::size_t i = 0; i < inside.size(); ++i) {
    buffer += inside[i];
    if (inside[i] == marker) ++i;
  }
  return TrimBlankBytes(buffer);
}

std::vector<std::string> FieldTexts(std::string_view line, const TextLayout& layout) {
  std::vector<std::string> texts;
  std::string buffer;
  FieldCursor cursor(line, layout);
  while (const std::optional<std::string_view> field = cursor.Next()) {
    texts.emplace_back(FieldText(*field, layout, buffer));
  }
  return texts;
}

}  // namespace tarnwick
