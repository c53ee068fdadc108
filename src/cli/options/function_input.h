// A fitting-function file on the command line, and a model as a document. Knows models; nothing of graphs.
#pragma once

#include <string>

#include "cli/output/output.h"
#include "fit/model/fit_settings.h"

namespace tarnwick::cli {

/// True for the ending of fitting functions.
bool IsFitFunctionFile(const std::string& file);

/// Every stored value of the model by its name; enums as the numbers that files hold.
Json FitJson(const FitSettings& fit);

}  // namespace tarnwick::cli
