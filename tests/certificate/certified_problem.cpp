#include "certified_problem.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr double kCertifiedDigits = 11;

/// The rows after the header, two columns, in the order of X.
void ReadPoints(const std::filesystem::path& file, int header_lines, bool y_first,
                CertifiedProblem& problem) {
  std::ifstream in(file);
  std::string line;
  for (int i = 0; i < header_lines; ++i) std::getline(in, line);
  std::vector<std::pair<double, double>> points;
  while (std::getline(in, line)) {
    std::istringstream fields(line);
    std::string first;
    std::string second;
    if (!(fields >> first >> second)) continue;
    const std::optional<double> a = ParseNumber(first);
    const std::optional<double> b = ParseNumber(second);
    if (!a || !b) throw std::runtime_error(file.string() + " holds no numbers: " + line);
    points.emplace_back(y_first ? *b : *a, y_first ? *a : *b);
  }
  std::ranges::stable_sort(points, {}, &std::pair<double, double>::first);
  for (const auto& [x, y] : points) {
    problem.x.push_back(x);
    problem.y.push_back(y);
  }
}

CertifiedProblem ReadProblem(const nlohmann::json& entry, const std::filesystem::path& folder) {
  CertifiedProblem problem;
  problem.name = entry.at("name");
  problem.level = entry.at("level");
  problem.expression = entry.at("expression");
  problem.sum_of_squares = entry.at("rss");
  for (const nlohmann::json& parameter : entry.at("parameters")) {
    problem.parameters.push_back({parameter.at("name"),
                                  {parameter.at("start1"), parameter.at("start2")},
                                  parameter.at("certified"),
                                  parameter.at("standard_deviation")});
  }
  const std::string columns = entry.at("columns");
  const std::string file = entry.at("file");
  ReadPoints(folder / file, entry.at("header_lines"), columns.starts_with("y"), problem);
  if (problem.x.size() != entry.at("observations"))
    throw std::runtime_error(file + " holds another number of observations");
  return problem;
}

}  // namespace

std::vector<CertifiedProblem> LoadCertifiedProblems(const std::filesystem::path& folder) {
  std::ifstream in(folder / "problems.json");
  std::vector<CertifiedProblem> problems;
  for (const nlohmann::json& entry : nlohmann::json::parse(in))
    problems.push_back(ReadProblem(entry, folder));
  return problems;
}

double AgreeingDigits(double value, double certified) {
  if (!std::isfinite(value)) return 0;
  const double error = std::abs(value - certified) / std::abs(certified);
  return error == 0 ? kCertifiedDigits : std::clamp(-std::log10(error), 0.0, kCertifiedDigits);
}

}  // namespace tarnwick
