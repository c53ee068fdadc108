#include "expr/block/block_fusion.h"

namespace tarnwick {
namespace {

constexpr int kNone = BlockGraph::kNone;

bool MayBeInner(const BlockNode& node) {
  const bool fits =
      node.op == BlockOp::Add || node.op == BlockOp::Subtract || node.op == BlockOp::Multiply;
  return fits && node.kind == BlockNodeKind::Operation && !node.uniform;
}

/// Whether the operation can compute its argument `place` along with it.
bool MayTakeInner(const BlockNode& node, std::size_t place) {
  if (MayBeInner(node)) return true;
  if (node.kind != BlockNodeKind::Operation || node.uniform || place != 0) return false;
  return node.op == BlockOp::Divide || node.op == BlockOp::Negate;
}

/// How often each node is used by nodes that are needed, and as a result.
std::vector<int> UseCounts(const BlockGraph& graph, std::span<const int> needed,
                           std::span<const int> results) {
  std::vector<int> uses(graph.Nodes().size(), 0);
  for (const int result : results) ++uses[Index(result)];
  for (std::size_t i = 0; i < uses.size(); ++i) {
    if (needed[i] == kNone) continue;
    for (const int argument : graph.Nodes()[i].args) {
      if (argument != kNone) ++uses[Index(argument)];
    }
  }
  return uses;
}

}  // namespace

BlockFusion FuseOperations(const BlockGraph& graph, std::span<const int> needed,
                           std::span<const int> results) {
  const std::size_t count = graph.Nodes().size();
  BlockFusion fusion{std::vector<int>(count, kNone), std::vector<int>(count, kNone)};
  std::vector<int> uses = UseCounts(graph, needed, results);
  for (const int result : results) uses[Index(result)] = 2;  // must be left somewhere
  for (std::size_t i = 0; i < count; ++i) {
    if (needed[i] == kNone) continue;
    const BlockNode& node = graph.Nodes()[i];
    for (std::size_t place = 0; place < node.args.size(); ++place) {
      const int argument = node.args[place];
      if (argument == kNone || !MayTakeInner(node, place)) continue;
      const bool free = MayBeInner(graph.Node(argument)) && uses[Index(argument)] == 1 &&
                        fusion.inner_of[Index(argument)] == kNone;
      if (!free) continue;
      fusion.outer_of[Index(argument)] = static_cast<int>(i);
      fusion.inner_of[i] = argument;
      break;
    }
  }
  return fusion;
}

}  // namespace tarnwick
