// Arbitrary bytes as a text table: guessed, then read by arbitrary settings. The block-by-block road must give what reading
// value by value gives.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include "base/error.h"
#include "data/guess/format_guess.h"
#include "data/import/loader.h"
#include "data/points/point_columns.h"
#include "data/text/text_supplier.h"

namespace {

using namespace tarnwick;

/// Takes settings off the front of the input.
class Bytes {
 public:
  explicit Bytes(std::string_view left) : left_(left) {}
  int Next(int below) {
    if (left_.empty()) return 0;
    const auto byte = static_cast<unsigned char>(left_.front());
    left_.remove_prefix(1);
    return byte % below;
  }
  std::string_view Left() const { return left_; }

 private:
  std::string_view left_;
};

TDSInfo AnySettings(Bytes& bytes) {
  const char* const separators[] = {"\t,", ",", ";", " \t", "", "1", "\n", "#"};
  const char* const markers[] = {"'\"", "", ",", "0"};
  TDSInfo info;
  info.TextSeparators = separators[bytes.Next(8)];
  info.TextMarkers = markers[bytes.Next(4)];
  info.MergeSeparators = bytes.Next(2) == 0;
  info.DivideTextByWidth = bytes.Next(4) == 0;
  info.ColumnWidth = bytes.Next(6) - 1;
  info.FileHasHeaders = bytes.Next(5) - 1;
  info.XFormat = static_cast<ColumnFormat>(bytes.Next(7));
  info.YFormat = static_cast<ColumnFormat>(bytes.Next(7));
  info.RowChoiceMode = static_cast<RowChoice>(bytes.Next(8));
  info.RowChoiceValue1 = bytes.Next(40) - 5;
  info.RowChoiceValue2 = bytes.Next(40) - 5;
  info.RowSamplingFrequency = bytes.Next(8) - 1;
  info.AutoRowHitFreq = bytes.Next(3) == 0;
  if (bytes.Next(4) == 0) info.ColumnCuts = bytes.Next(2) == 0 ? "1 3 4 8" : "5";
  return info;
}

LoadReport Load(const TDSInfo& info, const std::shared_ptr<const TextSource>& source,
                bool value_by_value, TDataSeries& series) {
  TTxtSupplier supplier(info, source);
  series.Source() = info;
  LoadOptions options;
  options.threads = 1;
  options.value_by_value = value_by_value;
  return LoadDataSet(series, supplier, options);
}

void RequireSameLoads(TDSInfo info, const std::shared_ptr<const TextSource>& source) {
  info.active = true;
  TDataSeries reference;
  TDataSeries blocks;
  const LoadReport expected = Load(info, source, true, reference);
  const LoadReport got = Load(info, source, false, blocks);
  const bool same = XValues(reference.Points()) == XValues(blocks.Points()) &&
                    YValues(reference.Points()) == YValues(blocks.Points()) &&
                    expected.Message() == got.Message();
  if (!same) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes({reinterpret_cast<const char*>(data), size});
  TDSInfo any = AnySettings(bytes);
  any.XDataColumn = "#" + std::to_string(bytes.Next(4));
  any.YDataColumn = "#" + std::to_string(bytes.Next(4));
  try {
    const auto source = std::make_shared<const TextSource>(std::string(bytes.Left()), "input");
    TDSInfo guessed;
    GuessTextFormat(source->Text()).ApplyTo(guessed);
    guessed.AutoRowHitFreq = false;
    guessed.XDataColumn = "#0";
    guessed.YDataColumn = "#1";
    RequireSameLoads(guessed, source);
    RequireSameLoads(any, source);
  } catch (const FileError&) {
    // Refused as no text, with a message.
  }
  return 0;
}
