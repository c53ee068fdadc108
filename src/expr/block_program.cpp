#include "expr/block_program.h"

#include <algorithm>

namespace tarnwick {
namespace {

constexpr int kNone = BlockGraph::kNone;

std::size_t Index(int number) {
  return static_cast<std::size_t>(number);
}

/// For each node the last node that uses it; the number of nodes where a result does; kNone where nothing does.
std::vector<int> LastUses(const BlockGraph& graph, std::span<const int> results) {
  const auto count = static_cast<int>(graph.Nodes().size());
  std::vector<int> last_use(Index(count), kNone);
  for (const int result : results) last_use[Index(result)] = count;
  for (int i = count; i-- > 0;) {
    if (last_use[Index(i)] == kNone) continue;
    for (const int argument : graph.Node(i).args) {
      if (argument != kNone) last_use[Index(argument)] = std::max(last_use[Index(argument)], i);
    }
  }
  return last_use;
}

BlockKernel KernelFor(const BlockNode& node, BlockPlace a, BlockPlace b) {
  if (node.op == BlockOp::Call) return nullptr;
  const BlockKernels& kernels = BestBlockKernels()[static_cast<std::size_t>(node.op)];
  if (a.kind == BlockPlace::Kind::Uniform) return kernels.uniform_first;
  if (node.args[1] != kNone && b.kind == BlockPlace::Kind::Uniform) return kernels.uniform_second;
  return kernels.arrays;
}

/// Hands out array numbers, those given back first.
class ArrayPool {
 public:
  int Take() {
    if (free_.empty()) return taken_++;
    const int array = free_.back();
    free_.pop_back();
    return array;
  }
  void GiveBack(int array) { free_.push_back(array); }
  int Taken() const { return taken_; }

 private:
  std::vector<int> free_;
  int taken_ = 0;
};

}  // namespace

BlockProgram::BlockProgram(const BlockFunction& function)
    : uniform_numbers_(function.graph.Nodes().size(), kNone),
      variables_(static_cast<int>(function.derivatives.size())) {
  BlockGraph graph = function.graph;
  std::vector<int> results = {function.value};
  value_ = List(graph, results);
  for (const int derivative : function.derivatives)
    results.push_back(derivative == kNone ? graph.Constant(0) : derivative);
  uniform_numbers_.resize(graph.Nodes().size(), kNone);
  derivatives_ = List(graph, results);
  uniform_numbers_ = {};
}

/// The uniform that holds a node, with those it is computed from before it.
BlockPlace BlockProgram::UniformPlace(const BlockGraph& graph, int node) {
  std::vector<int> open = {node};
  while (!open.empty()) {
    const int index = open.back();
    BlockNode step = graph.Node(index);
    const auto missing = std::find_if(step.args.begin(), step.args.end(), [this](int argument) {
      return argument != kNone && uniform_numbers_[Index(argument)] == kNone;
    });
    if (uniform_numbers_[Index(index)] == kNone && missing != step.args.end()) {
      open.push_back(*missing);
      continue;
    }
    open.pop_back();
    if (uniform_numbers_[Index(index)] != kNone) continue;
    for (int& argument : step.args) {
      if (argument != kNone) argument = uniform_numbers_[Index(argument)];
    }
    uniform_numbers_[Index(index)] = static_cast<int>(uniforms_.size());
    uniforms_.push_back({step});
  }
  return {BlockPlace::Kind::Uniform, uniform_numbers_[Index(node)]};
}

BlockListing BlockProgram::List(const BlockGraph& graph, std::span<const int> results) {
  const std::vector<int> last_use = LastUses(graph, results);
  std::vector<int> array_of(graph.Nodes().size(), kNone);
  const auto place_of = [&](int node) -> BlockPlace {
    if (node == kNone) return {};
    if (graph.Node(node).uniform) return UniformPlace(graph, node);
    if (graph.Node(node).kind == BlockNodeKind::Abscissa) return {};
    return {BlockPlace::Kind::Array, array_of[Index(node)]};
  };
  BlockListing listing;
  ArrayPool pool;
  for (int i = 0; i < static_cast<int>(graph.Nodes().size()); ++i) {
    const BlockNode& node = graph.Node(i);
    const bool needed = last_use[Index(i)] != kNone;
    if (!needed || node.uniform || node.kind != BlockNodeKind::Operation) continue;
    BlockInstruction instruction;
    instruction.a = place_of(node.args[0]);
    instruction.b = place_of(node.args[1]);
    instruction.kernel = KernelFor(node, instruction.a, instruction.b);
    instruction.func = node.func;
    // The result may take the place of an argument that is not needed any more.
    for (std::size_t k = 0; k < node.args.size(); ++k) {
      const int argument = node.args[k];
      const bool repeated = k == 1 && argument == node.args[0];
      if (argument == kNone || repeated || array_of[Index(argument)] == kNone) continue;
      if (last_use[Index(argument)] == i) pool.GiveBack(array_of[Index(argument)]);
    }
    instruction.array = array_of[Index(i)] = pool.Take();
    listing.instructions.push_back(instruction);
  }
  listing.arrays = pool.Taken();
  for (const int result : results) listing.results.push_back(place_of(result));
  return listing;
}

}  // namespace tarnwick
