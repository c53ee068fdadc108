// Counts what the evaluators take from the heap, in all of this program.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <span>
#include <vector>

#include "expr/block/block_evaluator.h"
#include "expr/expression_parser.h"

namespace {

std::size_t allocations = 0;

void* Counted(void* memory) {
  ++allocations;
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

// Inlined on one side only, new and delete look to GCC like the wrong functions for each other.
[[gnu::noinline]] void* operator new(std::size_t size) {
  return Counted(std::malloc(size));
}
[[gnu::noinline]] void* operator new(std::size_t size, std::align_val_t alignment) {
  const auto step = static_cast<std::size_t>(alignment);
  return Counted(std::aligned_alloc(step, (size + step - 1) / step * step));
}
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  ++allocations;
  return std::malloc(size);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
  std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept {
  std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/,
                                       std::align_val_t /*alignment*/) noexcept {
  std::free(memory);
}

namespace tarnwick {
namespace {

TEST(Allocation, IsNoneWhileRecordsAreEvaluated) {
  const std::size_t at_first = allocations;
  TExpressionParser parser;
  double x = 1.5;
  parser.DefineVariable("x", &x);
  parser.CompileExpression(
      "y := ('a'<'b')*exp(-x^2)/max(x,2)+5!+(3 div 2) xor not random > logn(2,x)");
  const std::size_t before = allocations;
  EXPECT_GT(before, at_first) << "compiling allocates";
  for (int i = 0; i < 1000; ++i) parser.Evaluate();
  EXPECT_EQ(allocations, before);
}

TEST(Allocation, IsNoneWhileBlocksAreEvaluated) {
  TExpressionParser parser;
  double x = 0;
  double p = 1.5;
  double q = 0.5;
  parser.DefineVariable("x", &x);
  parser.DefineVariable("p", &p);
  parser.DefineVariable("q", &q);
  const double* const variables[] = {&p, &q};
  const std::vector<double> chosen = {2.5, 0.75};
  const std::vector<double> abscissae(1000, 0.3);
  std::vector<double> values(abscissae.size());
  for (const char* const text :
       {"p*exp(-q*x)+('a'<'b')+x^0.5+arctan2(x,p)+sin(1e9*x)+x!", "p", "q*x^2+x div 1"}) {
    parser.CompileExpression(text);
    const std::unique_ptr<BlockEvaluator> blocks = BlockEvaluator::Make(parser, &x, variables);
    ASSERT_TRUE(blocks) << text;
    const std::size_t before = allocations;
    // Whole blocks and one that must be padded, from the first use on.
    for (const std::size_t count : {kBlockLength, std::size_t{13}, std::size_t{1}}) {
      blocks->Load();
      blocks->Values(std::span(abscissae).first(count));
      blocks->Load(chosen);
      blocks->Derivatives(std::span(abscissae).first(count));
      blocks->Values(abscissae, values);
    }
    EXPECT_EQ(allocations, before) << text;
  }
}

}  // namespace
}  // namespace tarnwick
