// A model with points made for a test of fitting. Knows the fitting layer alone.
#pragma once

#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fit/minimise/newton_fit.h"
#include "fit/model/curve_fit.h"
#include "fit/residuals/model_residuals.h"

namespace tarnwick::testing {

struct NamedValue {
  std::string name;
  double value;
};

/// All parameters varied, ready to evaluate.
inline std::unique_ptr<TCurFit> MakeModel(const std::string& expression,
                                          const std::vector<NamedValue>& parameters) {
  auto model = std::make_unique<TCurFit>();
  for (const NamedValue& given : parameters) {
    ParameterSettings settings;
    settings.Name = given.name;
    settings.Value = given.value;
    settings.Vary = true;
    model->AddParameter(std::make_unique<TDBLParameter>(settings));
  }
  model->SetExpression(expression);
  model->Prepare();
  return model;
}

struct Points {
  std::vector<double> x;
  std::vector<double> y;
  FitPoints View() const { return {x, y}; }
};

/// `count` points from `first` to `last` of `f`, with an error between -noise and noise that is the same in every run.
inline Points MakePoints(std::size_t count, double first, double last, double noise,
                         const std::function<double(double)>& f) {
  Points points;
  std::uint64_t state = 0x9e3779b97f4a7c15U;
  for (std::size_t i = 0; i < count; ++i) {
    state = state * 6364136223846793005U + 1442695040888963407U;
    const double error = static_cast<double>(state >> 11) * 0x1p-52 - 1;
    points.x.push_back(first +
                       (last - first) * static_cast<double>(i) / static_cast<double>(count - 1));
    points.y.push_back(f(points.x.back()) + noise * error);
  }
  return points;
}

inline NewtonOutcome Fit(ModelResiduals& residuals, const MinimiseOptions& options = {}) {
  NoProgress progress;
  return FitByNewton(residuals, residuals.Start(), options, progress);
}

}  // namespace tarnwick::testing
