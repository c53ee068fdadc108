#include "fit/model/curve_fit_file.h"

#include <array>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "stream/stream_error.h"

namespace tarnwick {

namespace {

using namespace control;
using S = FitSettings;
using P = ParameterSettings;
using T = TemplateSettings;

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::string_view kModelName = "CurFit";
constexpr std::string_view kCurveFitName = "CurveFit";

constexpr std::array kStatuses = {
    FieldChoice{FitStatus::cf_None, "Nothing"},
    FieldChoice{FitStatus::cf_Function, "The function"},
    FieldChoice{FitStatus::cf_FinResult, "The result of the fit"},
    FieldChoice{FitStatus::cf_EveryStep, "Every step of the fit"},
};

constexpr std::array kMethods = {
    FieldChoice{FitProcType::cfp_Powell, "Powell"},
    FieldChoice{FitProcType::cfp_Simplex, "Simplex"},
    FieldChoice{FitProcType::cfp_ConjGrad, "Conjugate gradient"},
    FieldChoice{FitProcType::cfp_Newton, "Newton-type"},
    FieldChoice{FitProcType::cfp_SimplexPowell, "Simplex, then Powell"},
};

// Each table in the order of the stream: a reader goes by the order, not by the numbers.
const Field<S> kModelFields[] = {
    {kModelSection, kModelName, kVia<&S::Status>, {"Show", "Curve", ChoiceOf(kStatuses)}, {0, 3}},
    {kModelSection, kModelName, &S::XVarName, {"Name of X", "Expression", kText}},
    {kModelSection,
     kModelName,
     &S::Expression,
     {"Mathematical or logical expression:", "Expression", kExpression}},
    {kModelSection,
     kModelName,
     &S::NPoints,
     {"# of Points", "Curve", WholeWithin(1, kMost)},
     {1, kMost}},
    {kModelSection, kModelName, &S::CurveShown, {"Show the curve", "Curve", kCheckBox}},
    {kModelSection, kModelName, &S::CurveColor, {"Color", "Curve", kColor}},
    {kModelSection, kModelName, &S::CurveStyle, {"Style", "Curve", kLineStyle}},
    {kModelSection, kModelName, &S::CurveWidth, {"Width", "Curve", WholeWithin(1, 100, "px")}},
};

const Field<P> kParameterFields[] = {
    {kModelSection, kModelName, &P::Name, {"Name", "Parameter", kText}},
    {kModelSection, kModelName, &P::Value, {"Value", "Parameter", kNumber}},
    {kModelSection, kModelName, &P::StartDev, {"Starting Deviation:", "Parameter", kNumber}},
    {kModelSection, kModelName, &P::FinalDev, {"Final Deviation:", "Parameter", kNumber}},
    {kModelSection, kModelName, &P::Vary, {"Vary", "Parameter", kCheckBox}},
    {kModelSection, kModelName, &P::Printed, {"Printed", "Parameter", kCheckBox}},
    {kModelSection, kModelName, &P::Description, {"Description", "Parameter", kText}},
    {kModelSection, kModelName, &P::Units, {"Units:", "Parameter", kText}},
};

const Field<S> kRunFields[] = {
    {kRunSection,
     kCurveFitName,
     Property<S, double>{[](const S& s) { return s.Tolerance; },
                         [](S& s, double v) {
                           if (v > 0) s.Tolerance = v;
                         }},
     {"Tolerance", "Fit",
      RealWithin(std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::max())}},
    {kRunSection, kCurveFitName, &S::LeftMarginUsed, {"Use the left margin", "Fit", kCheckBox}},
    {kRunSection, kCurveFitName, &S::RightMarginUsed, {"Use the right margin", "Fit", kCheckBox}},
    {kRunSection, kCurveFitName, &S::LeftMargin, {"Left Margin", "Fit", kMoment}},
    {kRunSection, kCurveFitName, &S::RightMargin, {"Right Margin", "Fit", kMoment}},
    {kRunSection,
     kCurveFitName,
     &S::IterMax,
     {"Max .# of Iterations", "Fit", WholeWithin(1, kMost)},
     {1, kMost}},
    {kRunSection, kCurveFitName, kVia<&S::ProcType>, {"Method", "Fit", ChoiceOf(kMethods)}, {0, 4}},
};

const Field<T> kTemplateFields[] = {
    {kTemplateSection, kCurveFitName, &T::Name, {"Name", "Template", kText}},
    {kTemplateSection, kCurveFitName, &T::Text, {"Stands for", "Template", kExpression}},
    {kTemplateSection, kCurveFitName, &T::Description, {"Description", "Template", kText}},
};

constexpr std::array kWeights = {
    FieldChoice{FitWeights::Automatic, "Errors of Y where there are some"},
    FieldChoice{FitWeights::None, "None"},
    FieldChoice{FitWeights::Errors, "Errors of Y"},
    FieldChoice{FitWeights::Counts, "Counts, by the model's value"},
    FieldChoice{FitWeights::Relative, "Relative to the model's value"},
};
constexpr std::array kErrors = {
    FieldChoice{FitErrors::Automatic, "As the weights tell"},
    FieldChoice{FitErrors::Absolute, "Absolute"},
    FieldChoice{FitErrors::Scaled, "Scaled by the residuals"},
};
constexpr std::array kLosses = {
    FieldChoice{FitLoss::Linear, "Linear"},
    FieldChoice{FitLoss::SoftL1, "Soft L1"},
    FieldChoice{FitLoss::Huber, "Huber"},
    FieldChoice{FitLoss::Cauchy, "Cauchy"},
};

// The numbers of the keys behind kWeightSection. Of a parameter: its number from 1, then what is not that of a new one.
constexpr int kErrorsKey = 70;
constexpr int kLossKey = 71;
constexpr int kLossScaleKey = 72;
constexpr int kLimitedKey = 73;
constexpr int kLowKey = 74;
constexpr int kHighKey = 75;
constexpr int kTieKey = 76;

const Field<S> kWeightFields[] = {
    {kWeightSection,
     "FitWeights",
     kVia<&S::weighting, &FitWeighting::weights>,
     {"Weights", "Weights", ChoiceOf(kWeights)},
     {0, 4},
     [](const S& s) { return s.weighting.weights != FitWeights::Automatic; }},
    {kErrorsKey,
     "FitErrors",
     kVia<&S::weighting, &FitWeighting::errors>,
     {"Errors", "Weights", ChoiceOf(kErrors)},
     {0, 2},
     [](const S& s) { return s.weighting.errors != FitErrors::Automatic; }},
    {kLossKey,
     "FitLoss",
     kVia<&S::weighting, &FitWeighting::loss>,
     {"Loss", "Weights", ChoiceOf(kLosses)},
     {0, 3},
     [](const S& s) { return s.weighting.loss != FitLoss::Linear; }},
    {kLossScaleKey,
     "FitLossScale",
     Property<S, double>{[](const S& s) { return s.weighting.loss_scale; },
                         [](S& s, double v) {
                           if (v > 0 && std::isfinite(v)) s.weighting.loss_scale = v;
                         }},
     {"Scale of the loss", "Weights", RealWithin(0, std::numeric_limits<double>::max())},
     {},
     [](const S& s) { return s.weighting.loss_scale > 0; }},
};

void WriteLimits(SectionWriter& writer, const std::vector<P>& parameters) {
  const P none;
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const P& one = parameters[i];
    if (one.Low == none.Low && one.High == none.High && one.Tie.empty()) continue;
    writer.WriteInteger(kLimitedKey, "LimitsOf", static_cast<std::int32_t>(i + 1));
    if (one.Low != none.Low) writer.WriteFloat(kLowKey, "Low", one.Low);
    if (one.High != none.High) writer.WriteFloat(kHighKey, "High", one.High);
    if (!one.Tie.empty()) writer.WriteString(kTieKey, "Tie", one.Tie);
  }
}

template <class Owner>
void ReadInto(SectionReader& reader, const Field<Owner>& field, Owner& owner) {
  SetField(field, owner, ReadFieldValue(reader, GetField(field, owner)));
}

template <class Item>
void WriteList(SectionWriter& writer, FieldTable<Item> fields, const std::vector<Item>& items) {
  writer.WriteInteger(fields.front().number, fields.front().key,
                      static_cast<std::int32_t>(items.size()));
  for (const Item& item : items) WriteFields<Item>(writer, fields, item);
}

using Progress = CurveFitReader::Progress;

/// Reads the next value of the section's head; false when the head is over.
bool TakeHead(SectionReader& reader, FieldTable<S> head, Progress& progress, S& settings) {
  if (progress.taken >= head.size()) return false;
  ReadInto(reader, head[progress.taken], settings);
  return true;
}

/// Reads the next value behind the head: the number of items, then their values. Items are made as they come: the number
/// alone costs nothing.
template <class Item>
void TakeList(SectionReader& reader, std::size_t head, FieldTable<Item> fields, Progress& progress,
              std::vector<Item>& items) {
  if (progress.taken == head) {
    progress.announced = reader.ReadAsInteger();
    if (progress.announced < 0) throw StreamError(kUnexpectedValue);
    return;
  }
  const std::size_t place = progress.taken - head - 1;
  if (place / fields.size() >= static_cast<std::size_t>(progress.announced)) {
    return reader.SkipValue();
  }
  if (place % fields.size() == 0) items.emplace_back();
  ReadInto(reader, fields[place % fields.size()], items.back());
}

/// Throws StreamError when a section began and did not come to its end.
void CheckComplete(const Progress& progress, std::size_t head, std::size_t per_item) {
  const std::size_t expected = head + static_cast<std::size_t>(progress.announced) * per_item;
  if (progress.taken > 0 && progress.taken < expected) throw StreamError(kUnexpectedEnd);
}

}  // namespace

