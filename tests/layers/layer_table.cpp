#include "layers/layer_table.h"

#include <algorithm>

namespace tarnwick {

bool Layer::MayUse(std::string_view layer) const {
  return layer == name || std::ranges::find(uses, layer) != uses.end();
}

const std::vector<Layer>& Layers() {
  static const std::vector<std::string_view> kEngine = {
      "base", "expr", "stream", "fit", "data", "sources", "analysis", "graph", "results"};
  static const std::vector<std::string_view> kEngineAndDesk = {
      "base", "expr", "stream", "fit", "data", "sources", "analysis", "graph", "results", "desk"};
  static const std::vector<Layer> kLayers = {
      {"base", {}, Qt::None},
      {"expr", {"base"}, Qt::None},
      {"stream", {"base"}, Qt::None},
      {"fit", {"base", "expr", "stream"}, Qt::None},
      {"data", {"base", "expr", "stream", "fit"}, Qt::None},
      {"sources", {"base", "expr", "stream", "fit", "data"}, Qt::Core},
      {"analysis", {"base", "expr", "stream", "fit", "data"}, Qt::None},
      {"graph", {"base", "expr", "stream", "fit", "data"}, Qt::Gui},
      {"results", {"base", "expr", "stream", "fit", "data", "analysis", "graph"}, Qt::Gui},
      {"desk", kEngine, Qt::Widgets},
      {"app", kEngineAndDesk, Qt::Widgets},
      {"editors", kEngineAndDesk, Qt::Widgets},
      {"help", kEngineAndDesk, Qt::Widgets},
      {"cli", kEngine, Qt::Gui},
      {"readers", {"base"}, Qt::None},
  };
  return kLayers;
}

const Layer* FindLayer(std::string_view name) {
  const auto found =
      std::ranges::find_if(Layers(), [&](const Layer& layer) { return layer.name == name; });
  return found == Layers().end() ? nullptr : &*found;
}

FolderUses InCircles(FolderUses uses) {
  const auto in_order = [&](const auto& folder) {
    return std::ranges::none_of(folder.second,
                                [&](const auto& used) { return uses.contains(used); });
  };
  while (std::erase_if(uses, in_order) > 0) {
  }
  return uses;
}

}  // namespace tarnwick
