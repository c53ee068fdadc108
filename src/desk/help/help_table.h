// What the help's library shows the program that loads it: one C function. Nothing is thrown across.
#pragma once

#include <array>

class QWidget;

namespace tarnwick {

extern "C" {

struct HelpRequest {
  const char* program = nullptr;  ///< kVersion of the program that asks
  const char* file = nullptr;     ///< the gathered pages
  const char* topics =
      nullptr;  ///< ids of places in pages, one a line, the best first; null: the index is wanted
  QWidget* window = nullptr;        ///< a help window made before, or null: one is made
  QWidget* parent = nullptr;        ///< of a new window
  std::array<char, 512> trouble{};  ///< what went wrong, as a sentence in UTF-8
};

/// The help window, shown; null where `trouble` tells why there is none. The library exports it as "ShowHelp".
using ShowHelpFunction = QWidget* (*)(HelpRequest* request);

}  // extern "C"

}  // namespace tarnwick
