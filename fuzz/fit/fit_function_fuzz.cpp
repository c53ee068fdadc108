// Arbitrary bytes as a stored model. What reads well comes back the same when written and read again in either mode, is
// compiled where it can be, evaluated and shown.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/error.h"
#include "fit/model/curve_fit.h"
#include "fit/model/curve_fit_file.h"
#include "fit/model/model_report.h"
#include "stream/stream_error.h"

namespace {

using namespace tarnwick;

constexpr std::size_t kLongestUsed = 2000;  // long texts are the expression fuzzer's matter

void Require(bool holds) {
  if (!holds) std::abort();
}

// Compared as bytes: an undefined value is not equal to itself.
void CheckReturns(const FitSettings& settings) {
  for (const WriterMode mode : {WriterMode::Typed, WriterMode::Text}) {
    const std::string stored = StoredModel(settings, mode);
    Require(StoredModel(ReadStoredModel(stored), mode) == stored);
  }
}

void Use(const FitSettings& settings) {
  TCurFit fit;
  fit.SetSettings(settings, false);
  Require(static_cast<std::size_t>(fit.NParams()) <= settings.parameters.size());
  SettingsText(fit);
  try {
    fit.Prepare();
    fit.Value(1.5);
  } catch (const Error&) {
    // it cannot be compiled or has no value, which its user is told
  }
  Report(fit);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  FitSettings settings;
  try {
    settings = ReadStoredModel(bytes);
  } catch (const StreamError&) {
    return 0;
  }
  Require(settings.parameters.size() <= size && settings.templates.size() <= size);
  CheckReturns(settings);
  if (settings.Expression.size() <= kLongestUsed) Use(settings);
  return 0;
}
