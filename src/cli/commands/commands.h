// The declaring functions of all commands; each stands in a file of its own.
#pragma once

#include "cli/options/command.h"

namespace tarnwick::cli {

void DeclareCalc(Command& command, Action& action);
void DeclareFunctions(Command& command, Action& action);
void DeclareImport(Command& command, Action& action);
void DeclareColumns(Command& command, Action& action);
void DeclareInfo(Command& command, Action& action);
void DeclarePoints(Command& command, Action& action);
void DeclareEvaluate(Command& command, Action& action);
void DeclareStats(Command& command, Action& action);
void DeclareRegress(Command& command, Action& action);
void DeclareIntegrate(Command& command, Action& action);
void DeclareSum(Command& command, Action& action);
void DeclareHistogram(Command& command, Action& action);
void DeclareDifferentiate(Command& command, Action& action);
void DeclareAverage(Command& command, Action& action);
void DeclarePeaks(Command& command, Action& action);
void DeclareCompare(Command& command, Action& action);
void DeclareRecompute(Command& command, Action& action);
void DeclareArea(Command& command, Action& action);
void DeclareTotal(Command& command, Action& action);
void DeclareBaseline(Command& command, Action& action);
void DeclareShift(Command& command, Action& action);
void DeclareFit(Command& command, Action& action);
void DeclareAxes(Command& command, Action& action);
void DeclareReport(Command& command, Action& action);
void DeclareRender(Command& command, Action& action);
void DeclareConvert(Command& command, Action& action);

}  // namespace tarnwick::cli
