#include "expr/expression_hints.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>
#include <optional>
#include <typeinfo>
#include <utility>
#include <vector>

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "base/word_list.h"
#include "expr/scanned_formula.h"
#include "expr/words/added_words.h"
#include "expr/words/parser_exception.h"

namespace tarnwick {
namespace {

struct Synonym {
  std::string_view typed;
  std::string_view meant;
};

/// Names that other programs have for words of ours.
constexpr Synonym kSynonyms[] = {
    {"asin", "arcsin"},   {"acos", "arccos"},   {"atan", "arctan"},    {"atan2", "arctan2"},
    {"asinh", "arcsinh"}, {"acosh", "arccosh"}, {"atanh", "arctanh"},  {"log", "ln\" or \"log10"},
    {"lg", "log10"},      {"tg", "tan"},        {"lgamma", "lngamma"}, {"gammaln", "lngamma"},
    {"tgamma", "gamma"},  {"jn", "besselj"},    {"square", "sqr"},     {"int", "trunc"},
};
/// So many letters more, fewer, others or exchanged are a slip; one in short words.
constexpr std::size_t kSlips = 2;
constexpr std::size_t kShortWord = 4;
constexpr std::size_t kMostWords = 1000;  // of an expression that somebody wrote

bool IsFunction(const TExprWord& word) {
  return !word.IsOperator() && word.NArgs() > 0;
}

bool Is(const TExprCollection& tokens, std::size_t i, std::string_view name) {
  return i < tokens.Count() && tokens[i].Name() == name;
}

bool IsUnknown(const TExprWord& word) {
  return typeid(word) == typeid(TGeneratedVariable) && !word.Name().empty() &&
         (word.Name()[0] == '_' || std::isalpha(static_cast<unsigned char>(word.Name()[0])) != 0);
}

/// Letters to add, leave out, change or exchange with the next one (Damerau 1964) to make one name of the other.
std::size_t SlipsBetween(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before(b.size() + 1);
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> now(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    now[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      now[j] = std::min({last[j] + 1, now[j - 1] + 1, last[j - 1] + (a[i - 1] != b[j - 1])});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        now[j] = std::min(now[j], before[j - 2] + 1);
    }
    std::swap(before, last);
    std::swap(last, now);
  }
  return last[b.size()];
}

/// The function that was probably meant; empty when none is near.
std::string MeantBy(std::string_view name, const TExpressList& words) {
  for (const Synonym& row : kSynonyms) {
    if (row.typed == name) return std::string(row.meant);
  }
  std::size_t fewest = name.size() < kShortWord ? 1 : kSlips;
  std::string meant;
  for (const TExprWord* const word : words) {
    if (!IsFunction(*word)) continue;
    const std::size_t slips = SlipsBetween(name, word->Name());
    if (slips > fewest || (slips == fewest && !meant.empty())) continue;
    fewest = slips;
    meant = word->Name();
  }
  return meant;
}

/// The text of the tokens from `first` up to `end`.
std::string TextOf(const TExprCollection& tokens, std::size_t first, std::size_t end,
                   std::string_view text) {
  const std::size_t from = tokens.PlaceOf(first);
  const std::size_t to = end < tokens.Count() ? tokens.PlaceOf(end) : text.size();
  return std::string(TrimBlanks(text.substr(from, to - from)));
}

/// One past the operand that begins at a token: signs, a name, a number, a bracket, a function with its bracket, and what
/// stands behind them (5!).
std::size_t OperandEnd(const TExprCollection& tokens, const std::vector<std::size_t>& matching,
                       std::size_t i) {
  while (Is(tokens, i, "-@") || Is(tokens, i, "+@")) ++i;
  if (i < tokens.Count() && IsFunction(tokens[i]) && Is(tokens, i + 1, "(")) ++i;
  if (i >= tokens.Count()) return tokens.Count();
  std::size_t end = Is(tokens, i, "(") ? std::min(matching[i] + 1, tokens.Count()) : i + 1;
  while (Is(tokens, end, "!") || Is(tokens, end, "%")) ++end;
  return end;
}

/// Arguments between the brackets at `open` and `close`.
int CountArguments(const TExprCollection& tokens, const std::vector<std::size_t>& matching,
                   std::size_t open) {
  if (matching[open] <= open + 1) return 0;
  int count = 1;
  for (std::size_t i = open + 1; i < std::min(matching[open], tokens.Count()); ++i) {
    if (Is(tokens, i, "(")) {
      i = matching[i];
    } else if (Is(tokens, i, ",")) {
      ++count;
    }
  }
  return count;
}

std::string HintAtFunction(const TExprCollection& tokens, const std::vector<std::size_t>& matching,
                           std::size_t i) {
  const TExprWord& word = tokens[i];
  const std::string quoted = "\"" + word.Name() + "\"";
  if (!Is(tokens, i + 1, "("))
    return quoted + " takes its argument in brackets: " + word.Name() + "(...)";
  const int given = CountArguments(tokens, matching, i + 1);
  if (given >= word.NArgs()) return {};
  return quoted + " takes " + std::to_string(word.NArgs()) +
         (word.NArgs() == 1 ? " argument" : " arguments");
}

/// Of a comma that stands in no function's bracket.
std::string HintAtComma(const TExprCollection& tokens, std::size_t i, std::string_view text) {
  const auto is_number = [&](std::size_t at) {
    return at < tokens.Count() && (IsDigit(tokens[at].Name()[0]) || tokens[at].Name()[0] == '.');
  };
  if (is_number(i - 1) && is_number(i + 1)) {
    return "numbers are written with a point: " + TextOf(tokens, i - 1, i, text) + "." +
           TextOf(tokens, i + 1, i + 2, text);
  }
  return "a comma stands between the arguments of a function only";
}

std::vector<bool> InFunctionBrackets(const TExprCollection& tokens,
                                     const std::vector<std::size_t>& matching) {
  std::vector<bool> inside(tokens.Count(), false);
  for (std::size_t i = 1; i < tokens.Count(); ++i) {
    if (!Is(tokens, i, "(")) continue;
    const bool arguments = IsFunction(tokens[i - 1]) || IsUnknown(tokens[i - 1]);
    for (std::size_t j = i; j < std::min(matching[i], tokens.Count()); ++j) inside[j] = arguments;
  }
  return inside;
}

/// What stands at a token, quoted; by its name where it could not be seen.
std::string Shown(const TExprCollection& tokens, std::size_t i, std::string_view text) {
  const char first = text[tokens.PlaceOf(i)];
  if (first == '\t') return "a tab";
  if (first == '\n' || first == '\r') return "a line break";
  return '"' + TextOf(tokens, i, i + 1, text) + '"';
}

bool IsAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}

/// Of a letter or sign that no formula has, which is a token for each of its bytes.
std::string HintAtCharacter(std::string_view text, std::size_t place) {
  const auto is_inner = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
  const std::string_view rest = text.substr(place);
  const auto end = std::find_if_not(rest.begin() + 1, rest.end(), is_inner);
  const std::string character(rest.begin(), end);
  return (character == "\u00A0" ? "a blank that does not break" : '"' + character + '"') +
         " has no meaning in a formula";
}

bool IsOperand(const TExprWord& word) {
  return word.NArgs() == 0 && word.ResultType() <= WordKind::String;
}

}  // namespace

