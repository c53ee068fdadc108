// The declaring functions of all commands; each stands in a file of its own.
#pragma once

#include "cli/options/command.h"

namespace tarnwick::cli {

void DeclareCalc(CLI::App& command, Action& action);
void DeclareFunctions(CLI::App& command, Action& action);
void DeclareImport(CLI::App& command, Action& action);
void DeclareColumns(CLI::App& command, Action& action);
void DeclareInfo(CLI::App& command, Action& action);
void DeclarePoints(CLI::App& command, Action& action);
void DeclareStats(CLI::App& command, Action& action);
void DeclareRegress(CLI::App& command, Action& action);
void DeclareIntegrate(CLI::App& command, Action& action);
void DeclareSum(CLI::App& command, Action& action);
void DeclareHistogram(CLI::App& command, Action& action);
void DeclareDifferentiate(CLI::App& command, Action& action);
void DeclareArea(CLI::App& command, Action& action);
void DeclareTotal(CLI::App& command, Action& action);
void DeclareBaseline(CLI::App& command, Action& action);
void DeclareShift(CLI::App& command, Action& action);
void DeclareFit(CLI::App& command, Action& action);
void DeclareAxes(CLI::App& command, Action& action);
void DeclareReport(CLI::App& command, Action& action);
void DeclareRender(CLI::App& command, Action& action);
void DeclareConvert(CLI::App& command, Action& action);

}  // namespace tarnwick::cli
