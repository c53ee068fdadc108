// The user's copy of what is installed beside the program: filled on first use, brought up to date with the installation, and
// left alone where the user had a hand in it. Knows folders and files; nothing of what they hold.
#pragma once

#include <filesystem>
#include <string>

namespace tarnwick {

/// Copies the default template, the fitting functions, the help and the examples of `share` to `folder`, each once: a file
/// that the user changed or removed since stays so, one untouched is replaced when `share` has another. Answers why not all
/// could be copied; empty when nothing is missing.
std::string FillProgramFolder(const std::filesystem::path& share,
                              const std::filesystem::path& folder);

}  // namespace tarnwick
