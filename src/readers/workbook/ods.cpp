#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "readers/workbook/number_look.h"
#include "readers/workbook/workbook.h"
#include "readers/workbook/xml_reader.h"
#include "readers/workbook/zip_parts.h"

namespace tarnwick {
namespace {

constexpr const char* kContent = "content.xml";
constexpr const char* kManifest = "META-INF/manifest.xml";
constexpr std::int64_t kMostRepeated = 16 << 20;  // cells that one row stands for
constexpr std::size_t kMostManifest = std::size_t{16} << 20;

/// How often a cell or a row stands there; 1 where nothing is said.
std::int64_t Repeats(std::string_view text) {
  std::int64_t count = 1;
  std::from_chars(text.data(), text.data() + text.size(), count);
  return std::clamp<std::int64_t>(count, 1, kMostRows);
}

/// "PT30H15M00.5S" in seconds; nothing where it is none.
std::optional<double> Seconds(std::string_view text) {
  if (!text.starts_with("PT")) return std::nullopt;
  text.remove_prefix(2);
  double seconds = 0;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("HMS");
    if (end == text.npos) return std::nullopt;
    const std::optional<double> number = ParseNumber(text.substr(0, end));
    if (!number) return std::nullopt;
    seconds += *number * (text[end] == 'H' ? 3600 : text[end] == 'M' ? 60 : 1);
    text.remove_prefix(end + 1);
  }
  return seconds;
}

struct OdsCell {
  std::string text;
  bool number = false;
  bool error = false;
};

/// Walks over the sheets and hands those that are wanted over.
class OdsCells final : public XmlHandler {
 public:
  OdsCells(std::string_view only, const CellRange& range, const SheetTaker& take)
      : only_(only), range_(range), take_(take) {}

  void Start(std::string_view name, const XmlAttributes& attributes) override {
    if (outside_ > 0 || IsOutside(name)) {
      ++outside_;
    } else if (name == "table") {
      if (depth_++ == 0) BeginSheet(attributes);
    } else if (!text_ || depth_ != 1) {
      return;
    } else if (name == "table-row") {
      BeginRow(attributes);
    } else if (name == "table-cell" || name == "covered-table-cell") {
      BeginCell(attributes);
    } else if (in_cell_) {
      BeginText(name, attributes);
    }
  }

  void End(std::string_view name) override {
    if (outside_ > 0) {
      --outside_;
    } else if (name == "table") {
      if (--depth_ == 0) EndSheet();
    } else if (name == "table-cell" || name == "covered-table-cell") {
      EndCell();
    } else if (name == "table-row") {
      EndRow();
    } else if (name == "p") {
      in_paragraph_ = false;
    }
  }

  void Text(std::string_view text) override {
    if (outside_ == 0 && in_cell_ && in_paragraph_ && !has_value_) cell_.text += text;
  }

  std::vector<SheetName> sheets;

 private:
  /// What is written about cells, drawn over them, or was there before.
  static bool IsOutside(std::string_view name) {
    return name == "annotation" || name == "tracked-changes" || name == "shapes" ||
           name == "frame" || name == "detective" || name == "dde-links";
  }

  void BeginSheet(const XmlAttributes& attributes) {
    sheets.push_back({std::string(attributes["name"]), false});
    row_ = 0;
    if (only_.empty() || sheets.back().name == only_) text_.emplace(range_);
  }

  void EndSheet() {
    if (text_) take_(sheets.size() - 1, sheets.back(), std::move(*text_));
    text_.reset();
  }

  void BeginRow(const XmlAttributes& attributes) {
    row_repeats_ = Repeats(attributes["number-rows-repeated"]);
    cells_.clear();
    column_ = 0;
  }

  void BeginCell(const XmlAttributes& attributes) {
    in_cell_ = true;
    cell_repeats_ = Repeats(attributes["number-columns-repeated"]);
    cell_ = {};
    has_value_ = false;
    const std::string_view type = attributes["value-type"];
    // The common program of this format marks errors of formulas by a second type.
    cell_.error = attributes.Holds("value-type", "error");
    if (type == "date") {
      TakeValue(attributes["date-value"]);
      std::ranges::replace(cell_.text, 'T', ' ');
    } else if (type == "time") {
      TakeTime(attributes["time-value"]);
    } else if (type == "boolean") {
      TakeValue(attributes["boolean-value"] == "true" ? "1" : "0");
    } else if (type == "percentage") {
      TakeValue(PercentText(ParseNumber(attributes["value"]).value_or(0)));
    } else if (type == "float" || type == "currency") {
      TakeValue(attributes["value"]);
    } else {
      has_value_ = attributes.Has("string-value");
      cell_.text = attributes["string-value"];
    }
  }

