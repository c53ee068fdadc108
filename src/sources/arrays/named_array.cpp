#include "sources/arrays/named_array.h"

#include <charconv>

namespace tarnwick {
namespace {

std::vector<std::string_view> Fields(std::string_view line) {
  std::vector<std::string_view> fields;
  for (std::size_t tab = line.find('\t'); tab != line.npos; tab = line.find('\t')) {
    fields.push_back(line.substr(0, tab));
    line.remove_prefix(tab + 1);
  }
  fields.push_back(line);
  return fields;
}

/// A length beyond all that can be read is the greatest there is.
std::int64_t Length(std::string_view text) {
  std::int64_t length = INT64_MAX;
  std::from_chars(text.data(), text.data() + text.size(), length);
  return length;
}

NamedArray ArrayOf(const std::vector<std::string_view>& fields) {
  NamedArray array;
  array.path = fields[1];
  array.member = fields[2];
  array.numbers = fields[3] == "numbers";
  for (std::size_t i = 4; i + 1 < fields.size(); i += 2) {
    array.lengths.push_back(Length(fields[i]));
    array.axes.emplace_back(fields[i + 1]);
  }
  return array;
}

}  // namespace

std::string NamedArray::FullPath() const {
  return path + (member.empty() ? "" : '/' + member) + (line.empty() ? "" : '[' + line + ']');
}

std::string NamedArray::Attribute(const std::string& name) const {
  const auto found = attributes.find(name);
  return found == attributes.end() ? std::string() : found->second;
}

std::vector<NamedArray> ParseArrayList(std::string_view list) {
  std::vector<NamedArray> arrays;
  for (std::size_t end = list.find('\n'); end != list.npos; end = list.find('\n')) {
    const std::vector<std::string_view> fields = Fields(list.substr(0, end));
    if (fields[0] == "array" && fields.size() >= 4) arrays.push_back(ArrayOf(fields));
    if (fields[0] == "attribute" && fields.size() == 3 && !arrays.empty()) {
      arrays.back().attributes.emplace(fields[1], fields[2]);
    }
    list.remove_prefix(end + 1);
  }
  return arrays;
}

}  // namespace tarnwick
