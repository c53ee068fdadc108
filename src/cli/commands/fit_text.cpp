#include "cli/commands/fit_text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "base/undefined.h"
#include "cli/options/fit_model.h"
#include "fit/judge/fit_findings.h"
#include "graph/series.h"
#include "results/fit_texts.h"
#include "results/joint_fit.h"

namespace tarnwick::cli {
namespace {

const char* ReasonName(StopReason why) {
  switch (why) {
    case StopReason::Converged:
      return "converged";
    case StopReason::NoFurtherDescent:
      return "no further descent";
    case StopReason::IterationLimit:
      return "iteration limit";
    case StopReason::Cancelled:
      return "cancelled";
    case StopReason::NothingVaried:
      return "nothing varied";
    case StopReason::TooManyParameters:
      return "too many parameters";
    case StopReason::UndefinedAtStart:
      return "undefined at start";
    case StopReason::BadModel:
      return "bad model";
    case StopReason::NoPoints:
      return "no points";
  }
  return "unknown";
}

/// Counts stay whole numbers.
Json FigureJson(const FitFigure& figure) {
  if (figure.kind == FigureKind::Count) return static_cast<std::int64_t>(figure.value);
  return JsonNumber(figure.value);
}

// --- the document

Json SquareJson(const std::vector<double>& numbers, std::size_t width) {
  Json rows = Json::Array();
  for (std::size_t i = 0; i + width <= numbers.size() && width > 0; i += width) {
    Json row = Json::Array();
    for (std::size_t j = 0; j < width; ++j) row.Append(JsonNumber(numbers[i + j]));
    rows.Append(row);
  }
  return rows;
}

Json ParametersJson(const FitAnswer& answer) {
  const double quantile = IntervalQuantile(answer.result.statistics, answer.level);
  Json parameters = Json::Array();
  for (const FittedParameter& line : FittedParameters(answer.model, answer.result)) {
    Json parameter = {{"name", line.settings.Name},
                      {"value", JsonNumber(line.settings.Value)},
                      {"stderr", JsonNumber(line.error)},
                      {"vary", line.settings.Vary}};
    if (!line.settings.Tie.empty()) parameter["tie"] = line.settings.Tie;
    if (line.settings.Low > -HUGE_VAL) parameter["low"] = JsonNumber(line.settings.Low);
    if (line.settings.High < HUGE_VAL) parameter["high"] = JsonNumber(line.settings.High);
    if (line.at_bound) parameter["at_bound"] = true;
    if (line.settings.Vary) {
      parameter["lower"] = JsonNumber(line.settings.Value - quantile * line.error);
      parameter["upper"] = JsonNumber(line.settings.Value + quantile * line.error);
    }
    parameters.Append(parameter);
  }
  return parameters;
}

Json NamesJson(const FitResult& result, const std::vector<std::int32_t>& which) {
  Json names = Json::Array();
  for (const std::int32_t i : which) names.Append(result.names.at(static_cast<std::size_t>(i)));
  return names;
}

Json SingularJson(const FitResult& result) {
  Json directions = Json::Array();
  for (const SingularDirection& direction : result.singular_directions) {
    directions.Append({{"parameters", NamesJson(result, direction.parameters)},
                       {"relative_singular_value", JsonNumber(direction.relative_singular_value)}});
  }
  return directions;
}

Json AbsentJson(const FitResult& result) {
  Json terms = Json::Array();
  for (const AbsentTerm& term : result.absent) {
    terms.Append({{"parameter", result.names.at(static_cast<std::size_t>(term.parameter))},
                  {"through", NamesJson(result, term.through)},
                  {"gain", JsonNumber(term.gain)},
                  {"chance", JsonNumber(term.chance)}});
  }
  return terms;
}

Json BandsJson(const FitAnswer& answer) {
  Json bands = Json::Array();
  const FitBands& band = answer.bands;
  for (std::size_t i = 0; i < answer.band_x.size(); ++i) {
    bands.Append({{"x", JsonNumber(answer.band_x[i])},
                  {"value", JsonNumber(band.value[i])},
                  {"confidence_lower", JsonNumber(band.value[i] - band.confidence[i])},
                  {"confidence_upper", JsonNumber(band.value[i] + band.confidence[i])},
                  {"prediction_lower", JsonNumber(band.value[i] - band.prediction[i])},
                  {"prediction_upper", JsonNumber(band.value[i] + band.prediction[i])}});
  }
  return bands;
}

Json DocumentOf(const FitAnswer& answer) {
  const FitResult& result = answer.result;
  const std::size_t varied = result.names.size();
  Json document = {{"converged", HasConverged(result)},
                   {"trustworthy", result.verdict.trustworthy},
                   {"untested", result.verdict.untested},
                   {"verdict", result.verdict.summary},
                   {"notes", result.verdict.notes},
                   {"reason", ReasonName(result.outcome.why)},
                   {"stop_test", result.outcome.stop_test},
                   {"method", MethodName(answer.model.ProcType)},
                   {"iterations", result.outcome.iterations},
                   {"evaluations", result.outcome.evaluations},
                   {"search_evaluations", result.outcome.search_evaluations},
                   {"points", result.statistics.points},
                   {"points_used", result.points_used},
                   {"points_in_range", result.points_in_range},
                   {"undefined_points", result.undefined_points},
                   {"points_without_error", result.points_without_error},
                   {"points_without_weight", result.points_without_weight},
                   {"rss", nullptr},  // its place; the value comes with the other figures
                   {"start_rss", JsonNumber(result.outcome.start_value)},
                   {"finishing_rss", JsonNumber(result.newton_sum_of_squares)},
                   {"parameters", ParametersJson(answer)},
                   {"weights", WeightsName(result.statistics.weighting.weights)},
                   {"errors", ErrorsName(result.statistics.weighting.errors)},
                   {"loss", LossName(result.statistics.weighting.loss)},
                   {"error_model", ErrorModelText(result.statistics)},
                   {"level", answer.level}};
  if (result.statistics.weighting.loss != FitLoss::Linear)
    document["loss_scale"] = JsonNumber(result.statistics.weighting.loss_scale);
  for (const FitFigure& figure : FiguresOf(result.statistics))
    document[figure.key] = FigureJson(figure);
  document["covariance"] = SquareJson(result.statistics.covariance, varied);
  document["correlation"] = SquareJson(result.statistics.correlation, varied);
  document["singular_directions"] = SingularJson(result);
  document["unmoved"] = NamesJson(result, result.unmoved);
  document["absent"] = AbsentJson(result);
  if (!answer.band_x.empty()) document["bands"] = BandsJson(answer);
  return document;
}

/// What several DataSets fitted at once have together. The whole has no model of its own: its parameters stand with the DataSets.
Json WholeJson(const FitAnswer& of_first, const FitResult& whole,
               const std::vector<std::string>& shared) {
  Json document = DocumentOf({of_first.model, whole, of_first.level, {}, {}});
  document["parameters"] = nullptr;
  document["names"] = whole.names;
  document["shared"] = shared;
  return document;
}

Json TogetherJson(const FitAnswer& share, const FitOfSeveral& together) {
  Json document = WholeJson(share, together.whole, together.shared);
  Json members = Json::Array();
  for (const FitOfSeveral::Member& one : together.members) {
    members.Append({{"dataset", one.data_set},
                    {"trustworthy", one.verdict.trustworthy},
                    {"untested", one.verdict.untested},
                    {"verdict", one.verdict.summary},
                    {"points", one.points},
                    {"rss", JsonNumber(one.sum_of_squares)},
                    {"r_squared", JsonNumber(one.r_squared)}});
  }
  document["datasets"] = std::move(members);
  return document;
}

// --- the text

/// Columns of equal width, the last without blanks after it.
void PrintTable(const std::vector<std::vector<std::string>>& rows, std::ostream& out) {
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  for (const auto& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      line += row[i];
      if (i + 1 < row.size()) line.append(widths[i] - row[i].size() + 2, ' ');
    }
    out << line << '\n';
  }
}

void PrintParameters(const FitAnswer& answer, std::ostream& out) {
  if (answer.model.parameters.empty()) return;
  std::vector<std::vector<std::string>> rows = {{"parameter", "value", "standard error"}};
  for (const FittedParameter& line : FittedParameters(answer.model, answer.result)) {
    const std::string without = WithoutErrorText(line);
    rows.push_back({line.settings.Name, ShortestText(line.settings.Value),
                    without.empty() ? ShortestText(line.error) : without});
    if (!line.settings.Units.empty() || !line.settings.Tie.empty())
      rows.back().push_back(line.settings.Units);
    if (!line.settings.Tie.empty()) rows.back().push_back("= " + line.settings.Tie);
  }
  PrintTable(rows, out);
  out << "(" << ErrorModelText(answer.result.statistics) << ")\n\n";
}

void PrintFigures(const FitStatistics& statistics, std::ostream& out) {
  for (const FitFigure& figure : FiguresOf(statistics)) {
    if (!IsUndefined(figure.value)) out << figure.key << ": " << ShortestText(figure.value) << '\n';
  }
}

void PrintText(const FitAnswer& answer, std::ostream& out) {
  const FitResult& result = answer.result;
  out << result.verdict.summary << '\n';
  for (const std::string& note : result.verdict.notes) out << note << '\n';
  out << '\n';
  PrintParameters(answer, out);
  out << "points: " << result.statistics.points;
  const std::int64_t left_out = result.points_in_range - result.statistics.points;
  if (left_out > 0) out << " of " << result.points_in_range << ", " << left_out << " left out";
  out << '\n'
      << "iterations: " << result.outcome.iterations << '\n'
      << "evaluations: " << result.outcome.evaluations << '\n';
  PrintFigures(result.statistics, out);
  if (answer.band_x.empty()) return;
  out << "\nx,value,confidence,prediction\n";
  const FitBands& bands = answer.bands;
  for (std::size_t i = 0; i < answer.band_x.size(); ++i) {
    out << ShortestText(answer.band_x[i]) << ',' << ShortestText(bands.value[i]) << ','
        << ShortestText(bands.confidence[i]) << ',' << ShortestText(bands.prediction[i]) << '\n';
  }
}

void PrintJointText(const JointAnswer& answer, std::ostream& out) {
  out << "all: " << answer.whole.verdict.summary << '\n';
  const std::vector<std::string>& told = answer.whole.verdict.notes;
  for (const std::string& note : told) out << note << '\n';
  out << '\n';
  for (const JointAnswer::Part& part : answer.parts) {
    const FitStatistics& own = part.fit.result.statistics;
    const FitVerdict& verdict = part.fit.result.verdict;
    out << part.data_set << ": " << verdict.summary << '\n';
    for (const std::string& note : verdict.notes) {
      if (std::ranges::find(told, note) == told.end()) out << note << '\n';
    }
    PrintParameters(part.fit, out);
    out << "points: " << own.points << "\nrss: " << ShortestText(own.sum_of_squares)
        << "\nr_squared: " << ShortestText(own.r_squared) << "\n\n";
  }
  out << "all\npoints: " << answer.whole.statistics.points << '\n'
      << "iterations: " << answer.whole.outcome.iterations << '\n'
      << "evaluations: " << answer.whole.outcome.evaluations << '\n';
  PrintFigures(answer.whole.statistics, out);
}

// --- comparisons

Json ComparisonJson(const ModelComparison& compared) {
  Json models = Json::Array();
  for (const RankedModel& one : compared.comparison.ranks) {
    const FitResult& result = compared.results[one.number];
    Json model = {{"function", compared.models[one.number].name},
                  {"trustworthy", result.verdict.trustworthy},
                  {"untested", result.verdict.untested},
                  {"verdict", result.verdict.summary},
                  {"parameters", result.names.size()},
                  {"difference", JsonNumber(one.difference)},
                  {"weight", JsonNumber(one.weight)}};
    if (!Failed(result.outcome.why)) {
      for (const FitFigure& figure : FiguresOf(result.statistics))
        model[figure.key] = FigureJson(figure);
    }
    models.Append(std::move(model));
  }
  Json tests = Json::Array();
  for (const NestedTest& test : compared.comparison.tests) {
    tests.Append({{"smaller", compared.models[test.smaller].name},
                  {"larger", compared.models[test.larger].name},
                  {"f", JsonNumber(test.ratio)},
                  {"added", test.added},
                  {"degrees_of_freedom", test.free},
                  {"probability", JsonNumber(test.probability)}});
  }
  return {{"models", std::move(models)}, {"tests", std::move(tests)}};
}

}  // namespace

