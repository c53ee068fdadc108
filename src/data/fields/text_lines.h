// Walking over the lines of a text. Knows line ends only.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

namespace tarnwick {

/// The first line end in [at, end), or `end`.
inline const char* FindLineEnd(const char* at, const char* end, char line_end) {
  if (at == end) return end;
  const void* const found = std::memchr(at, line_end, static_cast<std::size_t>(end - at));
  return found == nullptr ? end : static_cast<const char*>(found);
}

/// The line without its end; a return before a line feed belongs to the end.
inline std::string_view LineView(const char* begin, const char* line_end_at) {
  std::string_view line(begin, static_cast<std::size_t>(line_end_at - begin));
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

/// Goes from line to line.
class LineWalker {
 public:
  LineWalker(std::string_view text, char line_end)
      : at_(text.data()), end_(text.data() + text.size()), line_end_(line_end) {}

  bool AtEnd() const { return at_ == end_; }
  const char* Position() const { return at_; }
  std::string_view Next() {
    const char* const begin = at_;
    const char* const stop = FindLineEnd(begin, end_, line_end_);
    at_ = stop == end_ ? end_ : stop + 1;
    return LineView(begin, stop);
  }

 private:
  const char* at_;
  const char* end_;
  char line_end_;
};

/// The first lines of a text, `most` of them or as many as there are.
inline std::vector<std::string_view> FirstLines(std::string_view text, std::size_t most,
                                                char line_end) {
  std::vector<std::string_view> lines;
  LineWalker walker(text, line_end);
  while (!walker.AtEnd() && lines.size() < most) lines.push_back(walker.Next());
  return lines;
}

/// The text behind its first lines.
inline std::string_view BehindLines(std::string_view text, std::size_t lines, char line_end) {
  LineWalker walker(text, line_end);
  for (; lines > 0 && !walker.AtEnd(); --lines) walker.Next();
  return text.substr(static_cast<std::size_t>(walker.Position() - text.data()));
}

}  // namespace tarnwick
