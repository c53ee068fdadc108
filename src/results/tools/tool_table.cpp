#include "results/tools/tool_table.h"

#include <algorithm>

namespace tarnwick {

const Tool* FindTool(std::string_view name) {
  static constexpr const Tool* kTools[] = {
      &kIntegrateTool, &kSumTool,        &kHistogramTool, &kDifferentiateTool, &kAverageTool,
      &kSmoothTool,    &kBackgroundTool, &kSpectrumTool,  &kCorrelateTool,     &kComputeTool,
      &kResampleTool,  &kClipTool,       &kNormaliseTool, &kOutliersTool};
  const auto found = std::ranges::find(kTools, name, &Tool::name);
  return found == std::end(kTools) ? nullptr : *found;
}

}  // namespace tarnwick