ExpressionHint HintFor(const TExprCollection& tokens, const TExpressList& words,
                       std::string_view text) {
  if (tokens.Count() > kMostWords) return {};
  const std::vector<std::size_t> matching = tokens.MatchingBrackets();
  const std::vector<bool> inside = InFunctionBrackets(tokens, matching);
  for (std::size_t i = 0; i < tokens.Count(); ++i) {
    const TExprWord& word = tokens[i];
    if (IsUnknown(word) && Is(tokens, i + 1, "(")) {
      const std::string meant = MeantBy(word.Name(), words);
      return {"\"" + word.Name() + "\" is no function" +
                  (meant.empty() ? "" : "; did you mean \"" + meant + "\"?"),
              {}};
    }
    if (Is(tokens, i, ",") && !inside[i]) return {HintAtComma(tokens, i, text), {}};
    if (Is(tokens, i, ",") && (Is(tokens, i + 1, "-") || Is(tokens, i + 1, "+"))) {
      const std::size_t end = OperandEnd(tokens, matching, i + 2);
      return {"a sign behind a comma needs brackets: (" + TextOf(tokens, i + 1, end, text) + ")",
              {}};
    }
    if (IsFunction(word)) {
      if (std::string hint = HintAtFunction(tokens, matching, i); !hint.empty()) return {hint, {}};
    }
    if (!IsAscii(text[tokens.PlaceOf(i)]))
      return {HintAtCharacter(text, tokens.PlaceOf(i)), tokens.PlaceOf(i)};
    if (i > 0 && IsOperand(word) && (IsOperand(tokens[i - 1]) || Is(tokens, i - 1, ")")))
      return {"an operator is missing before " + Shown(tokens, i, text), tokens.PlaceOf(i)};
  }
  return {};
}