FieldTable<FitSettings> CurveFitModelFields() {
  return kModelFields;
}
FieldTable<FitSettings> CurveFitRunFields() {
  return kRunFields;
}
FieldTable<ParameterSettings> ParameterFields() {
  return kParameterFields;
}
FieldTable<TemplateSettings> TemplateFields() {
  return kTemplateFields;
}
FieldTable<FitSettings> WeightFields() {
  return kWeightFields;
}

void WriteCurveFitKeys(SectionWriter& writer, int number, const FitSettings& settings) {
  switch (number) {
    case kModelSection:
      WriteFields<S>(writer, kModelFields, settings);
      return WriteList<P>(writer, kParameterFields, settings.parameters);
    case kRunSection:
      return WriteFields<S>(writer, kRunFields, settings);
    case kTemplateSection:
      return WriteList<T>(writer, kTemplateFields, settings.templates);
    case kWeightSection:
      WriteFields<S>(writer, kWeightFields, settings);
      return WriteLimits(writer, settings.parameters);
    default:
      throw StreamError(kIllegalCall);
  }
}

bool CurveFitReader::Knows(int number) {
  return number == kModelSection || number == kRunSection || number == kTemplateSection ||
         (number >= kWeightSection && number <= kLastWeightKey);
}

void CurveFitReader::Take(int number, SectionReader& reader) {
  switch (number) {
    case kModelSection:
      if (!TakeHead(reader, kModelFields, model_, settings_)) {
        TakeList<P>(reader, std::size(kModelFields), kParameterFields, model_,
                    settings_.parameters);
      }
      ++model_.taken;
      return;
    case kRunSection:
      if (!TakeHead(reader, kRunFields, run_, settings_)) reader.SkipValue();
      ++run_.taken;
      return;
    case kTemplateSection:
      TakeList<T>(reader, 0, kTemplateFields, templates_, settings_.templates);
      ++templates_.taken;
      return;
    default:
      if (!Knows(number)) throw StreamError(kReadingError2);
      if (!ReadField<S>(reader, number, kWeightFields, settings_)) TakeLimit(number, reader);
  }
}

