#include "fit/model/ties.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <string_view>

#include "base/ascii.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "expr/expression_parser.h"
#include "expr/words/parser_exception.h"

namespace tarnwick {
namespace {

bool BeginsName(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

/// The length of the word, number or string that `rest` begins with, or 1.
std::size_t TokenLength(std::string_view rest) {
  std::size_t at = 1;
  const auto pass = [&](auto belongs) {
    while (at < rest.size() && belongs(rest[at])) ++at;
  };
  if (rest[0] == '\'') {
    const std::size_t end = rest.find('\'', 1);
    return end == std::string_view::npos ? rest.size() : end + 1;
  }
  if (BeginsName(rest[0])) {
    pass([](char c) { return BeginsName(c) || IsDigit(c); });
  } else if (IsDigit(rest[0]) || rest[0] == '.') {
    // The exponent's letter is no name.
    pass([](char c) { return IsDigit(c) || c == '.'; });
    if (at < rest.size() && (rest[at] == 'e' || rest[at] == 'E')) ++at;
  }
  return at;
}

std::string WithNames(std::string_view text,
                      const std::function<const std::string*(std::string_view)>& by) {
  std::string replaced;
  while (!text.empty()) {
    const std::string_view token = text.substr(0, TokenLength(text));
    const std::string* const other = BeginsName(token[0]) ? by(token) : nullptr;
    if (other != nullptr) {
      replaced.append("(").append(*other).append(")");
    } else {
      replaced.append(token);
    }
    if (replaced.size() > kLongestExpression) {
      throw Error("The ties make the expression longer than " + std::to_string(kLongestExpression) +
                  " characters");
    }
    text.remove_prefix(token.size());
  }
  return replaced;
}

/// Ties, each with those within it put in.
class Ties {
 public:
  explicit Ties(const std::vector<ParameterSettings>& parameters) {
    for (const ParameterSettings& one : parameters) {
      if (!one.Tie.empty()) ties_.push_back({LowerAscii(one.Name), one.Name, one.Tie, State::Raw});
    }
  }
  bool Empty() const { return ties_.empty(); }

  std::string PutInto(std::string_view text) {
    return WithNames(text, [this](std::string_view name) { return Find(name); });
  }

 private:
  enum class State { Raw, InWork, Done };
  struct Tie {
    std::string lower;
    std::string name;
    std::string text;
    State state;
  };

  const std::string* Find(std::string_view name) {
    const auto tie = std::ranges::find(ties_, LowerAscii(std::string(name)), &Tie::lower);
    if (tie == ties_.end()) return nullptr;
    if (tie->state == State::InWork)
      throw Error("The tie of \"" + tie->name + "\" goes round in a circle.");
    if (tie->state == State::Raw) {
      tie->state = State::InWork;
      tie->text = PutInto(tie->text);
      tie->state = State::Done;
    }
    return &tie->text;
  }

  std::vector<Tie> ties_;
};

/// Evaluates ties over parameters that stand still.
class TieParser : public TExpressionParser {
 public:
  explicit TieParser(std::vector<ParameterSettings>& parameters) : ties_(parameters) {
    for (ParameterSettings& one : parameters) DefineVariable(one.Name, &one.Value);
  }
  double Value(const ParameterSettings& tied) {
    CompileExpression(ties_.PutInto(tied.Name));
    return Evaluate();
  }

 private:
  Ties ties_;
};

std::string Range(const ParameterSettings& one) {
  constexpr double kNone = std::numeric_limits<double>::infinity();
  if (one.High == kNone) return ShortestText(one.Low) + " and above";
  if (one.Low == -kNone) return ShortestText(one.High) + " and below";
  return ShortestText(one.Low) + " to " + ShortestText(one.High);
}

std::string BoundTrouble(const ParameterSettings& one) {
  const std::string name = "\"" + one.Name + "\"";
  if (!one.Tie.empty() && (one.Low > -HUGE_VAL || one.High < HUGE_VAL))
    return name + " is tied and takes no bounds.";
  if (one.Low > one.High)
    return "The bounds of " + name + " are crossed: " + ShortestText(one.Low) + " is above " +
           ShortestText(one.High) + ".";
  if (one.Low == one.High)
    return "The bounds of " + name + " leave no room: hold it fixed instead.";
  if (one.Vary && (one.Value < one.Low || one.Value > one.High))
    return name + " starts at " + ShortestText(one.Value) + ", outside its bounds (" + Range(one) +
           ").";
  return {};
}

/// `parameters` serves as memory.
std::string TieTrouble(const ParameterSettings& tied, std::vector<ParameterSettings>& parameters) {
  try {
    TieParser parser(parameters);
    parser.Value(tied);
    for (const TGeneratedVariable& unknown : parser.GeneratedVariables())
      return "\"" + tied.Name + "\" is tied to \"" + std::string(unknown.Name()) +
             "\", which is no parameter.";
  } catch (const EParserException& error) {
    return "The tie of \"" + tied.Name + "\" cannot be read: " + error.what() + ".";
  } catch (const EIntegerDivision& error) {
    return "The tie of \"" + tied.Name + "\" has no value: " + error.what() + ".";
  } catch (const Error& error) {
    return error.what();
  }
  return {};
}

}  // namespace

std::string WithTies(const std::string& text, const std::vector<ParameterSettings>& parameters) {
  Ties ties(parameters);
  return ties.Empty() ? text : ties.PutInto(text);
}

void FollowTies(std::vector<ParameterSettings>& parameters) {
  if (Ties(parameters).Empty()) return;
  TieParser parser(parameters);
  for (ParameterSettings& one : parameters) {
    if (!one.Tie.empty()) one.Value = parser.Value(one);
  }
}

std::string LimitTrouble(const std::vector<ParameterSettings>& parameters) {
  std::vector<ParameterSettings> memory = parameters;
  for (const ParameterSettings& one : parameters) {
    if (std::string trouble = BoundTrouble(one); !trouble.empty()) return trouble;
    if (one.Tie.empty()) continue;
    if (std::string trouble = TieTrouble(one, memory); !trouble.empty()) return trouble;
  }
  return {};
}

}  // namespace tarnwick
