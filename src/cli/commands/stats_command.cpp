#include <memory>

#include "base/number_text.h"
#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "data/series/statistics.h"

namespace tarnwick::cli {
namespace {

struct StatsOptions {
  InputArguments input;
  std::string dataset;
  std::string of = "y";
};

Json RecordJson(const StatisticsRecord& record) {
  return {{"count", record.count ? Json(*record.count) : Json(nullptr)},
          {"mean", JsonNumber(record.mean)},
          {"median", JsonNumber(record.median)},
          {"mode", JsonNumber(record.mode)},
          {"sum", JsonNumber(record.sum)},
          {"variance", JsonNumber(record.variance)},
          {"skew", JsonNumber(record.skew)},
          {"kurtosis", JsonNumber(record.kurtosis)},
          {"lower_quintile", JsonNumber(record.lower_quintile)},
          {"upper_quintile", JsonNumber(record.upper_quintile)},
          {"lower_quartile", JsonNumber(record.lower_quartile)},
          {"upper_quartile", JsonNumber(record.upper_quartile)},
          {"message", record.message}};
}

void AddExtremes(const TDataSeries& series, Json& document) {
  const Extremes extremes = series.GetExtremes();
  document["xmin"] = JsonNumber(extremes.x_min);
  document["xmax"] = JsonNumber(extremes.x_max);
  document["ymin"] = JsonNumber(extremes.y_min);
  document["ymax"] = JsonNumber(extremes.y_max);
}

void PrintStatsText(const Json& document, std::ostream& out) {
  for (const auto& [key, value] : std::get<Json::Members>(document.Get())) {
    const std::string text = PlainText(value, "");
    if (!text.empty()) out << key << ": " << text << '\n';
  }
}

void RunStats(const StatsOptions& options, Output& output) {
  const InputGraph input = ReadInput(options.input, output);
  const TSeries& series =
      input.graph->Series(ChooseToldSeries(*input.graph, options.dataset, output));
  Json document = RecordJson(options.of == "x" ? series.XStatistics() : series.YStatistics());
  AddExtremes(series, document);
  if (output.IsJson()) {
    output.Document(document);
  } else {
    PrintStatsText(document, output.Text());
  }
}

}  // namespace

void DeclareStats(Command& command, Action& action) {
  auto options = std::make_shared<StatsOptions>();
  AddInput(command, options->input);
  AddDataset(command, options->dataset);
  command.Add("--of", options->of, "Which values: x or y").OneOf({"x", "y"});
  OnCommand(command, action, options, &RunStats);
}

}  // namespace tarnwick::cli
