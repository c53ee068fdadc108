// The layers, which of them and how much of Qt each may use, and what it means that their folders stand in an order.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

enum class Qt { None, Core, Gui, Widgets };

struct Layer {
  std::string_view name;
  std::vector<std::string_view> uses;  // beside the layer's own files
  Qt qt;

  bool MayUse(std::string_view layer) const;
};

const std::vector<Layer>& Layers();
/// nullptr when there is no such layer.
const Layer* FindLayer(std::string_view name);

/// Which folders each folder uses.
using FolderUses = std::map<std::string, std::set<std::string>>;
/// What is left when folders are taken away all of whose used ones are gone: circles, and what uses one.
FolderUses InCircles(FolderUses uses);

}  // namespace tarnwick
