#include "base/word_list.h"

namespace tarnwick {

std::string Listed(std::span<const std::string> words, std::size_t most) {
  const std::size_t shown = words.size() <= most ? words.size() : most - 1;
  std::string list;
  for (std::size_t i = 0; i < shown; ++i) {
    const bool last = i > 0 && i + 1 == words.size();
    list += (i == 0 ? "" : last ? " and " : ", ") + words[i];
  }
  if (shown < words.size()) list += " and " + std::to_string(words.size() - shown) + " more";
  return list;
}

std::string Joined(std::span<const std::string> words, std::string_view between) {
  std::string text;
  for (const std::string& word : words) {
    if (&word != &words.front()) text += between;
    text += word;
  }
  return text;
}

void AddSentence(std::string& text, std::string_view sentence) {
  if (sentence.empty()) return;
  if (!text.empty()) text += ' ';
  text += sentence;
}

}  // namespace tarnwick
