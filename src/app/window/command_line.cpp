#include "app/window/command_line.h"

#include <algorithm>
#include <system_error>

#include "base/text_encoding.h"

namespace tarnwick {
namespace {

constexpr char kQuote = '"';
constexpr const char* kClipboardWord = "@clipboard";
constexpr const char* kDropOptions = "no";

bool NamesFile(const std::string& word) {
  std::error_code ignored;  // what cannot be looked at is no file to open
  return std::filesystem::is_regular_file(word, ignored);
}

/// A folder, a device, a pipe.
bool NamesAnotherThing(const std::string& word) {
  std::error_code ignored;  // likewise
  return std::filesystem::exists(word, ignored);
}

}  // namespace

std::string JoinWords(const std::vector<std::string>& words) {
  std::string joined;
  for (const std::string& word : words) joined += kQuote + word;
  const std::size_t first = joined.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return joined.substr(first, joined.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> SplitWords(const std::string& joined) {
  std::vector<std::string> words;
  for (std::size_t begin = 0; begin <= joined.size();) {
    const std::size_t end = std::min(joined.find(kQuote, begin), joined.size());
    if (end > begin) words.push_back(joined.substr(begin, end - begin));
    begin = end + 1;
  }
  return words;
}

CommandLine ParseWords(const std::vector<std::string>& words) {
  CommandLine line;
  for (auto word = words.rbegin(); word != words.rend(); ++word) {
    if (word->empty()) continue;
    if (word->front() == '-') {
      line.options.push_back(LowerAscii(word->substr(1)));
    } else if (NamesFile(*word)) {
      line.openings.emplace_back(std::filesystem::path(*word));
    } else if (NamesAnotherThing(*word)) {
      line.no_files.push_back(*word);
    } else if (LowerAscii(*word) == kClipboardWord) {
      line.openings.emplace_back(FromClipboard());
    } else {
      line.unknown.push_back(*word);
    }
  }
  if (std::ranges::find(line.options, kDropOptions) != line.options.end()) line.options.clear();
  std::ranges::reverse(line.options);
  std::ranges::reverse(line.unknown);
  std::ranges::reverse(line.no_files);
  return line;
}

}  // namespace tarnwick