  void TakeValue(std::string_view value) {
    cell_.text = value;
    cell_.number = true;
    has_value_ = true;
  }

  void TakeTime(std::string_view value) {
    const std::optional<double> seconds = Seconds(value);
    if (!seconds) throw Error("The workbook is damaged: \"" + std::string(value) + "\" is no time");
    TakeValue(*seconds >= 0 ? DayText(*seconds / 86400, NumberLook::Duration, DayZero::In1900)
                            : ShortestText(*seconds / 86400));
  }

  void BeginText(std::string_view name, const XmlAttributes& attributes) {
    if (name == "p") {
      if (!cell_.text.empty() && !has_value_) cell_.text += ' ';
      in_paragraph_ = true;
    } else if (name == "s" || name == "tab" || name == "line-break") {
      if (!has_value_) cell_.text.append(name == "s" ? Blanks(attributes) : 1, ' ');
    }
  }

  static std::size_t Blanks(const XmlAttributes& attributes) {
    return static_cast<std::size_t>(std::min<std::int64_t>(Repeats(attributes["c"]), 1000));
  }

  void EndCell() {
    if (!in_cell_) return;
    in_cell_ = false;
    in_paragraph_ = false;
    const std::int64_t first = column_ + 1;
    column_ += cell_repeats_;
    if (TrimBlanks(cell_.text).empty() && !cell_.error) return;
    if (column_ > kMostSheetColumns) {
      throw Error("The workbook is damaged: a sheet claims " + std::to_string(column_) +
                  " columns");
    }
    for (std::int64_t column = first; column <= column_; ++column)
      cells_.emplace_back(column, cell_);
  }

  void EndRow() {
    if (!text_ || depth_ != 1) return;
    const std::int64_t first = row_ + 1;
    row_ += row_repeats_;
    if (cells_.empty()) return;
    if (row_repeats_ * static_cast<std::int64_t>(cells_.size()) > kMostRepeated) {
      throw Error("The sheet repeats one row more often than can be read; name a range of it");
    }
    for (std::int64_t row = first; row <= row_; ++row) {
      for (const auto& [column, cell] : cells_) Hand(row, column, cell);
    }
  }

  void Hand(std::int64_t row, std::int64_t column, const OdsCell& cell) {
    if (cell.error) {
      text_->AddError(row, column);
    } else if (cell.number) {
      text_->AddNumber(row, column, cell.text);
    } else {
      text_->AddText(row, column, cell.text);
    }
  }

  std::string_view only_;
  const CellRange& range_;
  const SheetTaker& take_;
  std::optional<SheetText> text_;  // of the sheet, where it is wanted
  int depth_ = 0;                  // of tables: cells may hold others
  int outside_ = 0;                // elements deep in what is no content
  std::int64_t row_ = 0;
  std::int64_t row_repeats_ = 1;
  std::int64_t column_ = 0;
  std::int64_t cell_repeats_ = 1;
  std::vector<std::pair<std::int64_t, OdsCell>> cells_;  // of the row, those that hold something
  OdsCell cell_;
  bool in_cell_ = false;
  bool in_paragraph_ = false;
  bool has_value_ = false;  // its paragraphs only show what it holds
};

class Ods final : public Workbook {
 public:
  explicit Ods(const ZipParts& parts) : parts_(parts) {
    if (parts.Has(kManifest) &&
        parts.ReadSmall(kManifest, kMostManifest).find("encryption-data") != std::string::npos) {
      throw Error("The workbook is protected by a password; save it without one");
    }
  }

  void Read(std::string_view only, const CellRange& range, const SheetTaker& take) override {
    OdsCells cells(only, range, take);
    ReadXml(
        kContent, [&](const auto& take_bytes) { parts_.Read(kContent, take_bytes); }, cells);
    sheets_ = std::move(cells.sheets);
  }
  const std::vector<SheetName>& Sheets() const override { return sheets_; }

 private:
  const ZipParts& parts_;
  std::vector<SheetName> sheets_;
};

}  // namespace

std::unique_ptr<Workbook> OpenOds(const ZipParts& parts) {
  return std::make_unique<Ods>(parts);
}

std::unique_ptr<Workbook> OpenWorkbook(const ZipParts& parts) {
  return parts.Has("[Content_Types].xml") ? OpenXlsx(parts) : OpenOds(parts);
}

}  // namespace tarnwick
