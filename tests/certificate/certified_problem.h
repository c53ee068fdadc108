// A least-squares problem whose solution is certified to eleven digits. Knows the files of tests/fit/certified.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tarnwick {

struct CertifiedParameter {
  std::string name;
  double starts[2] = {0, 0};  ///< far from the solution, near it
  double value = 0;
  double deviation = 0;
};

struct CertifiedProblem {
  std::string name;
  std::string level;  ///< "lower", "average" or "higher" difficulty
  std::string expression;
  std::vector<CertifiedParameter> parameters;
  double sum_of_squares = 0;
  std::vector<double> x;
  std::vector<double> y;
};

/// All problems of problems.json in `folder`. Throws std::runtime_error when a file does not hold what it should.
std::vector<CertifiedProblem> LoadCertifiedProblems(const std::filesystem::path& folder);

/// Decimal digits in which `value` agrees with `certified`: -log10 of the relative error, between 0 and the eleven that are
/// certified.
double AgreeingDigits(double value, double certified);

}  // namespace tarnwick
