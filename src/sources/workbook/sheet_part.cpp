#include "sources/workbook/sheet_part.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <tuple>

#include "base/error.h"
#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr std::int64_t kLastRow = 1 << 20;
constexpr std::int64_t kLastColumn = 1 << 14;
constexpr std::size_t kMostLetters = 3;
constexpr std::size_t kMostDigits = 7;

/// One end of a range: 0 where row or column is not said.
struct Edge {
  std::int64_t row = 0;
  std::int64_t column = 0;
};

/// "$B$3", "B" or "3".
std::optional<Edge> ReadEdge(std::string_view text) {
  Edge edge;
  std::size_t letters = 0;
  std::size_t digits = 0;
  for (const char sign : text) {
    const auto c = static_cast<unsigned char>(sign);
    if (c == '$') continue;
    if (std::isalpha(c) != 0 && digits == 0 && ++letters <= kMostLetters) {
      edge.column = edge.column * 26 + (std::toupper(c) - 'A' + 1);
    } else if (std::isdigit(c) != 0 && ++digits <= kMostDigits) {
      edge.row = edge.row * 10 + (c - '0');
    } else {
      return std::nullopt;
    }
  }
  const bool row = digits == 0 || (edge.row >= 1 && edge.row <= kLastRow);
  if (letters + digits == 0 || !row || edge.column > kLastColumn) return std::nullopt;
  return edge;
}

std::optional<std::array<std::int64_t, 4>> ReadRange(std::string_view range) {
  const std::size_t colon = range.find(':');
  if (colon == range.npos) return std::nullopt;
  const std::optional<Edge> one = ReadEdge(TrimBlanks(range.substr(0, colon)));
  const std::optional<Edge> other = ReadEdge(TrimBlanks(range.substr(colon + 1)));
  if (!one || !other) return std::nullopt;
  const bool rows = one->row > 0;
  const bool columns = one->column > 0;
  if (rows != (other->row > 0) || columns != (other->column > 0)) return std::nullopt;
  std::array<std::int64_t, 4> edges = {1, kLastRow, 1, kLastColumn};
  if (rows) std::tie(edges[0], edges[1]) = std::minmax(one->row, other->row);
  if (columns) std::tie(edges[2], edges[3]) = std::minmax(one->column, other->column);
  return edges;
}

std::string Capital(std::string_view text) {
  std::string capital;
  for (const char c : text) {
    if (c != '$' && c != ' ') {
      capital += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
  }
  return capital;
}

}  // namespace

std::string SheetPart::Text() const {
  if (sheet.empty()) return range;
  // A sheet that is called as ranges are, or as sheet and range, keeps its name by the mark behind it.
  const bool open = ReadRange(sheet).has_value() || sheet.find('!') != std::string::npos;
  return range.empty() && !open ? sheet : sheet + '!' + range;
}

SheetPart ParseSheetPart(std::string_view text) {
  const std::size_t mark = text.rfind('!');
  if (mark != text.npos) {
    const std::string_view range = text.substr(mark + 1);
    return {std::string(text.substr(0, mark)), Capital(range)};
  }
  if (ReadRange(text)) return {{}, Capital(text)};
  return {std::string(text), {}};
}

std::array<std::int64_t, 4> RangeEdges(std::string_view range) {
  if (TrimBlanks(range).empty()) return {1, kLastRow, 1, kLastColumn};
  if (const auto edges = ReadRange(range)) return *edges;
  throw Error("\"" + std::string(range) +
              "\" is no range of a sheet; A1:C9, A:C and 1:9 are, to column XFD and row 1048576");
}

SheetPart TypedSheetPart(std::string_view sheet, std::string_view range) {
  RangeEdges(range);
  return {std::string(sheet), Capital(range)};
}

}  // namespace tarnwick