/// Bounds that are no numbers are none.
void CurveFitReader::TakeLimit(int number, SectionReader& reader) {
  if (number == kLimitedKey) {
    limited_ = reader.ReadAsInteger();
    return;
  }
  P& one = limits_[limited_];
  if (number == kTieKey) {
    one.Tie = reader.ReadAsString();
    return;
  }
  const double bound = reader.ReadAsFloat();
  if (!std::isfinite(bound)) return;
  (number == kLowKey ? one.Low : one.High) = bound;
}

FitSettings CurveFitReader::Finish() {
  for (const auto& [number, limits] : limits_) {
    if (number < 1 || std::cmp_greater(number, settings_.parameters.size())) continue;
    P& one = settings_.parameters[static_cast<std::size_t>(number) - 1];
    one.Low = limits.Low;
    one.High = limits.High;
    one.Tie = limits.Tie;
  }
  CheckComplete(model_, std::size(kModelFields) + 1, std::size(kParameterFields));
  CheckComplete(run_, std::size(kRunFields), 0);
  CheckComplete(templates_, 1, std::size(kTemplateFields));
  return std::exchange(settings_, {});
}

std::string StoredModel(const FitSettings& settings, WriterMode mode) {
  std::string bytes;
  SectionWriter writer(bytes, mode);
  for (const int number : {kModelSection, kRunSection, kTemplateSection, kWeightSection}) {
    WriteCurveFitKeys(writer, number, settings);
  }
  writer.WriteBoolean(0, "End", false);
  return bytes;
}

FitSettings ReadStoredModel(std::string_view bytes) {
  ValueReader values(bytes);
  return ReadStoredModel(values);
}

FitSettings ReadStoredModel(ValueReader& values) {
  SectionReader reader(values);
  CurveFitReader model;
  for (int number = reader.ReadKey(); number != 0; number = reader.ReadKey()) {
    if (CurveFitReader::Knows(number)) {
      model.Take(number, reader);
    } else {
      reader.SkipValue();
    }
  }
  if (!model.MetModel() || values.Left() > 0) throw StreamError(kUnexpectedValue);
  return model.Finish();
}

}  // namespace tarnwick
