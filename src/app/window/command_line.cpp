#include "app/window/command_line.h"

#include <algorithm>
#include <optional>
#include <system_error>

#include "base/text_encoding.h"

namespace tarnwick {
namespace {

constexpr char kQuote = '"';

/// The piece after the last quote, taken off the end of `rest`; quotes at either end of it are dropped. Nothing when no
/// word is left.
std::optional<std::string> TakeLastWord(std::string& rest) {
  while (!rest.empty()) {
    const std::size_t quote = rest.rfind(kQuote);
    const std::string word = quote == std::string::npos ? rest : rest.substr(quote + 1);
    rest.erase(quote == std::string::npos ? 0 : quote);
    if (!word.empty()) return word;
  }
  return std::nullopt;
}

}  // namespace

std::string JoinWords(const std::vector<std::string>& words) {
  std::string joined;
  for (const std::string& word : words) joined += kQuote + word;
  const std::size_t first = joined.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return joined.substr(first, joined.find_last_not_of(' ') - first + 1);
}

CommandLine ParseCommandLine(const std::string& joined) {
  CommandLine line;
  std::string rest = joined;
  while (const auto word = TakeLastWord(rest)) {
    if (word->front() == '-') {
      line.options.push_back(LowerAscii(word->substr(1)));
      continue;
    }
    std::error_code ignored;  // what cannot be looked at is no file to open
    if (std::filesystem::is_regular_file(*word, ignored)) line.files.emplace_back(*word);
  }
  const bool dropped =
      std::find(line.options.begin(), line.options.end(), "no") != line.options.end();
  if (dropped) line.options.clear();
  std::reverse(line.options.begin(), line.options.end());
  return line;
}

}  // namespace tarnwick
