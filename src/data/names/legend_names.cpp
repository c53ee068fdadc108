#include "data/names/legend_names.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/line_words.h"
#include "data/names/names_line.h"
#include "data/names/plot_markup.h"

namespace tarnwick {
namespace {

std::string_view WithinQuotes(std::string_view line) {
  const std::size_t open = line.find('"');
  const std::size_t close = line.rfind('"');
  return open < close && close != line.npos ? line.substr(open + 1, close - open - 1)
                                            : std::string_view();
}

/// What the settings of a graph say of its columns.
struct GraphHead {
  std::string x, y;
  std::map<std::int32_t, std::string> legends;  ///< of the sets, by their numbers
  std::optional<std::int32_t> target;           ///< the set to which the rows belong
  std::string type;                             ///< "xy", "xydy"
};

/// "s0", "S1", "G0.S1"
std::optional<std::int32_t> SetNumber(std::string_view word) {
  word = word.substr(word.find('.') == word.npos ? 0 : word.find('.') + 1);
  return word.starts_with('s') ? ParseInteger(word.substr(1)) : std::nullopt;
}

void TakeSetting(std::string_view line, const TextLayout& layout, GraphHead& head) {
  const std::string lower = LowerAscii(line.substr(0, line.find('"')));
  const std::vector<LineWord> words = WordsOfLine(lower);
  const bool quoted = line.find('"') != line.npos;
  if (words.size() < 2) return;
  const std::string_view key = words[0].text, what = words[1].text;
  const std::string text = WithoutPlotMarkup(NameText(WithinQuotes(line), layout));
  // "label layout para" is how it is written.
  if (key == "xaxis" && what == "label" && !text.empty()) head.x = text;
  if (key == "yaxis" && what == "label" && !text.empty()) head.y = text;
  if (key == "target") head.target = SetNumber(what);
  if (key == "type") head.type = what;
  const std::optional<std::int32_t> set = key == "legend" && what == "string" && words.size() > 2
                                              ? ParseInteger(words[2].text)
                                          : what == "legend" ? SetNumber(key)
                                                             : std::nullopt;
  if (set && quoted) head.legends[*set] = text;
}

}  // namespace

ListedNames FindLegendNames(std::span<const std::string_view> above, const TextLayout& layout) {
  GraphHead head;
  for (const std::string_view whole : above) {
    const std::string_view line = TrimBlankBytes(whole);
    if (line.starts_with('@')) TakeSetting(line.substr(1), layout, head);
  }
  ListedNames listed;
  listed.names.push_back(head.x);
  const auto add = [&](const std::string& legend) {
    listed.names.push_back(legend.empty() ? head.y : legend);
  };
  if (head.target && head.type.starts_with("xy")) {
    // Rows of other sets may follow, and the label of Y is that of all.
    const bool one_of_many = head.legends.size() > 1 && !head.y.empty();
    add(one_of_many ? head.y : head.legends[*head.target]);
    if (head.type == "xydy") listed.names.push_back(listed.names.back() + " error");
    return listed;
  }
  if (head.legends.empty()) head.legends[0] = {};
  if (head.legends.size() == 1) {
    add(head.legends.begin()->second);
    return listed;
  }
  for (const auto& [set, legend] : head.legends) listed.names.push_back(legend);
  return listed;
}

}  // namespace tarnwick