void PrintFit(const FitAnswer& answer, Output& output) {
  if (output.IsJson()) {
    output.Document(DocumentOf(answer));
  } else {
    PrintText(answer, output.Text());
  }
}

Json LastFitJson(const TxyGraph& graph, const TSeries& series) {
  const LastFit& last = series.Fit().Last();
  const std::string changed = FitChangedText(graph, series);
  Json document = {{"stale", !changed.empty()}};
  if (!changed.empty()) document["changed"] = changed;
  if (!last.record) return document;
  FitAnswer answer;
  answer.model = last.record->model;
  answer.result = *last.record->result;
  document["function"] = answer.model.Expression;
  const Json fit = DocumentOf(answer);
  for (const JsonMember& member : std::get<Json::Members>(fit.Get()))
    document[member.name] = member.value;
  if (answer.result.together) document["together"] = TogetherJson(answer, *answer.result.together);
  return document;
}

void PrintJointFit(const JointAnswer& answer, Output& output) {
  if (!output.IsJson()) return PrintJointText(answer, output.Text());
  Json parts = Json::Array();
  for (const JointAnswer::Part& part : answer.parts) {
    Json document = DocumentOf(part.fit);
    document["dataset"] = part.data_set;
    parts.Append(std::move(document));
  }
  Json document = WholeJson(answer.parts.front().fit, answer.whole, answer.shared);
  document["datasets"] = std::move(parts);
  output.Document(document);
}

std::string FunctionName(const std::string& file) {
  return std::filesystem::path(file).stem().string();
}

void PrintComparison(const ModelComparison& compared, Output& output) {
  if (output.IsJson()) return output.Document(ComparisonJson(compared));
  PrintTable(ComparisonRows(compared), output.Text());
  output.Text() << '\n';
  for (const std::string& remark : ComparisonRemarks(compared)) output.Text() << remark << '\n';
}

}  // namespace tarnwick::cli
