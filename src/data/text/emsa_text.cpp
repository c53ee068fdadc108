#include "data/text/emsa_text.h"

#include <algorithm>
#include <cstdint>

#include "base/error.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/text_fields.h"
#include "data/fields/text_lines.h"

namespace tarnwick {
namespace {

/// "xperchan" and "10." of "#XPERCHAN    : 10."
struct Keyword {
  std::string key;
  std::string_view value;
};

std::optional<Keyword> KeywordOf(std::string_view line) {
  line = TrimBlankBytes(line);
  if (!line.starts_with('#')) return std::nullopt;
  const std::size_t colon = std::min(line.find(':'), line.size());
  return Keyword{LowerAscii(TrimBlankBytes(line.substr(1, colon - 1))),
                 TrimBlankBytes(line.substr(std::min(colon + 1, line.size())))};
}

bool BeginsAsEmsa(std::string_view text) {
  text = TrimBlankBytes(text.substr(0, text.find_first_of("\r\n", text.find('#'))));
  const std::optional<Keyword> first = KeywordOf(text);
  return first && first->key == "format" && LowerAscii(first->value).starts_with("emsa");
}

/// How X goes on, and whether it is told so and not beside each value.
struct Scale {
  std::optional<double> offset;
  std::optional<double> step;
  bool values_only = false;

  void Take(const Keyword& keyword) {
    if (keyword.key.starts_with("offset")) offset = ParseNumber(keyword.value);
    if (keyword.key.starts_with("xperchan")) step = ParseNumber(keyword.value);
    if (keyword.key == "datatype") values_only = LowerAscii(keyword.value) == "y";
  }
  bool IsTold() const { return values_only && offset && step && *step != 0; }
};

/// Writes the values of a spectrum beside their X.
class SpectrumWriter {
 public:
  explicit SpectrumWriter(const Scale& scale) : scale_(scale) {}

  /// False where something on the line is no number.
  bool Take(std::string_view line, std::string& text) {
    constexpr std::string_view kSeparators = ", \t\r";
    while (true) {
      line.remove_prefix(std::min(line.find_first_not_of(kSeparators), line.size()));
      if (line.empty()) return true;
      const std::string_view value = line.substr(0, line.find_first_of(kSeparators));
      const std::optional<double> number = ParseNumber(value);
      if (!number) return false;
      text += ShortestText(*scale_.offset + *scale_.step * static_cast<double>(count_++)) + '\t';
      text.append(value) += '\n';
      line.remove_prefix(value.size());
    }
  }

 private:
  const Scale& scale_;
  std::int64_t count_ = 0;
};

}  // namespace

std::optional<std::string> LinesOfEmsa(std::string_view text, const std::string& name) {
  if (!BeginsAsEmsa(text)) return std::nullopt;
  std::string lines;
  Scale scale;
  std::optional<SpectrumWriter> spectrum;
  bool any = false;
  LineWalker walker(text, text.find('\n') == text.npos ? '\r' : '\n');
  for (std::int64_t number = 1; !walker.AtEnd(); ++number) {
    const std::string_view line = walker.Next();
    const std::optional<Keyword> keyword = KeywordOf(line);
    if (keyword) {
      scale.Take(*keyword);
      spectrum.reset();
    }
    if (!spectrum) {
      lines.append(line) += '\n';
    } else if (!spectrum->Take(line, lines)) {
      throw FileError("A spectrum in the format of EMSA cannot be read", name,
                      "line " + std::to_string(number));
    }
    const bool begins = keyword && keyword->key == "spectrum" && scale.IsTold();
    if (begins) spectrum.emplace(scale);
    any = any || begins;
  }
  return any ? std::optional(std::move(lines)) : std::nullopt;
}

}  // namespace tarnwick
