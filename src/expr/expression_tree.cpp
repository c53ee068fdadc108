#include "expr/expression_tree.h"

#include <algorithm>
#include <limits>
#include <string>

#include "expr/words/evaluation_procedures.h"
#include "expr/words/parser_exception.h"

namespace tarnwick {
namespace {

constexpr int kAnyPriority = std::numeric_limits<int>::min();

}  // namespace

ExpressionTree::ExpressionTree(const TExprCollection& tokens, std::string_view shown_text)
    : tokens_(tokens), shown_text_(shown_text), matching_(tokens.MatchingBrackets()) {
  nodes_.reserve(tokens.Count());
  root_ = MakeTree({0, tokens.Count()}, 0);
}

void ExpressionTree::FailAt(std::size_t token) const {
  const std::string message = "Syntax error in expression " + std::string(shown_text_);
  if (token < tokens_.Count()) throw EParserException(message, tokens_.PlaceOf(token));
  throw EParserException(message, shown_text_.size());
}

/// The node of the last word that works on the others in `range`.
int ExpressionTree::MakeTree(Range range, int depth) {
  range = WithoutExtraBrackets(range);
  if (range.IsEmpty()) FailAt(range.first);
  if (depth > kMostNested)
    throw EParserException(
        "The expression is nested more than " + std::to_string(kMostNested) + " deep",
        tokens_.PlaceOf(range.first));
  if (range.Length() == 1) {
    nodes_.push_back({range.first, 0, {}});
    return static_cast<int>(nodes_.size()) - 1;
  }
  int previous = kNone;
  std::size_t start = range.first;
  do {
    const std::size_t oper = NextOper(start, range.last, kAnyPriority);
    if (oper == range.last) FailAt(FirstComma({start, range.last}));
    TExprWord& word = tokens_[oper];
    if (word.NArgs() < 1)
      throw EParserException("Can not find operand/function", tokens_.PlaceOf(oper));
    Node node{oper, 0, {}};
    if (previous != kNone)
      node.arguments[static_cast<std::size_t>(node.argument_count++)] = previous;
    std::size_t after = oper + 1;
    if (word.IsOperator()) {
      if (previous == kNone) AddArgument(node, {range.first, oper}, depth);
    } else {
      node.argument_count = 0;
      after = AddBracketedArguments(range, oper, depth, node);
    }
    const std::size_t end = NextOper(after, range.last, word.Priority());
    AddArgument(node, {after, end}, depth);
    nodes_.push_back(node);
    previous = static_cast<int>(nodes_.size()) - 1;
    start = end;
  } while (start < range.last);
  return previous;
}

ExpressionTree::Range ExpressionTree::WithoutExtraBrackets(Range range) const {
  while (!range.IsEmpty() && matching_[range.first] == range.last - 1) {
    ++range.first;
    --range.last;
  }
  return range;
}

/// The first word from `from` on that takes arguments, has at least that priority and stands in no bracket; `last` when
/// there is none.
std::size_t ExpressionTree::NextOper(std::size_t from, std::size_t last, int least_priority) const {
  int depth = 0;
  for (std::size_t i = from; i < last; ++i) {
    const TExprWord& word = tokens_[i];
    switch (word.ResultType()) {
      case WordKind::LeftBracket:
        if (depth == 0 && matching_[i] < last) {
          i = matching_[i];
        } else {
          ++depth;
        }
        break;
      case WordKind::RightBracket:
        --depth;
        break;
      default:
        if (depth == 0 && word.NArgs() > 0 && word.Priority() >= least_priority) return i;
    }
  }
  return last;
}

/// The first comma that stands in no bracket, which nothing can be made of; else where the range begins.
std::size_t ExpressionTree::FirstComma(Range range) const {
  for (std::size_t i = range.first; i < range.last; ++i) {
    if (tokens_[i].ResultType() == WordKind::Comma) return i;
    if (tokens_[i].ResultType() == WordKind::LeftBracket) i = matching_[i];
  }
  return range.first;
}

/// Adds what stands in the bracket after a function, piece by piece; answers where the rest begins.
std::size_t ExpressionTree::AddBracketedArguments(Range range, std::size_t function, int depth,
                                                  Node& node) {
  const std::size_t open = function + 1;
  if (open >= range.last || tokens_[open].ResultType() != WordKind::LeftBracket) FailAt(function);
  const std::size_t close = matching_[open];
  if (close >= range.last) FailAt(open);
  std::size_t piece = open + 1;
  for (std::size_t i = piece; i <= close; ++i) {
    const WordKind kind = tokens_[i].ResultType();
    if (kind == WordKind::LeftBracket) {
      i = matching_[i];
    } else if (kind == WordKind::Comma || i == close) {
      if (piece == i) FailAt(i);
      AddArgument(node, {piece, i}, depth);
      piece = i + 1;
    }
  }
  return close + 1;
}

/// Adds the operand in `range`, when there is one.
void ExpressionTree::AddArgument(Node& node, Range range, int depth) {
  if (range.IsEmpty()) return;
  if (node.argument_count == kMaxArgs) FailAt(range.first);
  const int argument = MakeTree(range, depth + 1);
  node.arguments[static_cast<std::size_t>(node.argument_count++)] = argument;
}

bool ExpressionTree::IsOperand(const Node& node) const {
  return tokens_[node.token].Func() == &LoadOperand;
}

double* ExpressionTree::OperandStorage(const Node& node) const {
  double* const storage = tokens_[node.token].AsPointer();
  if (storage == nullptr) FailAt(node.token);
  return storage;
}

const ExpressionTree::Node& ExpressionTree::LinkedArgument(const Node& node, int slot) const {
  const int argument = node.Argument(slot);
  if (argument == kNone) FailAt(node.token);
  return nodes_[static_cast<std::size_t>(argument)];
}

/// Every node that the root needs and that is no operand, arguments first. Walks with a stack of its own: sums of many terms
/// are deep trees.
std::vector<int> ExpressionTree::EvaluationOrder() const {
  struct Visit {
    int node;
    int next_slot;
  };
  std::vector<int> order;
  std::vector<Visit> open = {{root_, 0}};
  while (!open.empty()) {
    Visit& visit = open.back();
    const Node& node = nodes_[static_cast<std::size_t>(visit.node)];
    if (visit.next_slot < tokens_[node.token].NArgs()) {
      const Node& argument = LinkedArgument(node, visit.next_slot);
      const int index = node.Argument(visit.next_slot++);
      if (!IsOperand(argument)) open.push_back({index, 0});
    } else {
      order.push_back(visit.node);
      open.pop_back();
    }
  }
  return order;
}

std::vector<TExprRec> ExpressionTree::MakeLinkedList() const {
  const std::vector<int> order = EvaluationOrder();
  std::vector<TExprRec> chain(order.size());
  std::vector<std::size_t> position(nodes_.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    const Node& node = nodes_[static_cast<std::size_t>(order[i])];
    TExprWord& word = tokens_[node.token];
    TExprRec& rec = chain[i];
    position[static_cast<std::size_t>(order[i])] = i;
    rec.Word = &word;
    rec.Oper = word.Func();
    if (rec.Oper == nullptr) FailAt(node.token);
    if (i > 0) chain[i - 1].Next = &rec;
    if (IsOperand(node)) rec.Args[0] = OperandStorage(node);
    for (int slot = 0; slot < word.NArgs(); ++slot) {
      const Node& argument = LinkedArgument(node, slot);
      rec.Args[static_cast<std::size_t>(slot)] =
          IsOperand(argument) ? OperandStorage(argument)
                              : &chain[position[static_cast<std::size_t>(node.Argument(slot))]].Res;
    }
  }
  return chain;
}

}  // namespace tarnwick
