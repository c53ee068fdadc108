#include "data/import/source_file.h"

#include <algorithm>
#include <charconv>

namespace tarnwick {
namespace {

constexpr std::string_view kDatabaseFile = "sqlite:";
constexpr std::size_t kCoded = 3;  // bytes of "%2F"

}  // namespace

std::string EncodedPart(std::string_view part) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string text;
  for (const char c : part) {
    if (std::string_view("%?#\n\r").find(c) == std::string_view::npos) {
      text += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    text += {'%', kHex[byte / 16], kHex[byte % 16]};
  }
  return text;
}

std::string DecodedPart(std::string_view text) {
  std::string part;
  while (!text.empty()) {
    const std::string_view code = text.substr(0, kCoded);
    unsigned byte = 0;
    const char* const end = code.data() + code.size();
    const bool coded = code.size() == kCoded && code[0] == '%' &&
                       std::from_chars(code.data() + 1, end, byte, 16).ptr == end;
    part += coded ? static_cast<char>(byte) : text.front();
    text.remove_prefix(coded ? kCoded : 1);
  }
  return part;
}

std::string SourceFile::With(const std::filesystem::path& other) const {
  return before.empty() ? other.string() : before + EncodedPart(other.string()) + after;
}

SourceFile FileOfSource(const TDSInfo& info) {
  const std::string_view named = info.DatasourceInfo;
  if (info.DataSource != DataSourceKind::Database) return {{}, std::filesystem::path(named), {}};
  if (!named.starts_with(kDatabaseFile)) return {std::string(named), {}, {}};
  const std::size_t mark = std::min(named.find('?'), named.size());
  return {std::string(kDatabaseFile),
          DecodedPart(named.substr(kDatabaseFile.size(), mark - kDatabaseFile.size())),
          std::string(named.substr(mark))};
}

}  // namespace tarnwick
