// Expressions over many values beside their limit: a hand-written loop with the C library's functions, compiled for the
// base instruction set; and beside muParser's bulk mode with the parameters as constants. Figures to compare: Blocks / Limit
// in items per second (exp decay, Gauss and five Gauss at least 3 with AVX2, 1.5 without; sine 6 or 2.5; parabola 0.4), and
// Compile (50 words within 50 microseconds).
#include <benchmark/benchmark.h>
#include <hwy/targets.h>
#include <muParser.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "expr/block/block_evaluator.h"
#include "expr/expression_parser.h"

namespace {

using namespace tarnwick;

constexpr std::size_t kCount = 1'000'000;

struct Parameters {
  double a = 1.7, b = 0.6, c = 1.3;
};

using Loop = void (*)(const std::vector<double>&, std::vector<double>&, const Parameters&);

template <class Function>
void Fill(const std::vector<double>& x, std::vector<double>& y, Function function) {
  for (std::size_t i = 0; i < x.size(); ++i) y[i] = function(x[i]);
}

double Peak(double x, double a, double b, double c) {
  const double t = (x - b) / c;
  return a * std::exp(-(t * t));
}

struct Model {
  const char* name;
  std::string text;
  Loop loop;
};

std::string FiveGauss() {
  std::string text;
  for (int k = 0; k < 5; ++k) {
    const std::string shift = std::to_string(k);
    text += (k == 0 ? "" : "+") + std::string("a*exp(-(((x-b*") + shift + ")/c)^2))";
  }
  return text;
}

const Model& ModelNumber(std::int64_t number) {
  static const Model models[] = {
      {"exp decay", "a*exp(-b*x)+c",
       [](const auto& x, auto& y, const Parameters& p) {
         Fill(x, y, [p](double v) { return p.a * std::exp(-p.b * v) + p.c; });
       }},
      {"Gauss", "a*exp(-(((x-b)/c)^2))",
       [](const auto& x, auto& y, const Parameters& p) {
         Fill(x, y, [p](double v) { return Peak(v, p.a, p.b, p.c); });
       }},
      {"five Gauss", FiveGauss(),
       [](const auto& x, auto& y, const Parameters& p) {
         Fill(x, y, [p](double v) {
           double sum = 0;
           for (int k = 0; k < 5; ++k) sum += Peak(v, p.a, p.b * k, p.c);
           return sum;
         });
       }},
      {"sine", "a*sin(b*x+c)/x",
       [](const auto& x, auto& y, const Parameters& p) {
         Fill(x, y, [p](double v) { return p.a * std::sin(p.b * v + p.c) / v; });
       }},
      {"parabola", "a*x^2+b*x+c",
       [](const auto& x, auto& y, const Parameters& p) {
         Fill(x, y, [p](double v) { return p.a * v * v + p.b * v + p.c; });
       }},
  };
  return models[number];
}

std::vector<double> Abscissae() {
  std::vector<double> x(kCount);
  for (std::size_t i = 0; i < kCount; ++i) x[i] = 0.001 + 10.0 * static_cast<double>(i) / kCount;
  return x;
}

/// A parser with the model's text and variables.
struct Compiled {
  explicit Compiled(const Model& model) {
    parser.DefineVariable("x", &x);
    parser.DefineVariable("a", &p.a);
    parser.DefineVariable("b", &p.b);
    parser.DefineVariable("c", &p.c);
    parser.CompileExpression(model.text);
  }
  double x = 0;
  Parameters p;
  TExpressionParser parser;
};

void Finish(benchmark::State& state, const Model& model) {
  state.SetLabel(model.name);
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

/// What is measured must be computed, too.
void RequireResults(benchmark::State& state, const Model& model, const std::vector<double>& y) {
  const std::vector<double> x = Abscissae();
  std::vector<double> expected(kCount);
  model.loop(x, expected, {});
  for (std::size_t i = 0; i < kCount; ++i) {
    // Where terms cancel, the last places of either are noise.
    if (std::abs(y[i] - expected[i]) <= 1e-11 * std::abs(expected[i]) + 1e-14) continue;
    state.SkipWithError("values differ from the loop's");
    return;
  }
}

void Limit(benchmark::State& state) {
  const Model& model = ModelNumber(state.range(0));
  const std::vector<double> x = Abscissae();
  std::vector<double> y(kCount);
  Parameters p;
  for (auto _ : state) {
    benchmark::DoNotOptimize(p);
    model.loop(x, y, p);
    benchmark::ClobberMemory();
  }
  Finish(state, model);
}
BENCHMARK(Limit)->DenseRange(0, 4)->Unit(benchmark::kMillisecond);

void MeasureBlocks(benchmark::State& state) {
  const Model& model = ModelNumber(state.range(0));
  Compiled compiled(model);
  const std::vector<double> x = Abscissae();
  std::vector<double> y(kCount);
  const std::unique_ptr<BlockEvaluator> blocks = BlockEvaluator::Make(compiled.parser, &compiled.x);
  if (!blocks) std::abort();
  for (auto _ : state) {
    blocks->Load();
    blocks->Values(x, y);
    benchmark::ClobberMemory();
  }
  RequireResults(state, model, y);
  Finish(state, model);
}

void Blocks(benchmark::State& state) {
  MeasureBlocks(state);
}
BENCHMARK(Blocks)->DenseRange(0, 4)->Unit(benchmark::kMillisecond);

/// As on a processor with no wider vectors than these.
template <std::int64_t kTarget>
void BlocksWith(benchmark::State& state) {
  if ((hwy::SupportedTargets() & kTarget) == 0) {
    state.SkipWithError("this processor lacks them");
    return;
  }
  hwy::SetSupportedTargetsForTest(kTarget);
  MeasureBlocks(state);
  hwy::SetSupportedTargetsForTest(0);
}
BENCHMARK(BlocksWith<HWY_AVX2>)->DenseRange(0, 4)->Unit(benchmark::kMillisecond);
BENCHMARK(BlocksWith<HWY_SSE4>)->DenseRange(0, 4)->Unit(benchmark::kMillisecond);

/// Value and three derivatives, block by block.
void BlocksWithDerivatives(benchmark::State& state) {
  const Model& model = ModelNumber(state.range(0));
  Compiled compiled(model);
  const std::vector<double> x = Abscissae();
  const double* const variables[] = {&compiled.p.a, &compiled.p.b, &compiled.p.c};
  const std::unique_ptr<BlockEvaluator> blocks =
      BlockEvaluator::Make(compiled.parser, &compiled.x, variables);
  if (!blocks) std::abort();
  for (auto _ : state) {
    blocks->Load();
    for (std::size_t from = 0; from < kCount; from += kBlockLength) {
      const std::size_t count = std::min(kBlockLength, kCount - from);
      benchmark::DoNotOptimize(blocks->Derivatives(std::span(x).subspan(from, count)));
    }
  }
  Finish(state, model);
}
BENCHMARK(BlocksWithDerivatives)->DenseRange(0, 4)->Unit(benchmark::kMillisecond);

void RecordByRecord(benchmark::State& state) {
  const Model& model = ModelNumber(state.range(0));
  Compiled compiled(model);
  const std::vector<double> x = Abscissae();
  std::vector<double> y(kCount);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kCount; ++i) {
      compiled.x = x[i];
      y[i] = compiled.parser.Evaluate();
    }
    benchmark::ClobberMemory();
  }
  Finish(state, model);
}
BENCHMARK(RecordByRecord)->DenseRange(0, 4)->Unit(benchmark::kMillisecond);

