#include <charconv>
#include <cmath>
#include <map>
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

constexpr std::size_t kMostStringBytes = std::size_t{512} << 20;

void ReadPart(const ZipParts& parts, const std::string& part, XmlHandler& handler) {
  ReadXml(
      part, [&](const auto& take) { parts.Read(part, take); }, handler);
}

std::optional<std::int64_t> WholeNumber(std::string_view text) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

bool IsTrue(std::string_view text) {
  return text == "1" || text == "true";
}

/// Where a part's relation leads, from the part on.
std::string Target(const std::string& from, std::string_view target) {
  if (target.starts_with('/')) return std::string(target.substr(1));
  std::string folder = from.substr(0, from.rfind('/') + 1);
  while (target.starts_with("../") || target.starts_with("./")) {
    if (target.starts_with("../") && !folder.empty()) {
      folder.resize(folder.rfind('/', folder.size() - 2) + 1);  // npos + 1 is 0
    }
    target.remove_prefix(target.find('/') + 1);
  }
  return folder + std::string(target);
}

struct Relation {
  std::string type;  ///< the last word of it
  std::string target;
};

/// The relations of a part, by their ids.
class Relations final : public XmlHandler {
 public:
  Relations(const ZipParts& parts, std::string part) : part_(std::move(part)) {
    const std::size_t name = part_.rfind('/') + 1;
    const std::string file = part_.substr(0, name) + "_rels/" + part_.substr(name) + ".rels";
    if (parts.Has(file)) ReadPart(parts, file, *this);
  }

  void Start(std::string_view name, const XmlAttributes& attributes) override {
    if (name != "Relationship") return;
    const std::string_view type = attributes["Type"];
    by_id_[std::string(attributes["Id"])] = {std::string(type.substr(type.rfind('/') + 1)),
                                             Target(part_, attributes["Target"])};
  }
  void End(std::string_view) override {}
  void Text(std::string_view) override {}

  const Relation* ById(std::string_view id) const {
    const auto found = by_id_.find(std::string(id));
    return found == by_id_.end() ? nullptr : &found->second;
  }
  /// The first part of a type; empty where there is none.
  std::string OfType(std::string_view type) const {
    for (const auto& [id, relation] : by_id_) {
      if (relation.type == type) return relation.target;
    }
    return {};
  }

 private:
  std::string part_;
  std::map<std::string, Relation> by_id_;
};

/// The list of sheets.
class SheetList final : public XmlHandler {
 public:
  explicit SheetList(const Relations& relations) : relations_(relations) {}

  void Start(std::string_view name, const XmlAttributes& attributes) override {
    if (name == "workbookPr" && IsTrue(attributes["date1904"])) zero = DayZero::In1904;
    if (name != "sheet") return;
    const Relation* const relation = relations_.ById(attributes["id"]);
    if (relation == nullptr || relation->type != "worksheet") return;
    const std::string_view state = attributes["state"];
    sheets.push_back({std::string(attributes["name"]), !state.empty() && state != "visible"});
    parts.push_back(relation->target);
  }
  void End(std::string_view) override {}
  void Text(std::string_view) override {}

  std::vector<SheetName> sheets;
  std::vector<std::string> parts;  ///< of the sheets
  DayZero zero = DayZero::In1900;

 private:
  const Relations& relations_;
};

/// The texts that cells share.
class SharedStrings final : public XmlHandler {
 public:
  void Start(std::string_view name, const XmlAttributes&) override {
    if (name == "si") texts.emplace_back();
    if (name == "rPh") reading_aid_ = true;
    in_text_ = name == "t" && !reading_aid_;
  }
  void End(std::string_view name) override {
    if (name == "rPh") reading_aid_ = false;
    in_text_ = false;
  }
  void Text(std::string_view text) override {
    if (!in_text_ || texts.empty()) return;
    bytes_ += text.size();
    if (bytes_ > kMostStringBytes)
      throw Error("The texts of the workbook are too large to be read");
    texts.back() += text;
  }

  std::vector<std::string> texts;

 private:
  bool in_text_ = false;
  bool reading_aid_ = false;
  std::size_t bytes_ = 0;
};

/// The looks of numbers, by the number of a cell's style.
class Styles final : public XmlHandler {
 public:
  void Start(std::string_view name, const XmlAttributes& attributes) override {
    if (name == "numFmt") {
      codes_[std::string(attributes["numFmtId"])] = LookOfCode(attributes["formatCode"]);
    }
    in_cells_ = in_cells_ || name == "cellXfs";
    if (name != "xf" || !in_cells_) return;
    const std::string format(attributes["numFmtId"]);
    const auto own = codes_.find(format);
    const std::optional<std::int64_t> number = WholeNumber(format);
    looks.push_back(own != codes_.end()
                        ? own->second
                        : LookOfBuiltIn(static_cast<int>(number && *number < 1000 ? *number : 0)));
  }
  void End(std::string_view name) override { in_cells_ = in_cells_ && name != "cellXfs"; }
  void Text(std::string_view) override {}

  std::vector<NumberLook> looks;

 private:
  std::map<std::string, NumberLook> codes_;
  bool in_cells_ = false;
};

/// "BC12" taken apart; nothing for what is no place.
struct CellPlace {
  std::int64_t row = 0;
  std::int64_t column = 0;
};
std::optional<CellPlace> PlaceOf(std::string_view text) {
  CellPlace place;
  std::size_t i = 0;
  for (; i < text.size() && text[i] >= 'A' && text[i] <= 'Z' && i < 8; ++i) {
    place.column = place.column * 26 + (text[i] - 'A' + 1);
  }
  const std::optional<std::int64_t> row = WholeNumber(text.substr(i));
  if (i == 0 || !row) return std::nullopt;
  place.row = *row;
  return place;
}

