// Reads arbitrary bytes as counts, a section and a point block, asking for types that the bytes choose too. What reads well
// must come back the same when written and read again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "stream/field_table.h"

namespace tarnwick {
namespace {

struct Thing {
  std::string text;
  std::int32_t integer = 0;
  double real = 0;
  bool boolean = false;
  Color color;
  Font font;
  std::vector<StreamPoint> points;
};

constexpr Field<Thing> kFields[] = {
    {1, "Text", &Thing::text},       {2, "Integer", &Thing::integer}, {3, "Real", &Thing::real},
    {4, "Boolean", &Thing::boolean}, {5, "Color", &Thing::color},     {6, "Font", &Thing::font},
};

Thing ReadThing(ValueReader& values) {
  Thing thing;
  SectionReader reader(values);
  ReadSection(reader, kFields, thing);
  for (std::int32_t left = reader.ReadPointBlockHeader(); left > 0; --left) {
    thing.points.push_back(reader.ReadPoint());
  }
  return thing;
}

void Require(bool holds) {
  if (!holds) std::abort();
}

void CheckReturns(const Thing& thing, WriterMode mode) {
  std::string bytes;
  SectionWriter writer(bytes, mode);
  WriteSection(writer, {"Section:", "Thing"}, kFields, thing);
  writer.WritePointBlockHeader(static_cast<std::int32_t>(thing.points.size()));
  for (const StreamPoint& point : thing.points) writer.WritePoint(point.x, point.y);
  ValueReader values(bytes);
  const Thing back = ReadThing(values);
  Require(values.Left() == 0);
  Require(FieldsEqual(kFields, thing, back));
  Require(back.points.size() == thing.points.size());
  for (std::size_t i = 0; i < back.points.size(); ++i) {
    Require(SameValue(back.points[i].x, thing.points[i].x));
    Require(SameValue(back.points[i].y, thing.points[i].y));
  }
}

void AskForEveryType(std::string_view bytes) {
  ValueReader values(bytes);
  SectionReader reader(values);
  while (true) {
    switch (reader.ReadKey() % 6) {
      case 0:
        reader.SkipValue();
        break;
      case 1:
        Require(reader.ReadAsString().size() <= bytes.size() * 3 + 32);
        break;
      case 2:
        reader.ReadAsInteger();
        break;
      case 3:
        reader.ReadAsFloat();
        break;
      case 4:
        reader.ReadAsBoolean();
        break;
      default:
        reader.ReadFont();
    }
  }
}

}  // namespace
}  // namespace tarnwick

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tarnwick;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  try {
    ValueReader values(bytes);
    const Thing thing = ReadThing(values);
    Require(thing.points.size() <= size);
    CheckReturns(thing, WriterMode::Typed);
    CheckReturns(thing, WriterMode::Text);
  } catch (const StreamError&) {
    // refused, as it should be
  }
  try {
    AskForEveryType(bytes);
  } catch (const StreamError&) {
    // the end of the bytes at the latest
  }
  return 0;
}
