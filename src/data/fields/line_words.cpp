#include "data/fields/line_words.h"

#include <algorithm>

#include "base/text_encoding.h"
#include "data/fields/text_fields.h"

namespace tarnwick {

std::vector<LineWord> WordsOfLine(std::string_view line) {
  const auto is_ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  const bool bytes = std::ranges::all_of(line, is_ascii) || !IsValidUtf8(line);
  const auto begins = [bytes](char c) {
    return bytes || (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  };
  std::vector<LineWord> words;
  std::int32_t place = 0;
  bool within = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const bool blank = IsBlankByte(line[i]);
    if (!blank && !within) words.push_back({place, place, line.substr(i, 0)});
    place += begins(line[i]) ? 1 : 0;
    within = !blank;
    if (blank) continue;
    LineWord& word = words.back();
    word.end = place;
    word.text = {word.text.data(), word.text.size() + 1};
  }
  return words;
}

std::vector<std::string_view> PartsBetween(std::string_view line, std::string_view mark) {
  std::vector<std::string_view> parts;
  for (std::size_t end = line.find(mark); end != line.npos; end = line.find(mark)) {
    parts.push_back(line.substr(0, end));
    line.remove_prefix(end + mark.size());
  }
  parts.push_back(line);
  return parts;
}

}  // namespace tarnwick
