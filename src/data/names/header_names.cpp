#include "data/names/header_names.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/field_kind.h"
#include "data/names/legend_names.h"
#include "data/names/names_line.h"
#include "data/names/told_names.h"

namespace tarnwick {
namespace {

using Lines = std::span<const std::string_view>;

/// "DEPT.M      : 1  DEPTH" in the part of a well log that begins with "~C".
ListedNames CurveNames(Lines above, const TextLayout& layout) {
  ListedNames listed;
  bool among_curves = false;
  for (const std::string_view whole : above) {
    const std::string_view line = TrimBlankBytes(whole);
    if (line.starts_with('~')) among_curves = line.starts_with("~C") || line.starts_with("~c");
    const std::size_t point = line.find('.');
    if (!among_curves || line.starts_with('~') || line.starts_with('#') || point == line.npos) {
      continue;
    }
    const std::string_view unit =
        line.substr(point + 1, line.find_first_of(" \t:", point) - point - 1);
    listed.names.push_back(NameText(line.substr(0, point), layout));
    listed.units.push_back(UnitText(NameText(unit, layout)));
  }
  return listed;
}

/// "@attribute mass real" above "@data".
ListedNames AttributeNames(Lines above, const TextLayout& layout) {
  constexpr std::string_view kAttribute = "@attribute";
  ListedNames listed;
  for (const std::string_view whole : above) {
    const std::string_view line = TrimBlankBytes(whole);
    if (LowerAscii(line.substr(0, kAttribute.size())) != kAttribute) continue;
    const std::string_view rest = TrimBlankBytes(line.substr(kAttribute.size()));
    const bool quoted = rest.starts_with('\'') || rest.starts_with('"');
    const std::string_view ends = quoted ? rest.substr(0, 1) : " \t{";
    const std::size_t begin = quoted ? 1 : 0;
    const std::size_t end = rest.find_first_of(ends, begin);
    listed.names.push_back(
        NameText(rest.substr(std::min(begin, rest.size()), end - begin), layout));
  }
  return listed;
}

/// "_pd_meas_counts" and others, one on each line below "loop_".
ListedNames LoopNames(Lines above, const TextLayout& layout) {
  ListedNames listed;
  for (const std::string_view whole : above) {
    const std::string_view line = TrimBlankBytes(whole);
    if (LowerAscii(line) == "loop_") listed.names.clear();
    if (line.starts_with('_')) listed.names.push_back(NameText(line, layout));
  }
  return listed;
}

/// The words between "BEGIN_DATA_FORMAT" and "END_DATA_FORMAT".
ListedNames FormatNames(Lines above, const TextLayout& layout) {
  ListedNames listed;
  bool within = false;
  for (const std::string_view whole : above) {
    std::string_view line = TrimBlankBytes(whole);
    within = within && !line.starts_with("END_DATA_FORMAT");
    while (within && !line.empty()) {
      const std::string_view word = line.substr(0, line.find_first_of(" \t"));
      listed.names.push_back(NameText(word, layout));
      line = TrimBlankBytes(line.substr(word.size()));
    }
    within = within || line.starts_with("BEGIN_DATA_FORMAT");
  }
  return listed;
}

/// A setting's name without what joins its words, and its value: "x-Unit;Hz;".
std::pair<std::string, std::string_view> KeyAndValue(std::string_view line) {
  const std::size_t end = line.find_first_of("=:,;\t");
  std::string key;
  for (const char c : LowerAscii(line.substr(0, end))) {
    if (IsLetter(c)) key += c;
  }
  std::string_view value =
      end == line.npos ? std::string_view() : TrimBlankBytes(line.substr(end + 1));
  while (!value.empty() && (value.back() == ',' || value.back() == ';')) value.remove_suffix(1);
  return {std::move(key), value};
}

/// What stands behind a mark of remarks and before a colon, "Flux" of "#Flux : in counts"; empty where that is none word or a
/// value follows.
std::string_view MarkedWord(std::string_view line, std::string_view& behind) {
  line = TrimBlankBytes(line);
  const std::size_t colon = line.find(':');
  if (!line.starts_with('#') || colon == line.npos) return {};
  const std::string_view word = TrimBlankBytes(line.substr(1, colon - 1));
  behind = TrimBlankBytes(line.substr(colon + 1));
  const FieldKind kind = KindOfField(behind);
  const bool value = kind != FieldKind::Empty && kind != FieldKind::Text;
  const bool one =
      !word.empty() && IsLetter(word.front()) && word.find_first_of(" \t") == word.npos;
  return one && !value ? word : std::string_view();
}

/// "#Date :", "#Flux : counts", "#end" right above the rows: a name on each line, without "#end" nothing else behind it.
ListedNames MarkedNames(Lines above, const TextLayout& layout) {
  ListedNames listed;
  bool bare = true;
  while (!above.empty() && TrimBlankBytes(above.back()).empty())
    above = above.first(above.size() - 1);
  const bool ends = !above.empty() && LowerAscii(TrimBlankBytes(above.back())) == "#end";
  if (ends) above = above.first(above.size() - 1);
  for (; !above.empty(); above = above.first(above.size() - 1)) {
    std::string_view behind;
    const std::string_view word = MarkedWord(above.back(), behind);
    if (word.empty()) break;
    bare = bare && behind.empty();
    listed.names.insert(listed.names.begin(), NameText(word, layout));
  }
  return ends || bare ? listed : ListedNames();
}

ListedNames AxisNames(Lines above, const TextLayout& layout) {
  std::string labels[2];
  std::string units[2];
  for (const std::string_view line : above) {
    const auto [key, value] = KeyAndValue(line);
    if (key.empty() || (key.front() != 'x' && key.front() != 'y')) continue;
    const std::string_view what = std::string_view(key).substr(1);
    const int axis = key.front() == 'x' ? 0 : 1;
    const bool label = what == "label" || what == "unitlabel" || what == "unittext";
    if (label) labels[axis] = NameText(value, layout);
    if (what == "unit" || what == "units") units[axis] = NameText(value, layout);
  }
  ListedNames listed;
  for (int axis = 0; axis < 2; ++axis) {
    const bool labelled = !labels[axis].empty();
    listed.names.push_back(labelled ? labels[axis] : units[axis]);
    listed.units.push_back(labelled ? UnitText(units[axis]) : std::string());
  }
  return listed;
}

}  // namespace

std::optional<ListedNames> FindHeaderNames(Lines above, const TextLayout& layout,
                                           std::int32_t columns) {
  for (const auto find : {&CurveNames, &FindLegendNames, &AttributeNames, &LoopNames, &FormatNames,
                          &MarkedNames, &FindSaidNames, &FindNamesInTurn, &AxisNames}) {
    ListedNames listed = find(above, layout);
    const auto wanted = static_cast<std::size_t>(columns);
    // Where rows end with a separator the last column is empty.
    if (find == &FormatNames && listed.names.size() > 1 && listed.names.size() + 1 == wanted) {
      listed.names.resize(wanted);
      listed.units.resize(wanted);
      return listed;
    }
    const bool all = listed.names.size() == wanted && columns > 1 &&
                     std::ranges::none_of(listed.names, &std::string::empty);
    if (!all) continue;
    listed.units.resize(listed.names.size());
    return listed;
  }
  return std::nullopt;
}

}  // namespace tarnwick
