#include "data/names/worded_names.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/ascii.h"
#include "data/fields/field_kind.h"
#include "data/fields/known_units.h"
#include "data/names/names_line.h"

namespace tarnwick {
namespace {

using Fields = std::vector<std::string>;

/// "(MJD" and "TAI-UTC=" without their marks; "[a.u.]" as it stands.
std::string_view WithoutMarks(std::string_view word) {
  constexpr std::string_view kMarks = "=:,;|";
  const bool opens = word.starts_with('(') && word.find(')') == word.npos;
  const bool opens_square = word.starts_with('[') && word.find(']') == word.npos;
  if (opens || opens_square) word.remove_prefix(1);
  word.remove_prefix(std::min(word.find_first_not_of(kMarks), word.size()));
  return word.substr(0, word.find_last_not_of(kMarks) + 1);
}

/// "+" and "->" name nothing.
bool MayName(std::string_view word) {
  return std::ranges::any_of(
      word, [](char c) { return IsLetter(c) || static_cast<unsigned char>(c) >= 0x80; });
}

/// Goes along a row and names its numbers.
class WordedNames {
 public:
  explicit WordedNames(std::size_t columns) : names_(columns) {}

  void TakeWord(std::string_view word) {
    apart_ = true;
    word = WithoutMarks(word);
    if (MayName(word)) words_.emplace_back(word);
  }

  /// A label, which differs from row to row.
  void TakeLabel() {
    apart_ = true;
    words_.clear();
  }

  void TakeNumber(std::size_t column) {
    TakeUnit(words_.size() > 1);
    if (!words_.empty()) {
      name_.clear();
      for (const std::string& word : words_) name_ += (name_.empty() ? "" : " ") + word;
      names_[column] = name_;
      count_ = 1;
    } else if (!apart_ && !name_.empty()) {
      names_[column] = name_ + " " + std::to_string(++count_);
    } else {
      name_.clear();
    }
    words_.clear();
    apart_ = false;
    before_ = column;
  }

  Fields Names() && {
    TakeUnit(words_.size() == 1);
    return std::move(names_);
  }

 private:
  void TakeUnit(bool may_be) {
    if (!may_be || !before_ || names_[*before_].empty() || !IsKnownUnit(words_.front())) return;
    names_[*before_] += " [" + words_.front() + "]";
    words_.erase(words_.begin());
  }

  Fields names_;
  Fields words_;       // since the last number
  bool apart_ = true;  // something stands between the last number and the next
  std::string name_;   // of the last number, without unit
  int count_ = 0;      // numbers of that name
  std::optional<std::size_t> before_;
};

}  // namespace

Fields NamesFromWords(std::string_view row, std::span<const std::string_view> rows,
                      const TextLayout& layout, std::int32_t columns) {
  const Fields fields = NameTexts(row, layout);
  std::vector<bool> is_word(fields.size(), true);
  for (const std::string_view other : rows) {
    const Fields texts = NameTexts(other, layout);
    if (texts.size() != fields.size()) continue;
    for (std::size_t i = 0; i < texts.size(); ++i) is_word[i] = is_word[i] && texts[i] == fields[i];
  }
  WordedNames names(std::max(fields.size(), static_cast<std::size_t>(std::max(columns, 0))));
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const FieldKind kind = KindOfField(fields[i]);
    if (kind == FieldKind::Number || kind == FieldKind::Date) {
      names.TakeNumber(i);
    } else if (is_word[i]) {
      names.TakeWord(fields[i]);
    } else {
      names.TakeLabel();
    }
  }
  Fields read = std::move(names).Names();
  read.resize(static_cast<std::size_t>(std::max(columns, 0)));
  return read;
}

}  // namespace tarnwick
