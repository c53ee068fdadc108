#include "data/names/listed_names.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "base/ascii.h"
#include "base/text_encoding.h"
#include "data/fields/byte_description.h"
#include "data/names/counted_names.h"
#include "data/names/header_names.h"
#include "data/names/names_line.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewest = 2;  // entries that make a list

struct Entry {
  std::int32_t number = 0;
  std::string_view name;
  std::string_view unit;
};

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

/// Takes "column", "col", "field", "channel", "name", "label" or "sig" and what joins it to its number off the front.
bool TakeColumnWord(std::string_view& text) {
  constexpr std::array<std::string_view, 7> kWords = {"column", "field", "col", "channel",
                                                      "name",   "label", "sig"};
  for (const std::string_view word : kWords) {
    if (LowerAscii(text.substr(0, word.size())) != word) continue;
    const std::size_t number = text.find_first_not_of(" ._#", word.size());
    if (number == text.npos) return false;
    text.remove_prefix(number);
    return true;
  }
  return false;
}

std::optional<std::int32_t> TakeNumber(std::string_view& text) {
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || text.front() == '-') return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

/// The unit in brackets that ends a description.
std::string_view UnitAtEnd(std::string_view text) {
  const std::size_t open = text.rfind('[');
  return text.ends_with(']') && open != text.npos ? text.substr(open + 1, text.size() - open - 2)
                                                  : std::string_view();
}

std::optional<Entry> ReadEntry(std::string_view line, const TextLayout& layout) {
  std::string_view text = WithoutCommentMarks(line, layout);
  const bool comment = text.size() < TrimBlankBytes(line).size();
  const bool says_column = TakeColumnWord(text);
  if (!comment && !says_column) return std::nullopt;
  const std::optional<std::int32_t> number = TakeNumber(text);
  const std::size_t name = text.find_first_not_of(" \t:=.)-");
  if (!number || name == text.npos || name == 0 || !IsLetter(text[name])) return std::nullopt;
  text.remove_prefix(name);
  Entry entry{*number, text, UnitAtEnd(text)};
  if (!entry.unit.empty()) entry.name = TrimBlankBytes(text.substr(0, text.rfind('[')));
  const std::size_t wide = std::min(entry.name.find("  "), entry.name.find('\t'));
  entry.name = entry.name.substr(0, says_column ? wide : entry.name.find_first_of(" \t"));
  return entry;
}

bool IsIdentifier(std::string_view name) {
  return std::ranges::none_of(name, [](char c) { return c >= 'a' && c <= 'z'; });
}

bool IsList(const std::vector<Entry>& entries, std::int32_t columns) {
  if (entries.size() < kFewest || entries.front().number > 1) return false;
  const bool rises = std::ranges::adjacent_find(entries, [](const Entry& one, const Entry& next) {
                       return next.number <= one.number;
                     }) == entries.end();
  const std::int32_t last = entries.back().number + 1 - entries.front().number;
  const bool identifiers =
      std::ranges::all_of(entries, [](const Entry& entry) { return IsIdentifier(entry.name); });
  return rises && (last == columns || (last < columns && identifiers));
}

/// The names of a description that fits where the columns are cut. A column between the described ones has none.
std::optional<ListedNames> DescribedNames(std::span<const std::string_view> above,
                                          const TextLayout& layout) {
  const std::optional<ByteDescription> description = FindByteDescription(above);
  if (!description) return std::nullopt;
  ListedNames listed;
  listed.names.resize(layout.cuts.size());
  listed.units.resize(layout.cuts.size());
  for (const DescribedColumn& column : description->columns) {
    const auto cut = std::ranges::find(layout.cuts, column.begin);
    if (cut == layout.cuts.end()) return std::nullopt;
    const auto at = static_cast<std::size_t>(cut - layout.cuts.begin());
    listed.names[at] = NameText(column.name, layout);
    listed.units[at] = UnitText(NameText(column.unit, layout));
  }
  return listed;
}

}  // namespace

std::optional<ListedNames> FindListedNames(std::span<const std::string_view> above,
                                           const TextLayout& layout, std::int32_t columns) {
  if (!layout.cuts.empty()) return DescribedNames(above, layout);
  if (auto counted = FindCountedNames(above, layout, columns); !counted.empty()) {
    return ListedNames{std::move(counted),
                       std::vector<std::string>(static_cast<std::size_t>(columns))};
  }
  std::vector<Entry> entries;
  for (const std::string_view line : above) {
    if (const std::optional<Entry> entry = ReadEntry(line, layout)) entries.push_back(*entry);
  }
  if (!IsList(entries, columns)) return FindHeaderNames(above, layout, columns);
  ListedNames listed;
  listed.names.resize(static_cast<std::size_t>(columns));
  listed.units.resize(listed.names.size());
  for (const Entry& entry : entries) {
    const auto at = static_cast<std::size_t>(entry.number - entries.front().number);
    listed.names[at] = NameText(entry.name, layout);
    listed.units[at] = UnitText(NameText(entry.unit, layout));
  }
  return listed;
}

}  // namespace tarnwick
