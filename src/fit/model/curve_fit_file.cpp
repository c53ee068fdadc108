#include "fit/model/curve_fit_file.h"

#include <limits>
#include <utility>
#include <vector>

#include "stream/field_table.h"
#include "stream/stream_error.h"

namespace tarnwick {

namespace {

using S = FitSettings;
using P = ParameterSettings;
using T = TemplateSettings;

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::string_view kModelName = "CurFit";
constexpr std::string_view kCurveFitName = "CurveFit";

// Each table in the order of the stream: a reader goes by the order, not by the numbers.
const Field<S> kModelFields[] = {
    {kModelSection, kModelName, kVia<&S::Status>, {0, 3}},
    {kModelSection, kModelName, &S::XVarName},
    {kModelSection, kModelName, &S::Expression},
    {kModelSection, kModelName, &S::NPoints, {1, kMost}},
    {kModelSection, kModelName, &S::CurveShown},
    {kModelSection, kModelName, &S::CurveColor},
    {kModelSection, kModelName, &S::CurveStyle},
    {kModelSection, kModelName, &S::CurveWidth},
};

const Field<P> kParameterFields[] = {
    {kModelSection, kModelName, &P::Name},        {kModelSection, kModelName, &P::Value},
    {kModelSection, kModelName, &P::StartDev},    {kModelSection, kModelName, &P::FinalDev},
    {kModelSection, kModelName, &P::Vary},        {kModelSection, kModelName, &P::Printed},
    {kModelSection, kModelName, &P::Description}, {kModelSection, kModelName, &P::Units},
};

const Field<S> kRunFields[] = {
    {kRunSection, kCurveFitName,
     Property<S, double>{[](const S& s) { return s.Tolerance; },
                         [](S& s, double v) {
                           if (v > 0) s.Tolerance = v;
                         }}},
    {kRunSection, kCurveFitName, &S::LeftMarginUsed},
    {kRunSection, kCurveFitName, &S::RightMarginUsed},
    {kRunSection, kCurveFitName, &S::LeftMargin},
    {kRunSection, kCurveFitName, &S::RightMargin},
    {kRunSection, kCurveFitName, &S::IterMax, {1, kMost}},
    {kRunSection, kCurveFitName, kVia<&S::ProcType>, {0, 4}},
};

const Field<T> kTemplateFields[] = {
    {kTemplateSection, kCurveFitName, &T::Name},
    {kTemplateSection, kCurveFitName, &T::Text},
    {kTemplateSection, kCurveFitName, &T::Description},
};

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

void WriteCurveFitKeys(SectionWriter& writer, int number, const FitSettings& settings) {
  switch (number) {
    case kModelSection:
      WriteFields<S>(writer, kModelFields, settings);
      return WriteList<P>(writer, kParameterFields, settings.parameters);
    case kRunSection:
      return WriteFields<S>(writer, kRunFields, settings);
    case kTemplateSection:
      return WriteList<T>(writer, kTemplateFields, settings.templates);
    default:
      throw StreamError(kIllegalCall);
  }
}

bool CurveFitReader::Knows(int number) {
  return number == kModelSection || number == kRunSection || number == kTemplateSection;
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
      throw StreamError(kReadingError2);
  }
}

FitSettings CurveFitReader::Finish() {
  CheckComplete(model_, std::size(kModelFields) + 1, std::size(kParameterFields));
  CheckComplete(run_, std::size(kRunFields), 0);
  CheckComplete(templates_, 1, std::size(kTemplateFields));
  return std::exchange(settings_, {});
}

std::string StoredModel(const FitSettings& settings, WriterMode mode) {
  std::string bytes;
  SectionWriter writer(bytes, mode);
  for (const int number : {kModelSection, kRunSection, kTemplateSection}) {
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
