#include "import/swept_text.h"

#include <algorithm>
#include <stdexcept>

#include "import/table_texts.h"

namespace tarnwick::testing {
namespace {

/// "7", "n", "n+2", "9-n", never below zero.
int ValueOf(std::string_view words, int n) {
  int sum = 0;
  int sign = 1;
  std::size_t at = 0;
  while (at < words.size()) {
    const std::size_t end = std::min(words.find_first_of("+-", at), words.size());
    const std::string word(words.substr(at, end - at));
    sum += sign * (word == "n" ? n : std::stoi(word));
    if (end < words.size()) sign = words[end] == '-' ? -1 : 1;
    at = end + 1;
  }
  return std::max(sum, 0);
}

std::string Repeated(std::string_view text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) {
    for (const char c : text) {
      all += c == '#' ? std::to_string(i) : std::string(1, c == '~' ? '\n' : c);
    }
  }
  return all;
}

std::string Filled(std::string_view line, int n) {
  std::string filled;
  std::size_t at = 0;
  for (std::size_t open = line.find('{'); open != line.npos; open = line.find('{', at)) {
    if (line.substr(open + 1, 1) == "{") {
      filled += line.substr(at, open + 1 - at);
      at = open + 2;
      continue;
    }
    const std::size_t close = line.find('}', open);
    if (close == line.npos) throw std::invalid_argument("no } in " + std::string(line));
    const std::string_view inner = line.substr(open + 1, close - open - 1);
    const std::size_t star = inner.find('*');
    filled += line.substr(at, open - at);
    if (inner == "/") {
      filled += '\n';
    } else if (star == inner.npos) {
      filled += std::to_string(ValueOf(inner, n));
    } else {
      filled += Repeated(inner.substr(star + 1), ValueOf(inner.substr(0, star), n));
    }
    at = close + 1;
  }
  return filled + std::string(line.substr(at));
}

}  // namespace

SweptText MakeSwept(std::string_view form, int n) {
  SweptText made;
  for (std::size_t at = 0; at < form.size();) {
    const std::size_t end = std::min(form.find('\n', at), form.size());
    const std::string_view line = form.substr(at, end - at);
    at = end + 1;
    const bool many = line.size() > 1 && (line[0] == '*' || line[0] == '%') &&
                      (line[1] == 'n' || (line[1] >= '0' && line[1] <= '9'));
    const std::size_t blank = many ? line.find(' ') : line.npos;
    if (blank == line.npos) {
      made.text += Filled(line, n) + '\n';
      continue;
    }
    const int count = ValueOf(line.substr(1, blank - 1), n);
    made.text += Rows(count, Filled(line.substr(blank + 1), n));
    if (line[0] == '*') made.rows += count;
  }
  return made;
}

}  // namespace tarnwick::testing
