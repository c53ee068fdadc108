#include "desk/settings/program_folder.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <locale>
#include <map>
#include <sstream>
#include <system_error>

#include "base/error.h"
#include "base/whole_file.h"
#include "desk/settings/program_paths.h"

namespace tarnwick {
namespace {

namespace fs = std::filesystem;

constexpr std::array kParts = {kDefaultTemplateName, "TFN", "HELP", "examples"};
/// In the folder: a line for each file given, with its size and its time as it was.
constexpr const char* kGivenName = "given.txt";

struct Stamp {
  std::uintmax_t size = 0;
  std::int64_t time = 0;
  bool operator==(const Stamp&) const = default;
};
using Stamps = std::map<std::string, Stamp>;  // by paths within the folder

Stamp StampOf(const fs::path& file) {
  return {fs::file_size(file), fs::last_write_time(file).time_since_epoch().count()};
}

/// Throws filesystem_error.
Stamps FilesOf(const fs::path& share) {
  Stamps files;
  const auto add = [&](const fs::path& file) {
    files[file.lexically_relative(share).generic_string()] = StampOf(file);
  };
  for (const char* const part : kParts) {
    const fs::path path = share / part;
    if (fs::is_regular_file(path)) add(path);
    if (!fs::is_directory(path)) continue;
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
      if (entry.is_regular_file()) add(entry.path());
    }
  }
  return files;
}

Stamps ReadGiven(const fs::path& folder) {
  Stamps given;
  std::ifstream file(folder / kGivenName);
  Stamp stamp;
  for (std::string name;
       file >> stamp.size >> stamp.time && file.get() == ' ' && std::getline(file, name);)
    given[name] = stamp;
  return given;
}

void WriteGiven(const fs::path& folder, const Stamps& given) {
  std::ostringstream lines;
  lines.imbue(std::locale::classic());
  for (const auto& [name, stamp] : given)
    lines << stamp.size << ' ' << stamp.time << ' ' << name << '\n';
  WriteWholeFile(folder / kGivenName, lines.str());
}

/// Whether the folder's file is that which was given, or was never given.
bool Untouched(const fs::path& file, const Stamp* given) {
  if (!fs::exists(file)) return given == nullptr;
  return given != nullptr && StampOf(file) == *given;
}

void Copy(const fs::path& from, const fs::path& to) {
  fs::create_directories(to.parent_path());
  fs::path beside = to;
  beside += ".new";
  try {
    fs::copy_file(from, beside, fs::copy_options::overwrite_existing);
    fs::permissions(beside, fs::perms::owner_write, fs::perm_options::add);
    fs::last_write_time(beside, fs::last_write_time(from));
    fs::rename(beside, to);
  } catch (const fs::filesystem_error&) {
    std::error_code not_there;
    fs::remove(beside, not_there);
    throw;
  }
}

}  // namespace

std::string FillProgramFolder(const fs::path& share, const fs::path& folder) {
  Stamps given;
  std::string trouble;
  try {
    const Stamps files = FilesOf(share);
    given = ReadGiven(folder);
    const Stamps before = given;
    for (const auto& [name, stamp] : files) {
      const auto known = given.find(name);
      const Stamp* const last = known == given.end() ? nullptr : &known->second;
      if (last != nullptr && *last == stamp) continue;
      if (Untouched(folder / name, last)) Copy(share / name, folder / name);
      given[name] = stamp;
    }
    if (given != before) WriteGiven(folder, given);
  } catch (const fs::filesystem_error& error) {
    trouble = error.code().message();
  } catch (const Error& error) {
    trouble = error.what();
  }
  if (trouble.empty()) return {};
  return "What is installed cannot be copied to " + folder.string() + ": " + trouble;
}

}  // namespace tarnwick
