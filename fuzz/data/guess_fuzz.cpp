// Arbitrary bytes as a file opened without a word: columns, roles, times, runs and gaps are guessed and loaded. What a DataSet
// keeps of that must read the same points again, value by value too, and what is told must be fit to show.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "base/error.h"
#include "base/text_encoding.h"
#include "data/import/import_file.h"
#include "data/import/import_told.h"
#include "data/import/loader.h"
#include "data/points/point_columns.h"

namespace {

using namespace tarnwick;

LoadOptions OneThread() {
  LoadOptions options;
  options.threads = 1;
  return options;
}

bool Same(const std::vector<double>& one, const std::vector<double>& other) {
  return one.size() == other.size() &&
         (one.empty() || std::memcmp(one.data(), other.data(), one.size() * sizeof(double)) == 0);
}

void RequireReadAgain(const TDataSeries& loaded) {
  for (const bool value_by_value : {false, true}) {
    TDataSeries again;
    again.SetState(loaded.State());
    again.Clear();
    LoadOptions options = OneThread();
    options.value_by_value = value_by_value;
    RefreshAll(std::array{&again}, options);
    if (!Same(XValues(again.Points()), XValues(loaded.Points())) ||
        !Same(YValues(again.Points()), YValues(loaded.Points()))) {
      std::abort();
    }
  }
}

struct TemporaryFolder {
  TemporaryFolder() { std::filesystem::create_directories(path); }
  ~TemporaryFolder() { std::filesystem::remove_all(path); }
  std::filesystem::path path = std::filesystem::temp_directory_path() /
                               ("guess_fuzz." + std::to_string(std::random_device()()));
};

void RequireFitToShow(const std::string& text) {
  if (!IsValidUtf8(text)) std::abort();
  for (const char c : text) {
    if (static_cast<unsigned char>(c) < ' ') std::abort();
  }
}

/// The file that every input becomes in turn.
std::filesystem::path FileOf(std::string_view bytes) {
  static const TemporaryFolder folder;
  std::filesystem::path path = folder.path / "input";
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const auto path = FileOf({reinterpret_cast<const char*>(data), size});
    const ImportResult result = ImportFile(path, {}, OneThread());
    std::vector<std::string> names;
    for (const auto& series : result.series) {
      names.push_back(series->SeriesName());
      RequireFitToShow(series->SeriesName());
      RequireReadAgain(*series);
    }
    RequireFitToShow(Sentence(TellImport(result.reports, names, result.notes)));
  } catch (const Error&) {
    // Refused as no text or no table, with a sentence.
  }
  return 0;
}
