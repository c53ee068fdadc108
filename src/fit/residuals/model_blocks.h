// A model's values and its derivatives by the varied parameters, block by block, at parameter values that are given. Knows
// the two roads to them; nothing of residuals and sums. One per thread.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "expr/block/block_evaluator.h"

namespace tarnwick {

class TCurFit;

class ModelBlocks {
 public:
  virtual ~ModelBlocks() = default;
  ModelBlocks(const ModelBlocks&) = delete;
  ModelBlocks& operator=(const ModelBlocks&) = delete;

  /// From now on at `p`, in the order of the varied parameters. Throws EIntegerDivision.
  virtual void Load(std::span<const double> p) = 0;
  /// At up to kBlockLength X. Reading up to the next multiple of eight is safe; valid until the next call. Throws
  /// EIntegerDivision.
  virtual BlockResult Values(std::span<const double> x) = 0;
  virtual BlockResult Derivatives(std::span<const double> x) = 0;
  /// The same with derivatives by central differences, the step being kDifferenceStep of the parameter (of 1 where it is 0):
  /// some ten digits. One-sided where the model has a value on one side only.
  BlockResult Differences(std::span<const double> x);

  /// Near the cube root of the relative accuracy of a double, where truncation and rounding weigh alike.
  static constexpr double kDifferenceStep = 0x1p-17;

 protected:
  ModelBlocks() = default;
  std::vector<double> p_;

 private:
  std::vector<double> memory_;
  std::vector<const double*> columns_;
};

/// By the block evaluator, with exact derivatives.
class EvaluatorBlocks final : public ModelBlocks {
 public:
  explicit EvaluatorBlocks(const BlockEvaluator& evaluator) : evaluator_(evaluator) {}
  void Load(std::span<const double> p) override;
  BlockResult Values(std::span<const double> x) override { return evaluator_.Values(x); }
  BlockResult Derivatives(std::span<const double> x) override { return evaluator_.Derivatives(x); }

 private:
  BlockEvaluator evaluator_;
};

/// Record by record, in the order of the X, for expressions that the block evaluator declines. Puts the model's own values
/// back after each block.
class RecordBlocks final : public ModelBlocks {
 public:
  RecordBlocks(TCurFit& model, std::vector<double*> varied);
  void Load(std::span<const double> p) override { p_.assign(p.begin(), p.end()); }
  BlockResult Values(std::span<const double> x) override;
  BlockResult Derivatives(std::span<const double> x) override { return Differences(x); }

 private:
  TCurFit& model_;
  std::vector<double*> varied_;
  std::vector<double> values_ = std::vector<double>(kBlockLength);
};

}  // namespace tarnwick
