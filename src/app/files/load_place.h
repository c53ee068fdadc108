// Where a file that is loaded into a window goes, when a graph file would take the place of what the window shows. Knows
// documents; loads nothing.
#pragma once

#include <filesystem>

#include "base/prompt.h"

namespace tarnwick {

class Document;

/// What is asked before a document goes back to its file.
Question ReloadQuestion(const Document& document);

enum class LoadPlace { Here, OwnWindow, Nowhere };

/// Asks when loading `path` into the document would replace changes or another graph. What can be undone is not asked about.
LoadPlace ChooseLoadPlace(const Document& document, const std::filesystem::path& path,
                          Prompt& prompt);

}  // namespace tarnwick
