// All tools that make a DataSet of others.
#pragma once

#include <span>
#include <string_view>

#include "results/tools/tool.h"

namespace tarnwick {

extern const Tool kIntegrateTool;
extern const Tool kSumTool;
extern const Tool kHistogramTool;
extern const Tool kDifferentiateTool;
extern const Tool kAverageTool;
extern const Tool kSmoothTool;
extern const Tool kBackgroundTool;
extern const Tool kSpectrumTool;
extern const Tool kCorrelateTool;
extern const Tool kComputeTool;
extern const Tool kResampleTool;
extern const Tool kClipTool;
extern const Tool kNormaliseTool;
extern const Tool kOutliersTool;

/// Null where there is none of that name.
const Tool* FindTool(std::string_view name);

}  // namespace tarnwick
