// Which files of a folder a mask names. Knows names, opens nothing.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace tarnwick {

/// The files of `folder` that one of the masks names ("*.dat;*.txt", case apart; "*.*" is every file), by name. No
/// subfolders, nothing hidden, no ".tmp" files; none where the folder cannot be read.
std::vector<std::filesystem::path> FilesOfFolder(const std::filesystem::path& folder,
                                                 std::string_view mask);

}  // namespace tarnwick
