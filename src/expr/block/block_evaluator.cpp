#include "expr/block/block_evaluator.h"

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <utility>

#include "expr/block/block_padding.h"
#include "expr/block/block_program.h"
#include "expr/expression_parser.h"

namespace tarnwick {
namespace {

/// Arrays begin where a cache line does, whatever their number.
constexpr std::align_val_t kAlignment{64};

struct AlignedDelete {
  void operator()(double* memory) const { ::operator delete[](memory, kAlignment); }
};
using AlignedArray = std::unique_ptr<double[], AlignedDelete>;

AlignedArray MakeArrays(std::size_t count) {
  const std::size_t length = count * kBlockLength;
  AlignedArray memory(static_cast<double*>(::operator new[](length * sizeof(double), kAlignment)));
  std::fill_n(memory.get(), length, 0.0);
  return memory;
}

}  // namespace

/// The arrays of one evaluator: intermediate results, a padded copy of X, results that are the same for all points.
struct BlockEvaluator::Workspace {
  explicit Workspace(const BlockProgram& program)
      : uniforms(program.Uniforms().size()),
        derivatives(Index(program.Variables())),
        arrays(Index(std::max(program.Value().arrays, program.Derivatives().arrays))),
        memory(MakeArrays(arrays.size() + 1 + 1 + derivatives.size())) {
    for (std::size_t i = 0; i < arrays.size(); ++i) arrays[i] = memory.get() + i * kBlockLength;
    padded_x = memory.get() + arrays.size() * kBlockLength;
    broadcast = padded_x + kBlockLength;
  }

  /// Lets an array lie elsewhere for a while.
  class Redirection {
   public:
    Redirection(double*& array, double* elsewhere) : array_(array), own_(array) {
      array = elsewhere;
    }
    ~Redirection() { array_ = own_; }
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;

   private:
    double*& array_;
    double* own_;
  };

  std::vector<double> uniforms;
  std::vector<const double*> derivatives;
  std::vector<double*> arrays;
  AlignedArray memory;
  double* padded_x = nullptr;
  double* broadcast = nullptr;  // one array for the value, one per derivative
  const double* x = nullptr;

  const double* At(BlockPlace place) const {
    switch (place.kind) {
      case BlockPlace::Kind::Array:
        return arrays[Index(place.number)];
      case BlockPlace::Kind::Uniform:
        return &uniforms[Index(place.number)];
      case BlockPlace::Kind::Abscissa:
        break;
    }
    return x;
  }

  void Compute(const UniformStep& step, double& result, std::span<const double> chosen) {
    const BlockNode& node = step.node;
    switch (node.kind) {
      case BlockNodeKind::Constant:
        result = node.constant;
        break;
      case BlockNodeKind::Variable:
        result = *node.source;
        break;
      case BlockNodeKind::Chosen:
        result = chosen.empty() ? *node.source : chosen[Index(node.chosen)];
        break;
      default: {
        TExprRec record = node.record;
        for (std::size_t k = 0; k < node.args.size(); ++k) {
          if (node.args[k] != BlockGraph::kNone) record.Args[k] = &uniforms[Index(node.args[k])];
        }
        (node.func != nullptr ? node.func : record.Oper)(record);
        result = record.Res;
      }
    }
  }

  /// Copies X where its end could not be read up to the padding.
  void SetX(std::span<const double> values) {
    x = values.data();
    if (values.size() % kBlockPadding == 0) return;
    std::copy(values.begin(), values.end(), padded_x);
    // Repeats the last X, so that what is computed beyond raises no error of its own.
    std::fill(padded_x + values.size(), padded_x + PaddedLength(values.size()), values.back());
    x = padded_x;
  }

