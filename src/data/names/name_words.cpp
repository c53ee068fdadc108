#include "data/names/name_words.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/text_encoding.h"

namespace tarnwick {

std::vector<std::string> WordsOf(std::string_view name) {
  std::vector<std::string> words(1);
  for (const char c : LowerAscii(name)) {
    const bool part = IsLetter(c) || IsDigit(c) || static_cast<unsigned char>(c) >= 0x80;
    if (part) {
      words.back() += c;
    } else if (!words.back().empty()) {
      words.emplace_back();
    }
  }
  if (words.back().empty()) words.pop_back();
  return words;
}

std::vector<std::string> WordsBehindD(std::string_view name) {
  constexpr std::size_t kShortest = 3;
  std::vector<std::string> words = WordsOf(name);
  if (words.empty() || words.front().size() < kShortest || words.front().front() != 'd') return {};
  words.front().erase(0, 1);
  return words;
}

std::vector<std::string> WordsBesideErr(std::string_view name) {
  constexpr std::string_view kErr = "err";
  constexpr std::size_t kShortest = 6;
  std::vector<std::string> words = WordsOf(name);
  if (words.size() > 1 && words.front() == "e") {
    words.erase(words.begin());
    return words;
  }
  for (std::string& word : words) {
    if (word.size() < kShortest || (!word.ends_with(kErr) && !word.starts_with(kErr))) continue;
    word.erase(word.ends_with(kErr) ? word.size() - kErr.size() : 0, kErr.size());
    return words;
  }
  return {};
}

bool HasWord(std::string_view name, std::span<const std::string_view> known) {
  return std::ranges::any_of(WordsOf(name), [known](const std::string& word) {
    return std::ranges::find(known, word) != known.end();
  });
}

}  // namespace tarnwick