void MuParserBulk(benchmark::State& state) {
  const Model& model = ModelNumber(state.range(0));
  std::vector<double> x = Abscissae();
  std::vector<double> y(kCount);
  const Parameters p;
  mu::Parser parser;
  parser.DefineVar("x", x.data());
  parser.DefineConst("a", p.a);
  parser.DefineConst("b", p.b);
  parser.DefineConst("c", p.c);
  parser.SetExpr(model.text);
  for (auto _ : state) {
    parser.Eval(y.data(), static_cast<int>(kCount));
    benchmark::ClobberMemory();
  }
  RequireResults(state, model, y);
  Finish(state, model);
}
BENCHMARK(MuParserBulk)->DenseRange(0, 4)->Unit(benchmark::kMillisecond)->UseRealTime();

void Compile(benchmark::State& state) {
  // 50 words.
  const std::string text =
      "a*exp(-((x-b)/c)^2)+b*sin(c*x+a)/x+sqrt(abs(x-1.5))-(a+b*x+c*x^2+1e-3*x^3)";
  Compiled compiled(ModelNumber(0));
  for (auto _ : state) {
    compiled.parser.ClearExpressions();
    benchmark::DoNotOptimize(compiled.parser.CompileExpression(text));
  }
}
BENCHMARK(Compile)->Unit(benchmark::kMicrosecond);

/// The same with a parser of its own and the program for blocks.
void CompileForBlocks(benchmark::State& state) {
  for (auto _ : state) {
    Compiled compiled(ModelNumber(2));
    const double* const variables[] = {&compiled.p.a, &compiled.p.b, &compiled.p.c};
    benchmark::DoNotOptimize(BlockEvaluator::Make(compiled.parser, &compiled.x, variables));
  }
}
BENCHMARK(CompileForBlocks)->Unit(benchmark::kMicrosecond);

}  // namespace