  void CallEach(const BlockInstruction& instruction, std::size_t count) const {
    const auto element = [](const double* values, BlockPlace place, std::size_t i) {
      return place.kind == BlockPlace::Kind::Uniform ? *values : values[i];
    };
    const double* const first = At(instruction.a);
    const double* const second = At(instruction.b);
    double* const out = arrays[Index(instruction.array)];
    double a = 0;
    double b = 0;
    TExprRec record;
    record.Args[0] = &a;
    record.Args[1] = &b;
    for (std::size_t i = 0; i < count; ++i) {
      a = element(first, instruction.a, i);
      b = element(second, instruction.b, i);
      instruction.func(record);
      out[i] = record.Res;
    }
  }

  void Run(const BlockListing& listing, std::size_t count) const {
    const std::size_t padded = PaddedLength(count);
    for (const BlockInstruction& instruction : listing.instructions) {
      double* const out = arrays[Index(instruction.array)];
      if (instruction.fused != nullptr) {
        instruction.fused(At(instruction.a), At(instruction.b), At(instruction.c), out, padded);
      } else if (instruction.kernel != nullptr) {
        instruction.kernel(At(instruction.a), At(instruction.b), out, padded);
      } else {
        CallEach(instruction, padded);
      }
    }
  }

  /// The array of a result; a number for all is written out in full, to the array kept for it.
  const double* Result(BlockPlace place, std::size_t number, std::size_t count) const {
    const double* const values = At(place);
    if (place.kind != BlockPlace::Kind::Uniform) return values;
    double* const copies = broadcast + number * kBlockLength;
    std::fill_n(copies, PaddedLength(count), *values);
    return copies;
  }
};

std::unique_ptr<BlockEvaluator> BlockEvaluator::Make(const TExpressionParser& parser,
                                                     const double* x,
                                                     std::span<const double* const> variables) {
  const std::optional<BlockFunction> function = LowerExpression(parser, x, variables);
  if (!function) return nullptr;
  return std::unique_ptr<BlockEvaluator>(
      new BlockEvaluator(std::make_shared<const BlockProgram>(*function)));
}

BlockEvaluator::BlockEvaluator(std::shared_ptr<const BlockProgram> program)
    : program_(std::move(program)), work_(std::make_unique<Workspace>(*program_)) {}

BlockEvaluator::BlockEvaluator(const BlockEvaluator& other) : BlockEvaluator(other.program_) {
  work_->uniforms = other.work_->uniforms;
}

BlockEvaluator::~BlockEvaluator() = default;

void BlockEvaluator::Load() {
  Load({});
}

void BlockEvaluator::Load(std::span<const double> variables) {
  const std::vector<UniformStep>& steps = program_->Uniforms();
  for (std::size_t i = 0; i < steps.size(); ++i)
    work_->Compute(steps[i], work_->uniforms[i], variables);
}

BlockResult BlockEvaluator::Values(std::span<const double> x) {
  if (x.empty()) return {};
  const BlockListing& listing = program_->Value();
  work_->SetX(x);
  work_->Run(listing, x.size());
  return {work_->Result(listing.results[0], 0, x.size()), {}};
}

BlockResult BlockEvaluator::Derivatives(std::span<const double> x) {
  if (x.empty()) return {};
  const BlockListing& listing = program_->Derivatives();
  work_->SetX(x);
  work_->Run(listing, x.size());
  for (std::size_t j = 0; j < work_->derivatives.size(); ++j)
    work_->derivatives[j] = work_->Result(listing.results[j + 1], j + 1, x.size());
  return {work_->Result(listing.results[0], 0, x.size()), work_->derivatives};
}

void BlockEvaluator::Values(std::span<const double> x, std::span<double> values) {
  const BlockPlace result = program_->Value().results[0];
  for (std::size_t from = 0; from < x.size(); from += kBlockLength) {
    const std::size_t count = std::min(kBlockLength, x.size() - from);
    const std::span<const double> block = x.subspan(from, count);
    double* const target = values.data() + from;
    if (result.kind == BlockPlace::Kind::Array && count % kBlockPadding == 0) {
      // The last instruction writes where the values are wanted.
      const Workspace::Redirection redirection(work_->arrays[Index(result.number)], target);
      Values(block);
    } else {
      std::copy_n(Values(block).values, count, target);
    }
  }
}

}  // namespace tarnwick
