#include "data/fields/declared_missing.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/missing_values.h"

namespace tarnwick {
namespace {

using Texts = std::vector<std::string>;

constexpr std::string_view kGaps = " \t\r,;:=()[]\"'<>";

/// Words and numbers of a line in small letters.
Texts TokensOf(std::string_view line) {
  Texts tokens;
  for (;;) {
    line.remove_prefix(std::min(line.find_first_not_of(kGaps), line.size()));
    if (line.empty()) return tokens;
    const std::size_t end = std::min(line.find_first_of(kGaps), line.size());
    tokens.push_back(LowerAscii(line.substr(0, end)));
    line.remove_prefix(end);
  }
}

template <std::size_t Count>
bool IsOneOf(const std::array<std::string_view, Count>& words, std::string_view token) {
  return std::ranges::find(words, token) != words.end();
}

/// How many of the tokens from `at` on say that something stands for no value.
std::size_t KeyLength(std::span<const std::string> tokens) {
  constexpr std::array<std::string_view, 13> kKeys = {
      "missing",    "missing_value", "missing-value", "missingvalue", "nodata",
      "no_data",    "nodata_value",  "null.",         "null_value",   "fillvalue",
      "_fillvalue", "fill_value",    "undef"};
  constexpr std::array<std::string_view, 6> kFlags = {"ulod_flag",    "llod_flag", "flag_missing",
                                                      "missing_flag", "bad_flag",  "bad_value"};
  const std::string_view first = tokens.front();
  if (IsOneOf(kKeys, first) || IsOneOf(kFlags, first)) return 1;
  const std::string_view second = tokens.size() > 1 ? std::string_view(tokens[1]) : "";
  const bool two = (first == "no" && (second == "data" || second == "value")) ||
                   (first == "fill" && second == "value") || (first == "null" && second == "value");
  return two ? 2 : 0;
}

bool IsFiller(std::string_view token) {
  constexpr std::array<std::string_view, 28> kFillers = {
      "value", "values", "data",        "is",     "are",       "be",     "flag",
      "flags", "code",   "codes",       "coded",  "as",        "by",     "denoted",
      "with",  "number", "indicated",   "marked", "replaced",  "points", "represented",
      "the",   "set",    "observation", "to",     "indicator", "and",    "or"};
  return IsOneOf(kFillers, token) || token == "observations" || token == "measurements";
}

void Add(double value, Texts& found) {
  const bool apart = value < 0 || LooksMissing(value);
  const std::string text = ShortestText(value);
  if (apart && std::ranges::find(found, text) == found.end()) found.push_back(text);
}

/// "missing value: -99.99"
void ReadSentence(const Texts& tokens, Texts& found) {
  for (std::size_t at = 0; at < tokens.size(); ++at) {
    const std::size_t key = KeyLength(std::span(tokens).subspan(at));
    if (key == 0) continue;
    for (at += key; at < tokens.size(); ++at) {
      const std::optional<double> number = ParseNumber(tokens[at]);
      if (number) Add(*number, found);
      if (!number && !IsFiller(tokens[at])) break;
    }
  }
}

std::optional<double> NumberAt(const Texts& tokens, std::size_t place) {
  return place < tokens.size() ? ParseNumber(tokens[place]) : std::nullopt;
}

/// The head of format 1001: its first line tells its length and the format, the tenth how many variables there are, the twelfth
/// and those behind it one number for each.
void ReadExchangeHead(std::span<const std::string_view> lines, Texts& found) {
  constexpr double kFormat = 1001;
  constexpr std::size_t kCountLine = 9, kMissingLine = 11;
  if (lines.size() <= kMissingLine) return;
  const Texts first = TokensOf(lines.front());
  const Texts counts = TokensOf(lines[kCountLine]);
  const double variables = NumberAt(counts, 0).value_or(0);
  if (first.size() != 2 || NumberAt(first, 1) != kFormat || counts.size() != 1) return;
  double read = 0;
  for (std::size_t line = kMissingLine; line < lines.size(); ++line) {
    for (const std::string& token : TokensOf(lines[line])) {
      const std::optional<double> number = ParseNumber(token);
      if (!number || read++ >= variables) return;
      Add(*number, found);
    }
  }
}

}  // namespace

std::vector<std::string> DeclaredMissing(std::span<const std::string_view> head) {
  Texts found;
  ReadExchangeHead(head, found);
  for (const std::string_view line : head) ReadSentence(TokensOf(line), found);
  return found;
}

}  // namespace tarnwick
