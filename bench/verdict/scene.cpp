#include "scene.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "analysis/fits/fit_run.h"
#include "base/progress.h"
#include "fit/model/curve_fit.h"

namespace tarnwick::bench {
namespace {

constexpr double kLastX = 10;

FitSettings SettingsOf(const Family& family, const Numbers& values, FitProcType method) {
  FitSettings settings;
  settings.Expression = family.expression;
  settings.NPoints = 1'000'000;
  settings.ProcType = method;
  for (std::size_t i = 0; i < values.size(); ++i) {
    ParameterSettings parameter;
    parameter.Name = family.parameters[i].name;
    parameter.Value = values[i];
    parameter.Vary = true;
    settings.parameters.push_back(parameter);
  }
  return settings;
}

Numbers DrawStart(const Numbers& near, Chance& chance) {
  const double how = chance.Uniform();
  Numbers start;
  for (const double value : near) {
    if (how < 0.35) {
      start.push_back(value * std::exp(0.1 * chance.Normal()));
    } else if (how < 0.65) {
      start.push_back(value * std::pow(3, chance.Between(-1, 1)));
    } else if (how < 0.85) {
      start.push_back(value * std::pow(10, chance.Between(-1, 1)) *
                      (chance.Happens(0.15) ? -1 : 1));
    } else {
      start.push_back(1);
    }
  }
  return start;
}

FitProcType DrawMethod(Chance& chance) {
  const double which = chance.Uniform();
  if (which < 1.0 / 6) return FitProcType::cfp_Powell;
  return which < 1.0 / 3 ? FitProcType::cfp_SimplexPowell : FitProcType::cfp_Newton;
}

FitResult Fitted(const FitSettings& settings, const Scene& scene) {
  FitJob job;
  job.settings = settings;
  job.x = scene.x;
  job.y = scene.y;
  job.points_in_range = job.points_chosen = static_cast<std::int64_t>(scene.x.size());
  job.options.threads = 1;
  NoProgress progress;
  return RunFit(job, progress);
}

}  // namespace

Numbers Curve(const Family& family, const Numbers& values, const Numbers& x) {
  TCurFit model;
  model.SetSettings(SettingsOf(family, values, FitProcType::cfp_Newton), false);
  model.Prepare();
  Numbers y;
  for (const double one : x) y.push_back(model.Value(one));
  return y;
}

Eigen::MatrixXd JacobianOf(const Family& family, const Numbers& values, const Numbers& x) {
  const auto k = static_cast<Eigen::Index>(values.size());
  Eigen::MatrixXd jacobian(static_cast<Eigen::Index>(x.size()), k);
  for (Eigen::Index j = 0; j < k; ++j) {
    const auto at = static_cast<std::size_t>(j);
    Numbers up = values;
    Numbers down = values;
    const double step = 1e-5 * std::max(std::abs(up[at]), 0.01);
    up[at] += step;
    down[at] -= step;
    const Numbers above = Curve(family, up, x);
    const Numbers below = Curve(family, down, x);
    for (Eigen::Index i = 0; i < jacobian.rows(); ++i) {
      const auto row = static_cast<std::size_t>(i);
      const double slope = (above[row] - below[row]) / (2 * step);
      jacobian(i, j) = std::isfinite(slope) ? slope : 0;
    }
  }
  return jacobian;
}

Numbers DrawParameters(const Family& family, Chance& chance) {
  Numbers values;
  for (const DrawnParameter& one : family.parameters)
    values.push_back(chance.Between(one.low, one.high));
  return values;
}

Numbers DrawX(int points, double first, Chance& chance) {
  const double kind = chance.Uniform();
  Numbers x;
  for (int i = 0; i < points; ++i) {
    const double share = static_cast<double>(i) / (points - 1);
    const double least = std::max(first, 0.1);
    if (kind < 0.6) {
      x.push_back(first + (kLastX - first) * share);
    } else if (kind < 0.7) {
      x.push_back(least * std::pow(kLastX / least, share));
    } else {
      x.push_back(chance.Between(first, kLastX));
    }
  }
  std::ranges::sort(x);
  return x;
}

double RangeOf(const Numbers& values) {
  const auto [low, high] = std::ranges::minmax(values);
  return high - low;
}

FitResult FitScene(const Family& family, const Numbers& near, const Scene& scene, Chance& chance) {
  const Numbers start = DrawStart(near, chance);
  return Fitted(SettingsOf(family, start, DrawMethod(chance)), scene);
}

FitResult FitWithout(const Family& family, const std::vector<std::string>& held,
                     const Numbers& start, const Scene& scene) {
  FitSettings settings = SettingsOf(family, start, FitProcType::cfp_Newton);
  for (ParameterSettings& one : settings.parameters)
    one.Vary = std::ranges::find(held, one.Name) == held.end();
  return Fitted(settings, scene);
}

}  // namespace tarnwick::bench
