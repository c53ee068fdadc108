// The stored form of a model: three sections whose values are keys of one number each, told apart by their order. Knows
// what is written and that what is read may be damaged; nothing of expressions or files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "fit/model/fit_settings.h"
#include "stream/field_table.h"
#include "stream/section_reader.h"
#include "stream/section_writer.h"

namespace tarnwick {

/// The key numbers: model and parameters; how a fit runs; templates.
inline constexpr int kModelSection = 39;
inline constexpr int kRunSection = 43;
inline constexpr int kTemplateSection = 45;
/// How points weigh, and bounds and ties of parameters: the first of the keys that hold them, and the last. Each has a number of
/// its own and is written only where it differs from a new model's.
inline constexpr int kWeightSection = 69;
inline constexpr int kLastWeightKey = 76;

/// What is stored of a model, how a fit runs, of a parameter and of a template, each in the order of the stream.
FieldTable<FitSettings> CurveFitModelFields();
FieldTable<FitSettings> CurveFitRunFields();
FieldTable<ParameterSettings> ParameterFields();
FieldTable<TemplateSettings> TemplateFields();
/// Weights, errors and loss.
FieldTable<FitSettings> WeightFields();

/// Writes every value of the section `number` (one of the four): as a key of that number, the last as several.
void WriteCurveFitKeys(SectionWriter& writer, int number, const FitSettings& settings);

/// Collects a model from keys as they come, in any mix of their numbers, each number's values in their order.
class CurveFitReader {
 public:
  static bool Knows(int number);

  /// Reads the pending value of key `number`, which it must know. Values that are out of range leave their default; values
  /// beyond the announced number of parameters or templates are passed over. Throws StreamError.
  void Take(int number, SectionReader& reader);
  /// True when a value of the model section was taken.
  bool MetModel() const { return model_.taken > 0; }
  /// The model; a section of which no key came has its defaults. Throws StreamError when one ended too early.
  FitSettings Finish();

  /// How far a section has come.
  struct Progress {
    std::size_t taken = 0;
    std::int32_t announced = 0;  ///< items of its list
  };

 private:
  void TakeLimit(int number, SectionReader& reader);

  FitSettings settings_;
  std::map<std::int32_t, ParameterSettings> limits_;  // bounds and ties by the parameter's number
  std::int32_t limited_ = 0;                          // the one that limits now belong to
  Progress model_;
  Progress run_;
  Progress templates_;
};

/// The whole model: its sections and the end mark.
std::string StoredModel(const FitSettings& settings, WriterMode mode);

/// What StoredModel wrote, in either mode; keys of other numbers are passed over. Throws StreamError on bytes that are no
/// model: without a model section, cut off, or with anything behind the end mark.
FitSettings ReadStoredModel(std::string_view bytes);
/// The same from a reader of all the bytes, whose position is that of the trouble then.
FitSettings ReadStoredModel(ValueReader& values);

}  // namespace tarnwick
