// The pages of the graph editor: which groups of which sections stand on each, and where it hangs in the tree. Knows captions
// and groups; no widget.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "editors/graph/sections.h"
#include "graph/graph_part.h"

namespace tarnwick {

/// Groups of a section, in the order in which they stand on the page.
struct PageGroups {
  SectionId section;
  std::span<const std::string_view> groups;
};

struct Page {
  std::string_view caption;
  std::string_view step;  ///< what is done on it, as read after "Undo"
  GraphPart part;         ///< what of the graph it is about; of DataSets and marks any one
  std::span<const PageGroups> content;
  bool below = false;  ///< belongs to the page above it
};

std::span<const Page> Pages();

/// One field of a page.
struct PageField {
  SectionId section;
  std::size_t row;
};
std::vector<PageField> FieldsOf(const Page& page);

/// Its page; that of the title for the graph itself.
std::size_t PageOf(const GraphPart& part);

}  // namespace tarnwick
