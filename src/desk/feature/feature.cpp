#include "desk/feature/feature.h"

namespace tarnwick {

std::vector<const Command*> CommandsOf(const std::vector<Feature>& features) {
  std::vector<const Command*> commands;
  for (const Feature& feature : features) {
    for (const std::span<const Command> rows : feature.commands) {
      for (const Command& row : rows) commands.push_back(&row);
    }
  }
  return commands;
}

std::vector<const PanelRow*> PanelsOf(const std::vector<Feature>& features) {
  std::vector<const PanelRow*> panels;
  for (const Feature& feature : features) {
    for (const PanelRow& row : feature.panels) panels.push_back(&row);
  }
  return panels;
}

std::vector<BarMaker> BarsOf(const std::vector<Feature>& features) {
  std::vector<BarMaker> bars;
  for (const Feature& feature : features)
    bars.insert(bars.end(), feature.bars.begin(), feature.bars.end());
  return bars;
}

const TakenFile* TakerOf(const std::vector<Feature>& features, const std::filesystem::path& path) {
  const FileHolds holds = KindToRead(path).holds;
  for (const Feature& feature : features) {
    for (const TakenFile& file : feature.files) {
      if (file.holds == holds) return &file;
    }
  }
  return nullptr;
}

}  // namespace tarnwick
