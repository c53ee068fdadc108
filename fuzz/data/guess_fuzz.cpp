// Arbitrary bytes as a file opened without a word: columns, roles, times, runs and gaps are guessed and loaded. What a DataSet
// keeps of that must read the same points again, value by value too, and what is told must be fit to show.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/text_encoding.h"
#include "data/import/import_file.h"
#include "data/import/import_told.h"
#include "data/import/loader.h"
#include "data/points/point_columns.h"
#include "data/text/text_supplier.h"

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

void RequireReadAgain(const TDataSeries& loaded, const std::shared_ptr<const TextSource>& source) {
  for (const bool value_by_value : {false, true}) {
    TDataSeries again;
    again.Source() = loaded.Source();
    again.SetDuplicatesAllowed(loaded.DuplicatesAllowed());
    TTxtSupplier supplier(loaded.Source(), source);
    LoadOptions options = OneThread();
    options.value_by_value = value_by_value;
    LoadDataSet(again, supplier, options);
    if (!Same(XValues(again.Points()), XValues(loaded.Points())) ||
        !Same(YValues(again.Points()), YValues(loaded.Points()))) {
      std::abort();
    }
  }
}

void RequireFitToShow(const std::string& text) {
  if (!IsValidUtf8(text)) std::abort();
  for (const char c : text) {
    if (static_cast<unsigned char>(c) < ' ') std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  try {
    const ImportResult result = ImportText(text, "input", {}, OneThread());
    const auto source = std::make_shared<const TextSource>(text, "input");
    std::vector<std::string> names;
    for (const auto& series : result.series) {
      names.push_back(series->SeriesName());
      RequireFitToShow(series->SeriesName());
      RequireReadAgain(*series, source);
    }
    RequireFitToShow(Sentence(TellImport(result.reports, names, result.notes)));
  } catch (const Error&) {
    // Refused as no text or no table, with a sentence.
  }
  return 0;
}
