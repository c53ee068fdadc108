// The commands smooth and background: a smoother DataSet, and one less the base line that its points suggest.
#include <memory>

#include "cli/commands/commands.h"
#include "cli/options/made_series.h"
#include "cli/options/number_check.h"
#include "cli/options/option_parser.h"
#include "graph/xy_graph.h"
#include "results/smooth_series.h"

namespace tarnwick::cli {
namespace {

struct SmoothArguments {
  MadeSeriesArguments made;
  std::string dataset;
  std::string method = "savitzky-golay";
  LocalPolynomial local;
};

struct BackgroundArguments {
  MadeSeriesArguments made;
  std::string dataset;
  std::string method = "arpls";
  ArPls asymmetric;
  bool line = false;
};

void RunSmooth(const SmoothArguments& arguments, Output& output) {
  RunMadeSeries(arguments.made, output, [&](TxyGraph& graph) -> const TSeries& {
    const TSeries& source = graph.Series(ChooseSeries(graph, arguments.dataset));
    const SmoothOptions options = {
        arguments.method == "median" ? SmoothMethod::Median : SmoothMethod::Polynomials,
        arguments.local};
    const MadeSeries made =
        AddSmooth(graph, source, options, arguments.made.Wanted(SmoothName(graph, source)));
    output.Note(made.told);
    return made.series;
  });
}

void RunBackground(const BackgroundArguments& arguments, Output& output) {
  RunMadeSeries(arguments.made, output, [&](TxyGraph& graph) -> const TSeries& {
    const TSeries& source = graph.Series(ChooseSeries(graph, arguments.dataset));
    const BaseLineOptions options = {
        arguments.method == "arpls" ? BaseLineMethod::Asymmetric : BaseLineMethod::RubberBand,
        arguments.asymmetric, arguments.line ? BaseLineResult::Line : BaseLineResult::Less};
    const MadeSeries made =
        AddLessBaseLine(graph, source, options, arguments.made.Wanted(BaseLineName(graph, source)));
    output.Note(made.told);
    return made.series;
  });
}

}  // namespace

void DeclareSmooth(Command& command, Action& action) {
  auto arguments = std::make_shared<SmoothArguments>();
  arguments->made.axis = "main";
  AddMadeSeries(command, arguments->made);
  AddDataset(command, arguments->dataset);
  command.Add("--method", arguments->method, "savitzky-golay or median")
      .OneOf({"savitzky-golay", "median"});
  command.Add("--window", arguments->local.window, "Points that a value is made from, odd");
  command.Add("--order", arguments->local.order, "Degree of the polynomials").Between(0, 9);
  command.Add("--derivative", arguments->local.derivative, "Derivative that is made").Between(0, 2);
  OnCommand(command, action, arguments, &RunSmooth);
}

void DeclareBackground(Command& command, Action& action) {
  auto arguments = std::make_shared<BackgroundArguments>();
  arguments->made.axis = "main";
  AddMadeSeries(command, arguments->made);
  AddDataset(command, arguments->dataset);
  command.Add("--method", arguments->method, "arpls or rubber-band")
      .OneOf({"arpls", "rubber-band"});
  command
      .Add("--smoothness", arguments->asymmetric.smoothness, "Of arpls: the greater, the stiffer")
      .Check(kPositiveNumber);
  command.AddFlag("--line", arguments->line, "Make the base line itself");
  OnCommand(command, action, arguments, &RunBackground);
}

}  // namespace tarnwick::cli
