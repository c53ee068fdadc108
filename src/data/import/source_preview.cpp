#include "data/import/source_preview.h"

#include <algorithm>
#include <fstream>
#include <string_view>
#include <utility>

#include "base/error.h"
#include "base/text_encoding.h"
#include "data/fields/text_fields.h"
#include "data/fields/text_lines.h"
#include "data/packed/packing.h"
#include "data/text/text_supplier.h"

namespace tarnwick {
namespace {

constexpr std::size_t kHeadBytes = std::size_t{1} << 20;
constexpr std::int64_t kHeadersBefore = 10;  // that are shown before the first row of many

std::vector<std::string> Cut(std::string_view line, const TextLayout& layout, std::size_t most) {
  std::vector<std::string> fields;
  FieldCursor cursor(line, layout);
  std::string buffer;
  while (fields.size() < most) {
    const std::optional<std::string_view> field = cursor.Next();
    if (!field) break;
    fields.push_back(Utf8FromText(FieldText(*field, layout, buffer)));
  }
  return fields;
}

/// What a line is by its number alone; a row where that tells nothing.
LineRole RoleOfNumber(std::int64_t number, const TDSInfo& info) {
  const bool upper = info.StackedNames && number + 1 == info.NamesLine;
  if (number == info.NamesLine || upper) return LineRole::Names;
  if (number == info.UnitsLine) return LineRole::Units;
  return number <= info.FileHasHeaders ? LineRole::Header : LineRole::Row;
}

LineRole RoleOf(std::int64_t number, std::string_view line, const TDSInfo& info,
                const TextLayout& layout) {
  const LineRole role = RoleOfNumber(number, info);
  if (role != LineRole::Row) return role;
  if (info.TableLines > 0 && number > std::int64_t{info.FileHasHeaders} + info.TableLines) {
    return LineRole::Behind;
  }
  if (TrimBlankBytes(line).empty()) return LineRole::Blank;
  return IsDataLine(line, layout) ? LineRole::Row : LineRole::Comment;
}

}  // namespace

SourcePreview PreviewText(const std::shared_ptr<const TextSource>& text, const TDSInfo& info,
                          std::size_t lines, std::size_t columns) {
  SourcePreview preview;
  TTxtSupplier supplier(info, text);
  preview.columns = supplier.ColumnNames();
  preview.columns.resize(std::min(preview.columns.size(), columns));

  const TextLayout layout(info, text->LineEnd());
  const bool far = info.FileHasHeaders > static_cast<std::int64_t>(lines) - kHeadersBefore;
  const std::int64_t first = far ? info.FileHasHeaders - kHeadersBefore + 1 : 1;
  LineWalker walker(text->Text(), text->LineEnd());
  for (std::int64_t number = 1; !walker.AtEnd() && preview.lines.size() < lines; ++number) {
    const std::string_view line = walker.Next();
    LineRole role = RoleOf(number, line, info, layout);
    if (role == LineRole::Header && info.NamesLine == 0 &&
        Cut(line, layout, columns) == preview.columns) {
      role = LineRole::Names;  // found by rule
    }
    const bool names = role == LineRole::Names || role == LineRole::Units;
    if (number < std::max<std::int64_t>(first, 1) && !names) continue;
    preview.lines.push_back(
        {number, role,
         IsCut(role) ? Cut(line, layout, columns) : std::vector<std::string>{Utf8FromText(line)},
         std::string(line)});
  }
  return preview;
}

SourcePreview PreviewRows(TDataSupplier& supplier, const TDSInfo& info, std::size_t rows,
                          std::size_t columns) {
  SourcePreview preview;
  preview.columns = supplier.ColumnNames();
  preview.columns.resize(std::min(preview.columns.size(), columns));
  for (supplier.FirstRow(); !supplier.AtEnd() && preview.lines.size() < rows; supplier.NextRow()) {
    PreviewedLine line;
    line.number = supplier.Line();
    line.role = RoleOfNumber(line.number, info);
    std::string whole;
    for (std::size_t i = 0; i < preview.columns.size(); ++i) {
      std::string text = supplier.TextAt(static_cast<std::int32_t>(i));
      if (!text.empty()) whole += (whole.empty() ? "" : "  ") + text;
      line.fields.push_back(std::move(text));
    }
    if (!IsCut(line.role)) line.fields = {std::move(whole)};
    preview.lines.push_back(std::move(line));
  }
  return preview;
}

std::shared_ptr<const TextSource> OpenHeadOfText(const std::filesystem::path& path,
                                                 Progress& progress) {
  std::string head(kHeadBytes, '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(head.data(), static_cast<std::streamsize>(head.size()));
  head.resize(static_cast<std::size_t>(file.gcount()));
  // What cannot be read, or is packed, is told or unpacked as everywhere.
  if (head.empty() || PackingOf(head) != nullptr) {
    return std::make_shared<const TextSource>(OpenSourceFile(path, progress), path.string());
  }
  if (head.size() == kHeadBytes) {
    const std::size_t end = head.find_last_of("\r\n");
    if (end != head.npos) head.resize(end + 1);
  }
  return std::make_shared<const TextSource>(std::move(head), path.string());
}

}  // namespace tarnwick
