#include "data/column_caption.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "base/text_encoding.h"
#include "expr/expression_parts.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLongest = 48;  // bytes of an expression that is read as a title

/// Whether a name could be taken for several words of a formula. What stands in its own brackets could not.
bool IsCompound(std::string_view name) {
  int depth = 0;
  for (const char c : name) {
    if (c == '(' || c == '[') ++depth;
    if (c == ')' || c == ']') --depth;
    if (depth == 0 && std::string_view(" +-*/^,<>=").find(c) != std::string_view::npos) return true;
  }
  return false;
}

struct Columns {
  std::string x;
  std::string y;
};

/// An expression as a title.
class Caption {
 public:
  Caption(std::string_view expression, Columns columns)
      : expression_(expression), columns_(std::move(columns)), parts_(PartsOf(expression)) {}

  std::string Text() const {
    std::string text;
    std::size_t at = 0;
    for (std::size_t i = 0; i < parts_.size(); ++i) {
      const std::string* const column = ColumnAt(i);
      if (column == nullptr) continue;
      text += expression_.substr(at, parts_[i].place - at);
      text += NeedsBrackets(i, *column) ? "(" + *column + ")" : *column;
      at = parts_[i].place + parts_[i].length;
    }
    return text + expression_.substr(at);
  }

 private:
  std::string PartText(std::size_t i) const {
    return LowerAscii(expression_.substr(parts_[i].place, parts_[i].length));
  }

  const std::string* ColumnAt(std::size_t i) const {
    if (parts_[i].kind != PartKind::Name) return nullptr;
    const std::string name = PartText(i);
    return name == "x" ? &columns_.x : name == "y" ? &columns_.y : nullptr;
  }

  bool EndsOperand(std::size_t i) const {
    return i >= parts_.size() || parts_[i].kind == PartKind::Bracket || PartText(i) == ",";
  }

  /// Not as the only operand of all, of a bracket or an argument; a sign before a name with a unit is read rightly.
  bool NeedsBrackets(std::size_t i, const std::string& column) const {
    if (!IsCompound(column)) return false;
    const bool ends = EndsOperand(i + 1);
    const bool begins = i == 0 || EndsOperand(i - 1);
    const bool signed_alone = i == 1 && PartText(0) == "-" && !IsCompound(NameWithoutUnit(column));
    return !ends || (!begins && !signed_alone);
  }

  std::string expression_;
  Columns columns_;
  std::vector<ExpressionPart> parts_;
};

std::string Computed(const std::string& expression, const std::string& column, Columns columns) {
  const std::string_view text = TrimBlanks(expression);
  return text.size() > kLongest ? column + " (computed)" : Caption(text, std::move(columns)).Text();
}

}  // namespace

bool IsRawColumn(const std::string& expression, std::string_view name) {
  const std::string_view text = TrimBlanks(expression);
  return text.empty() || LowerAscii(text) == name;
}

std::string CaptionOfX(const TDSInfo& info) {
  if (IsRawColumn(info.XColExpr, "x")) return info.XDataColumn;
  return Computed(info.XColExpr, info.XDataColumn, {info.XDataColumn, info.YDataColumn});
}

std::string CaptionOfY(const TDSInfo& info) {
  return CaptionOfY(info, info.YDataColumn);
}

std::string CaptionOfY(const TDSInfo& info, const std::string& y_name) {
  if (IsRawColumn(info.YColExpr, "y")) return y_name;
  return Computed(info.YColExpr, y_name, {info.XDataColumn, y_name});
}

std::string_view NameWithoutUnit(std::string_view name) {
  name = TrimBlanks(name);
  if (!name.ends_with(')') && !name.ends_with(']')) return name;
  const std::size_t open = name.rfind(name.ends_with(')') ? '(' : '[');
  return open == name.npos || open == 0 ? name : TrimBlanks(name.substr(0, open));
}

}  // namespace tarnwick
