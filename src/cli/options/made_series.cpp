#include "cli/options/made_series.h"

#include "cli/options/option_parser.h"
#include "cli/output/point_text.h"

namespace tarnwick::cli {

void AddMadeSeries(Command& command, MadeSeriesArguments& arguments) {
  AddInput(command, arguments.input);
  command.Add("--name", arguments.name, "Name of the new DataSet");
  command.Add("--axis", arguments.axis, "Y axis of the new DataSet: main or second")
      .OneOf({"main", "second"});
  AddSave(command, arguments.save);
}

void AddShowSource(Command& command, MadeSeriesArguments& arguments, const std::string& why) {
  command.AddFlag("--show-source", arguments.show_source,
                  "The DataSet it is computed from stays drawn, " + why);
}

void TellHidden(const MadeSeriesArguments& arguments, const TSeries& source, Output& output) {
  if (!arguments.save.Wanted()) return;
  output.Note('"' + source.SeriesName() + "\" is no longer drawn; --show-source draws it.");
}

void RunMadeSeries(const MadeSeriesArguments& arguments, Output& output,
                   const std::function<const TSeries&(TxyGraph&)>& make) {
  if (arguments.save.Wanted()) CheckSave(arguments.save);
  const InputGraph input = ReadInput(arguments.input, arguments.save, output);
  const TSeries& made = make(*input.graph);
  if (!arguments.save.Wanted()) {
    PrintPoints(made, output);
    return;
  }
  std::size_t place = 0;
  while (&input.graph->Series(place) != &made) ++place;
  SaveOutput(*input.graph, place, arguments.save, output);
  PrintSaved(arguments.save, output);
}

}  // namespace tarnwick::cli
