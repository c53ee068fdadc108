#include "cli/commands/commands.h"
#include "cli/commands/tool_command.h"

namespace tarnwick::cli {
namespace {

template <const Tool& kTool>
CommandRow OfTool() {
  return {kTool.name.data(), kTool.purpose.data(), &DeclareTool<kTool>};
}

const CommandRow kCommands[] = {
    {"calc", "The values of expressions", &DeclareCalc},
    {"functions", "The words that expressions may use", &DeclareFunctions},
    {"import", "Read text or binary data into DataSets", &DeclareImport},
    {"columns", "The columns of a data file: names and first values", &DeclareColumns},
    {"info", "Everything a file holds", &DeclareInfo},
    {"points", "The points of a DataSet, or its regression curve", &DeclarePoints},
    {"evaluate",
     "What a DataSet, its regression and its model have at an X, or where they have a Y",
     &DeclareEvaluate},
    {"stats", "Statistics of a DataSet", &DeclareStats},
    {"regress", "Set a DataSet's regression and compute it", &DeclareRegress},
    {"integrate", "The running integral of a DataSet", &DeclareIntegrate},
    {"sum", "The running sum of a DataSet", &DeclareSum},
    {"histogram", "The probability density of a DataSet", &DeclareHistogram},
    {"differentiate", "The derivative of a DataSet", &DeclareDifferentiate},
    {"average", "The mean of several DataSets", &DeclareAverage},
    {"peaks", "The peaks of a DataSet, as marks", &DeclarePeaks},
    OfTool<kSmoothTool>(),
    OfTool<kBackgroundTool>(),
    OfTool<kSpectrumTool>(),
    OfTool<kCorrelateTool>(),
    OfTool<kComputeTool>(),
    OfTool<kResampleTool>(),
    OfTool<kClipTool>(),
    OfTool<kNormaliseTool>(),
    OfTool<kOutliersTool>(),
    {"compare", "How two DataSets differ: figures and tests", &DeclareCompare},
    {"recompute", "What was computed from DataSets, computed anew", &DeclareRecompute},
    {"area", "The area between a DataSet and its base line", &DeclareArea},
    {"total", "The sum of a DataSet's points, base line subtracted", &DeclareTotal},
    {"baseline", "A DataSet's base line, by numbers or from a mark", &DeclareBaseline},
    {"shift", "Move a graph in X, by a number or to a mark", &DeclareShift},
    {"fit", "Fit a model to a DataSet: values, errors, verdict", &DeclareFit},
    {"report", "The fitting model of a file or DataSet, as text", &DeclareReport},
    {"axes", "The three axes after autoscaling, their ticks and pixels", &DeclareAxes},
    {"render", "The picture that the desktop program would draw", &DeclareRender},
    {"convert", "One kind of file into another", &DeclareConvert},
};

}  // namespace

std::span<const CommandRow> Commands() {
  return kCommands;
}

}  // namespace tarnwick::cli
