// What the user is told of files that cannot be opened and asked of those that exist, in the words that stand for it
// everywhere. Knows no document.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace tarnwick {

class Prompt;

/// What is told of a file that is not there, and of one that could not be read or taken.
std::string MissingText(const std::filesystem::path& path);
/// Of a place at which something lies that is no file: a folder, a device, a pipe.
std::string NoFileText(const std::filesystem::path& path);
std::string FileErrorText(const std::filesystem::path& path, const std::string& reason);

/// Tells when there is no such file; true then.
bool TellIfMissing(const std::filesystem::path& path, Prompt& prompt);

/// Tells why `path` could not be read or taken.
void TellFileError(const std::filesystem::path& path, const std::string& reason, Prompt& prompt);

/// Tells of several files at once that could not be opened, by what is told of each; of none, nothing.
void TellTroubles(const std::vector<std::string>& troubles, Prompt& prompt);

/// The same where the user named so many files: of the only one that alone.
void TellUnopened(const std::vector<std::string>& troubles, std::size_t named, Prompt& prompt);

/// Asks whether a file that exists may be written over; true where there is none. With a sentence on what would be lost, "No" is
/// the answer that is proposed.
bool MayReplace(const std::filesystem::path& path, Prompt& prompt, const std::string& lost = {});

/// Asks whether a graph file that another program has written since it was opened may be written over.
bool MayReplaceChanged(const std::filesystem::path& path, Prompt& prompt);

}  // namespace tarnwick
