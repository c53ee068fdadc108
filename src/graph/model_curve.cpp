#include "graph/model_curve.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "base/error.h"
#include "base/undefined.h"
#include "expr/words/parser_exception.h"

namespace tarnwick {
namespace {

/// Both are compiled to the same.
bool SameText(const FitSettings& left, const FitSettings& right) {
  return left.XVarName == right.XVarName && left.Expression == right.Expression &&
         left.templates == right.templates &&
         std::equal(left.parameters.begin(), left.parameters.end(), right.parameters.begin(),
                    right.parameters.end(),
                    [](const auto& one, const auto& other) { return one.Name == other.Name; });
}

/// Both give the same points once compiled.
bool SameNumbers(const FitSettings& left, const FitSettings& right) {
  return left.NPoints == right.NPoints &&
         std::equal(left.parameters.begin(), left.parameters.end(), right.parameters.begin(),
                    right.parameters.end(),
                    [](const auto& one, const auto& other) { return one.Value == other.Value; });
}

bool HasExtent(const CurveSpan& span) {
  if (!std::isfinite(span.from) || !std::isfinite(span.to) || !(span.from < span.to)) return false;
  return span.spacing == CurveSpacing::Linear || span.from > 0;
}

/// Ascending, with both ends exact.
std::vector<double> Abscissae(const CurveSpan& span, std::size_t count) {
  std::vector<double> x(count);
  const double last = static_cast<double>(count - 1);
  for (std::size_t i = 0; i < count; ++i) {
    const double share = static_cast<double>(i) / last;
    const double at = span.spacing == CurveSpacing::Geometric
                          ? std::exp(std::log(span.from) * (1 - share) + std::log(span.to) * share)
                          : span.from * (1 - share) + span.to * share;
    x[i] = std::clamp(at, i == 0 ? span.from : x[i - 1], span.to);
  }
  x.front() = span.from;
  x.back() = span.to;
  return x;
}

}  // namespace

CurveSpan WithinMargins(CurveSpan axis, const FitSettings& model) {
  if (model.LeftMarginUsed) axis.from = std::max(axis.from, model.LeftMargin);
  if (model.RightMarginUsed) axis.to = std::min(axis.to, model.RightMargin);
  return axis;
}

void ModelCurve::Update(const FitSettings& model, const CurveSpan& span) {
  const bool same_text = current_ && SameText(model, settings_);
  if (same_text && SameNumbers(model, settings_) && span == span_) return;
  if (!same_text) {
    Compile(model);
  } else {
    for (std::size_t i = 0; i < model.parameters.size(); ++i) {
      model_.Param(static_cast<std::int32_t>(i + 1)).SetValue(model.parameters[i].Value);
    }
  }
  settings_ = model;
  span_ = span;
  current_ = true;
  Compute(span);
}

void ModelCurve::Clear() {
  current_ = false;
  points_ = {};
  error_.clear();
}

void ModelCurve::Compile(const FitSettings& model) {
  error_.clear();
  blocks_.reset();
  model_.SetSettings(model, MarkModified::No);
  try {
    model_.Prepare();
    blocks_ = BlockEvaluator::Make(model_, model_.XValue());
  } catch (const tarnwick::Error& error) {
    error_ = error.what();
  }
}

void ModelCurve::Compute(const CurveSpan& span) {
  points_ = {};
  if (!error_.empty() || !HasExtent(span)) return;
  const auto count = static_cast<std::size_t>(std::clamp(settings_.NPoints, 2, kMaxPoints));
  const std::vector<double> x = Abscissae(span, count);
  points_.AppendRun(1, x, Values(x));
}

std::vector<double> ModelCurve::Values(const std::vector<double>& x) {
  std::vector<double> y(x.size(), kUndefined);
  if (blocks_) {
    try {
      blocks_->Load();
      blocks_->Values(x, y);
      return y;
    } catch (const EIntegerDivision&) {
      // Somewhere there is no value; record by record shows where.
    }
  }
  for (std::size_t i = 0; i < x.size(); ++i) {
    try {
      y[i] = model_.Value(x[i]);
    } catch (const EIntegerDivision&) {
      y[i] = kUndefined;
    }
  }
  return y;
}

}  // namespace tarnwick
