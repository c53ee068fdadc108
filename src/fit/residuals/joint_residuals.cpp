#include "fit/residuals/joint_residuals.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "fit/residuals/decompositions.h"

namespace tarnwick {

JointResiduals::JointResiduals(std::vector<Part> parts, std::size_t parameters)
    : parts_(std::move(parts)), ranges_(parameters) {
  for (const Part& part : parts_) {
    for (std::size_t j = 0; j < part.columns.size(); ++j) {
      const ParameterRange& range = part.problem->Ranges()[j];
      ParameterRange& common = ranges_[part.columns[j]];
      common.low = std::max(common.low, range.low);
      common.high = std::min(common.high, range.high);
      common.search_width = std::max(common.search_width, range.search_width);
    }
  }
}

std::vector<double> JointResiduals::Local(const Part& part, std::span<const double> p) const {
  std::vector<double> local;
  local.reserve(part.columns.size());
  for (const std::size_t column : part.columns) local.push_back(p[column]);
  return local;
}

std::unique_ptr<LeastSquaresProblem> JointResiduals::Thinned(std::size_t most) const {
  std::vector<std::unique_ptr<LeastSquaresProblem>> thinned;
  std::vector<Part> parts = parts_;
  for (Part& part : parts) {
    thinned.push_back(part.problem->Thinned(std::max<std::size_t>(most / parts.size(), 1)));
    part.problem = thinned.back().get();
  }
  auto joint = std::make_unique<JointResiduals>(std::move(parts), ranges_.size());
  joint->own_ = std::move(thinned);
  return joint;
}

std::size_t JointResiduals::PointCount() const {
  return std::accumulate(
      parts_.begin(), parts_.end(), std::size_t{0},
      [](std::size_t sum, const Part& part) { return sum + part.problem->PointCount(); });
}

std::pair<double, double> JointResiduals::RangeOfX() const {
  std::pair<double, double> range = parts_.front().problem->RangeOfX();
  for (const Part& part : parts_) {
    const auto [low, high] = part.problem->RangeOfX();
    range = {std::min(range.first, low), std::max(range.second, high)};
  }
  return range;
}

double JointResiduals::NormOfY() const {
  double norm = 0;
  for (const Part& part : parts_) norm = std::hypot(norm, part.problem->NormOfY());
  return norm;
}

double JointResiduals::SumAboutMean() const {
  double sum = 0;
  for (const Part& part : parts_) sum += part.problem->SumAboutMean();
  return sum;
}

bool JointResiduals::HasExactDerivatives() const {
  return std::ranges::all_of(parts_,
                             [](const Part& part) { return part.problem->HasExactDerivatives(); });
}

std::vector<bool> JointResiduals::LinearParameters(std::span<const double> p) {
  std::vector<bool> linear(ranges_.size(), true);
  for (const Part& part : parts_) {
    const std::vector<bool> of_part = part.problem->LinearParameters(Local(part, p));
    for (std::size_t j = 0; j < of_part.size(); ++j) {
      if (!of_part[j]) linear[part.columns[j]] = false;
    }
  }
  return linear;
}

double JointResiduals::SumOfSquares(std::span<const double> p) {
  double sum = 0;
  for (const Part& part : parts_) sum += part.problem->SumOfSquares(Local(part, p));
  return sum;
}

std::vector<double> JointResiduals::Residuals(std::span<const double> p, std::size_t most) {
  std::vector<double> all;
  for (const Part& part : parts_) {
    const std::vector<double> some =
        part.problem->Residuals(Local(part, p), std::max<std::size_t>(most / parts_.size(), 1));
    all.insert(all.end(), some.begin(), some.end());
  }
  return all;
}

ReducedJacobian JointResiduals::Reduce(std::span<const double> p, Reduction how) {
  const auto k = static_cast<Eigen::Index>(ranges_.size());
  Eigen::Index rows = k;
  for (const Part& part : parts_) rows += static_cast<Eigen::Index>(part.columns.size()) + 1;
  Eigen::MatrixXd stack = Eigen::MatrixXd::Zero(rows, k);
  Eigen::VectorXd right = Eigen::VectorXd::Zero(rows);
  ReducedJacobian sum;
  sum.how = how;
  Eigen::Index row = 0;
  for (const Part& part : parts_) {
    const ReducedJacobian one = part.problem->Reduce(Local(part, p), how);
    const auto width = static_cast<Eigen::Index>(part.columns.size());
    for (Eigen::Index j = 0; j < width; ++j)
      stack.block(row, static_cast<Eigen::Index>(part.columns[static_cast<std::size_t>(j)]), width,
                  1) = one.r.col(j);
    right.segment(row, width) = one.qtr;
    right[row + width] = one.rest;
    row += width + 1;
    sum.sum_of_squares += one.sum_of_squares;
    sum.undefined += one.undefined;
    if (one.how == Reduction::Orthogonal) sum.how = Reduction::Orthogonal;
  }
  const Triangle triangle = TriangleOf(stack, right);
  sum.r = triangle.r.topRows(k);
  sum.qtr = triangle.qtr.head(k);
  sum.rest = triangle.qtr.tail(rows - k).norm();
  return sum;
}

}  // namespace tarnwick