namespace {

struct Insertion {
  std::size_t place;
  char bracket;
};

/// An odd whole power keeps the sign, whichever comes first.
bool KeepsSign(const TExprCollection& tokens, std::size_t power, std::size_t end) {
  if (!Is(tokens, power, "^@") || end != power + 2) return false;
  const auto* const exponent = dynamic_cast<const TDoubleConstant*>(&tokens[power + 1]);
  return exponent != nullptr && std::fmod(exponent->Value(), 2) != 0;
}

/// The brackets that let every power come before the sign in front of it.
std::vector<Insertion> MissingBrackets(const TExprCollection& tokens, std::string_view text) {
  const std::vector<std::size_t> matching = tokens.MatchingBrackets();
  const auto is_power = [&](std::size_t i) { return Is(tokens, i, "^") || Is(tokens, i, "^@"); };
  std::vector<Insertion> missing;
  for (std::size_t i = 0; i + 1 < tokens.Count(); ++i) {
    if (!Is(tokens, i, "-@")) continue;
    const std::size_t power = OperandEnd(tokens, matching, i + 1);
    std::size_t end = power;
    while (is_power(end)) end = OperandEnd(tokens, matching, end + 1);
    if (end == power || KeepsSign(tokens, power, end)) continue;
    const std::size_t first = tokens.PlaceOf(i + 1);
    missing.push_back({first, '('});
    missing.push_back({first + TextOf(tokens, i + 1, end, text).size(), ')'});
  }
  std::ranges::stable_sort(missing, {}, &Insertion::place);
  return missing;
}

/// Resolves the signs of the tokens.
std::string SignWarning(ScannedFormula& scanned, std::string_view expression) {
  TExprCollection& tokens = scanned.Tokens();
  try {
    tokens.CheckBrackets();
    tokens.ResolveSigns(scanned.Words());
  } catch (const EParserException&) {
    return {};  // it has its own message
  }
  const std::vector<Insertion> missing = MissingBrackets(tokens, expression);
  if (missing.empty()) return {};
  std::string meant(expression);
  for (auto one = missing.rbegin(); one != missing.rend(); ++one)
    meant.insert(one->place, 1, one->bracket);
  return "A sign binds tighter than a power: -u^2 is (-u)^2. Where the power should come first, "
         "write " +
         meant;
}

/// The spellings of each name that is no word of the language, as they come.
std::map<std::string, std::vector<std::string>> Spellings(const TExprCollection& tokens,
                                                          std::string_view text) {
  std::map<std::string, std::vector<std::string>> found;
  for (std::size_t i = 0; i < tokens.Count(); ++i) {
    if (!IsUnknown(tokens[i])) continue;
    const std::string& name = tokens[i].Name();
    std::vector<std::string>& spellings = found[name];
    std::string written(text.substr(tokens.PlaceOf(i), name.size()));
    if (std::ranges::find(spellings, written) == spellings.end())
      spellings.push_back(std::move(written));
  }
  return found;
}

/// "y=a*x+b", as it stands in books.
std::string EquationWarning(const TExprCollection& tokens, std::string_view expression) {
  const bool equation = tokens.Count() > 2 && IsUnknown(tokens[0]) && Is(tokens, 1, "=");
  if (!equation) return {};
  const std::string_view right = expression.substr(expression.find('=') + 1);
  return "The sign = compares two values. For the curve \"" + std::string(TrimBlanks(right)) +
         "\" write no more than that.";
}

}  // namespace

std::vector<std::string> ExpressionWarnings(std::string_view expression) {
  std::vector<std::string> warnings;
  ScannedFormula scanned(expression);
  if (!scanned.IsWhole()) return warnings;
  for (const auto& [name, spellings] : Spellings(scanned.Tokens(), expression)) {
    if (spellings.size() > 1)
      warnings.push_back(Listed(spellings) +
                         " are one name: capitals are not told apart. Where several are meant, "
                         "rename all but one.");
  }
  if (std::string warning = SignWarning(scanned, expression); !warning.empty())
    warnings.push_back(std::move(warning));
  if (std::string warning = EquationWarning(scanned.Tokens(), expression); !warning.empty())
    warnings.push_back(std::move(warning));
  return warnings;
}

}  // namespace tarnwick
