#include "data/text/touchstone_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/line_words.h"
#include "data/fields/text_fields.h"
#include "data/fields/text_lines.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostPorts = 100;

/// What the line of options says; what it leaves out is as the format has it.
struct Options {
  std::string_view unit = "GHz";
  char parameter = 'S';
  std::string format = "ma";
};

std::string_view WithoutRemark(std::string_view line) {
  return TrimBlankBytes(line.substr(0, line.find('!')));
}

/// "# GHz S MA R 50"; nothing for any other line.
std::optional<Options> OptionsOf(std::string_view line) {
  constexpr std::array<std::string_view, 4> kUnits = {"Hz", "kHz", "MHz", "GHz"};
  line = WithoutRemark(line);
  if (!line.starts_with('#')) return std::nullopt;
  Options options;
  bool has_unit = false, has_format = false;
  for (const LineWord& word : WordsOfLine(line.substr(1))) {
    const std::string lower = LowerAscii(word.text);
    const auto unit = std::ranges::find_if(
        kUnits, [&lower](std::string_view known) { return LowerAscii(known) == lower; });
    if (unit != kUnits.end()) {
      options.unit = *unit;
      has_unit = true;
    } else if (lower == "ma" || lower == "db" || lower == "ri") {
      options.format = lower;
      has_format = true;
    } else if (lower.size() == 1 && std::string_view("syzgh").find(lower[0]) != std::string::npos) {
      options.parameter = static_cast<char>(lower[0] - 'a' + 'A');
    } else if (lower != "r" && !ParseNumber(word.text)) {
      return std::nullopt;
    }
  }
  return has_unit && has_format ? std::optional(options) : std::nullopt;
}

/// The line of options is the first that is no remark.
std::optional<Options> FindOptions(std::string_view text, char line_end) {
  LineWalker walker(text, line_end);
  while (!walker.AtEnd()) {
    const std::string_view line = walker.Next();
    if (!WithoutRemark(line).empty()) return OptionsOf(line);
  }
  return std::nullopt;
}

/// How many ports a record of so many values is of; 0 where it is of none.
std::size_t PortsOf(std::size_t values) {
  std::size_t ports = 1;
  while (ports < kMostPorts && 1 + 2 * ports * ports < values) ++ports;
  return 1 + 2 * ports * ports == values ? ports : 0;
}

void AppendPair(const Options& options, const std::string& of, std::string& names) {
  if (options.format == "ri") names += "\tRe " + of + "\tIm " + of;
  if (options.format == "ma") names += "\t|" + of + "|\targ " + of + " [deg]";
  if (options.format == "db") names += "\t" + of + " [dB]\targ " + of + " [deg]";
}

std::string NamesFor(const Options& options, std::size_t ports) {
  constexpr std::size_t kMostWithoutComma = 9;
  std::string names = "! freq [" + std::string(options.unit) + "]";
  for (std::size_t row = 1; row <= ports; ++row) {
    for (std::size_t column = 1; column <= ports; ++column) {
      // Two ports stand column by column, more of them row by row.
      const std::size_t to = ports == 2 ? column : row;
      const std::size_t from = ports == 2 ? row : column;
      const std::string of = std::string(1, options.parameter) + std::to_string(to) +
                             (ports > kMostWithoutComma ? "." : "") + std::to_string(from);
      AppendPair(options, of, names);
    }
  }
  return names + '\n';
}

/// Puts records together: each begins with an odd number of values and goes on with even ones.
class RecordWriter {
 public:
  /// False where the text is none of records alike.
  bool Take(std::string_view line, const Options& options, std::string& text) {
    const std::vector<LineWord> words = WordsOfLine(line);
    const auto is_number = [](const LineWord& word) { return ParseNumber(word.text).has_value(); };
    if (!std::ranges::all_of(words, is_number)) return false;
    if (words.size() % 2 != 0) {
      if (!End(options, text)) return false;
    } else if (record_.empty()) {
      return false;
    }
    for (const LineWord& word : words) {
      record_ += (record_.empty() ? "" : "\t") + std::string(word.text);
    }
    values_ += words.size();
    return true;
  }

  /// Writes the record that is whole now, below names if it is the first.
  bool End(const Options& options, std::string& text) {
    if (record_.empty()) return true;
    const std::size_t ports = PortsOf(values_);
    if (ports == 0 || (ports_ != 0 && ports != ports_)) return false;
    if (ports_ == 0) text += NamesFor(options, ports);
    ports_ = ports;
    text += record_ + '\n';
    record_.clear();
    values_ = 0;
    return true;
  }

  bool IsWithin() const { return ports_ != 0 || !record_.empty(); }
  bool HasAny() const { return ports_ != 0; }

 private:
  std::string record_;
  std::size_t values_ = 0;
  std::size_t ports_ = 0;  // of all records
};

}  // namespace

std::optional<std::string> LinesOfTouchstone(std::string_view text) {
  const char line_end = text.find('\n') == text.npos ? '\r' : '\n';
  const std::optional<Options> options = FindOptions(text, line_end);
  if (!options) return std::nullopt;
  std::string lines;
  RecordWriter records;
  LineWalker walker(text, line_end);
  while (!walker.AtEnd()) {
    const std::string_view line = walker.Next();
    const std::string_view values = WithoutRemark(line);
    if (values.empty() || values.starts_with('#')) {
      // A remark among the lines of a record stands ahead of it then.
      if (!records.IsWithin() || !TrimBlankBytes(line).empty()) lines.append(line) += '\n';
    } else if (!records.Take(values, *options, lines)) {
      return std::nullopt;
    }
  }
  const bool whole = records.End(*options, lines) && records.HasAny();
  return whole ? std::optional(std::move(lines)) : std::nullopt;
}

}  // namespace tarnwick
