#include "expr/block/block_program.h"

#include <algorithm>
#include <array>
#include <utility>

#include "expr/block/block_fusion.h"

namespace tarnwick {
namespace {

constexpr int kNone = BlockGraph::kNone;

/// For each node the last node that reads it, which is the outer one where the user is fused; the number of nodes where a
/// result does; kNone where nothing does.
std::vector<int> LastUses(const BlockGraph& graph, std::span<const int> results,
                          const BlockFusion* fusion) {
  const auto count = static_cast<int>(graph.Nodes().size());
  std::vector<int> last_use(Index(count), kNone);
  for (const int result : results) last_use[Index(result)] = count;
  for (int i = count; i-- > 0;) {
    if (last_use[Index(i)] == kNone) continue;
    const bool inner = fusion != nullptr && fusion->outer_of[Index(i)] != kNone;
    const int reader = inner ? fusion->outer_of[Index(i)] : i;
    for (const int argument : graph.Node(i).args) {
      if (argument != kNone)
        last_use[Index(argument)] = std::max(last_use[Index(argument)], reader);
    }
  }
  return last_use;
}

/// What an operation reads: its arguments, or those of its inner operation (a number for all second in a sum or product) and
/// the other one of its own.
std::array<int, 3> Operands(const BlockGraph& graph, int node, const BlockFusion& fusion) {
  const auto [a, b] = graph.Node(node).args;
  const int inner = fusion.inner_of[Index(node)];
  if (inner == kNone) return {a, b, kNone};
  auto [first, second] = graph.Node(inner).args;
  if (graph.Node(inner).op != BlockOp::Subtract && graph.Node(first).uniform)
    std::swap(first, second);
  return {first, second, a == inner ? b : a};
}

BlockKernel KernelFor(const BlockNode& node, BlockPlace a, BlockPlace b) {
  if (node.op == BlockOp::Call) return nullptr;
  const BlockKernels& kernels = BestBlockKernels()[static_cast<std::size_t>(node.op)];
  if (a.kind == BlockPlace::Kind::Uniform) return kernels.uniform_first;
  if (node.args[1] != kNone && b.kind == BlockPlace::Kind::Uniform) return kernels.uniform_second;
  return kernels.arrays;
}

FusedKernel FusedKernelFor(const BlockGraph& graph, int node, int inner,
                           const BlockInstruction& instruction) {
  if (inner == kNone) return nullptr;
  const auto is_uniform = [](BlockPlace place) { return place.kind == BlockPlace::Kind::Uniform; };
  FusedOperation operation;
  operation.inner = graph.Node(inner).op;
  operation.outer = graph.Node(node).op;
  operation.inner_second = graph.Node(node).args[1] == inner;
  operation.uniform_a = is_uniform(instruction.a);
  operation.uniform_b = is_uniform(instruction.b);
  operation.uniform_c = is_uniform(instruction.c);
  return BestFusedKernel(operation);
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
  const BlockFusion fusion = FuseOperations(graph, LastUses(graph, results, nullptr), results);
  const std::vector<int> last_use = LastUses(graph, results, &fusion);
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
    const bool needed = last_use[Index(i)] != kNone && fusion.outer_of[Index(i)] == kNone;
    if (!needed || node.uniform || node.kind != BlockNodeKind::Operation) continue;
    const std::array<int, 3> operands = Operands(graph, i, fusion);
    BlockInstruction instruction;
    instruction.a = place_of(operands[0]);
    instruction.b = place_of(operands[1]);
    instruction.c = place_of(operands[2]);
    instruction.fused = FusedKernelFor(graph, i, fusion.inner_of[Index(i)], instruction);
    if (instruction.fused == nullptr)
      instruction.kernel = KernelFor(node, instruction.a, instruction.b);
    instruction.func = node.func;
    // The result may take the place of an argument that is not needed any more.
    for (const int operand : operands) {
      if (operand == kNone || array_of[Index(operand)] == kNone) continue;
      if (last_use[Index(operand)] != i) continue;
      pool.GiveBack(array_of[Index(operand)]);
      array_of[Index(operand)] = kNone;  // once, however often it is read here
    }
    instruction.array = array_of[Index(i)] = pool.Take();
    listing.instructions.push_back(instruction);
  }
  listing.arrays = pool.Taken();
  for (const int result : results) listing.results.push_back(place_of(result));
  return listing;
}

}  // namespace tarnwick