/// What all sheets share.
struct XlsxTables {
  SharedStrings strings;
  Styles styles;
  DayZero zero = DayZero::In1900;
};

/// The cells of one sheet.
class XlsxCells final : public XmlHandler {
 public:
  XlsxCells(const XlsxTables& tables, SheetText& sheet) : tables_(tables), sheet_(sheet) {}

  void Start(std::string_view name, const XmlAttributes& attributes) override {
    if (name == "row") {
      row_ = WholeNumber(attributes["r"]).value_or(row_ + 1);
      column_ = 0;
    } else if (name == "c") {
      BeginCell(attributes);
    } else if (name == "rPh") {
      reading_aid_ = true;
    }
    in_value_ = in_cell_ && !reading_aid_ && (name == "v" || name == "t");
  }
  void End(std::string_view name) override {
    in_value_ = false;
    if (name == "rPh") reading_aid_ = false;
    if (name != "c") return;
    if (!value_.empty()) Hand();
    in_cell_ = false;
  }
  void Text(std::string_view text) override {
    if (in_value_) value_ += text;
  }

 private:
  void BeginCell(const XmlAttributes& attributes) {
    ++column_;
    if (const std::optional<CellPlace> place = PlaceOf(attributes["r"])) {
      row_ = place->row;
      column_ = place->column;
    }
    type_ = attributes["t"];
    const std::optional<std::int64_t> style = WholeNumber(attributes["s"]);
    const std::vector<NumberLook>& looks = tables_.styles.looks;
    const bool known = style && *style >= 0 && static_cast<std::size_t>(*style) < looks.size();
    look_ = known ? looks[static_cast<std::size_t>(*style)] : NumberLook::Number;
    value_.clear();
    in_cell_ = true;
  }

  void Hand() {
    if (type_ == "s") {
      const std::optional<std::int64_t> index = WholeNumber(value_);
      const std::vector<std::string>& texts = tables_.strings.texts;
      if (!index || *index < 0 || static_cast<std::size_t>(*index) >= texts.size()) {
        throw Error("The workbook is damaged: a cell of row " + std::to_string(row_) +
                    " names a text that is not there");
      }
      const std::string& text = texts[static_cast<std::size_t>(*index)];
      if (!text.empty()) sheet_.AddText(row_, column_, text);
    } else if (type_ == "e") {
      sheet_.AddError(row_, column_);
    } else if (type_ == "str" || type_ == "inlineStr") {
      sheet_.AddText(row_, column_, value_);
    } else if (type_ == "d" || type_ == "b") {
      sheet_.AddNumber(row_, column_, value_);
    } else {
      HandNumber();
    }
  }

  void HandNumber() {
    const std::optional<double> number = ParseNumber(value_);
    if (!number) {
      throw Error("The workbook is damaged: a cell of row " + std::to_string(row_) +
                  " holds no number where one should be");
    }
    if (look_ == NumberLook::Number) {
      sheet_.AddNumber(row_, column_, TrimBlanks(value_));
    } else if (look_ == NumberLook::Percent) {
      sheet_.AddNumber(row_, column_, PercentText(*number));
    } else {
      sheet_.AddNumber(row_, column_, DayText(*number, look_, tables_.zero));
    }
  }

  const XlsxTables& tables_;
  SheetText& sheet_;
  std::int64_t row_ = 0;
  std::int64_t column_ = 0;
  std::string type_;
  std::string value_;
  NumberLook look_ = NumberLook::Number;
  bool in_cell_ = false;
  bool in_value_ = false;
  bool reading_aid_ = false;
};

class Xlsx final : public Workbook {
 public:
  explicit Xlsx(const ZipParts& parts) : parts_(parts) {
    const std::string book = Relations(parts, "").OfType("officeDocument");
    if (book.empty()) throw Error("The workbook is damaged: it does not name its main part");
    if (!book.ends_with(".xml")) {
      throw Error("Workbooks of the binary kind cannot be read; save it as .xlsx");
    }
    const Relations relations(parts, book);
    SheetList list(relations);
    ReadPart(parts, book, list);
    sheets_ = std::move(list.sheets);
    sheet_parts_ = std::move(list.parts);
    tables_.zero = list.zero;
    const auto read = [&](std::string_view type, XmlHandler& handler) {
      const std::string part = relations.OfType(type);
      if (!part.empty() && parts.Has(part)) ReadPart(parts, part, handler);
    };
    read("sharedStrings", tables_.strings);
    read("styles", tables_.styles);
  }

  const std::vector<SheetName>& Sheets() const override { return sheets_; }
  void Read(std::string_view only, const CellRange& range, const SheetTaker& take) override {
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
      if (!only.empty() && sheets_[i].name != only) continue;
      SheetText text(range);
      XlsxCells cells(tables_, text);
      ReadPart(parts_, sheet_parts_[i], cells);
      take(i, sheets_[i], std::move(text));
    }
  }

 private:
  const ZipParts& parts_;
  std::vector<SheetName> sheets_;
  std::vector<std::string> sheet_parts_;
  XlsxTables tables_;
};

}  // namespace

std::unique_ptr<Workbook> OpenXlsx(const ZipParts& parts) {
  return std::make_unique<Xlsx>(parts);
}

}  // namespace tarnwick
