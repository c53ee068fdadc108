#include "stream/field_table.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarnwick {
namespace {

enum class Side : std::uint8_t { Left, Right };

struct Source {
  std::int32_t headers = 1;
  Side side = Side::Left;
  bool operator==(const Source&) const = default;
};

struct Thing {
  std::string name = "thing";
  double max = 1.5;
  bool shown = true;
  std::uint8_t style = 3;
  Color color{0xFF};
  Font font;
  Source source;
  bool merge = true;
  int calls = 0;  // not stored: counts the setter's
  double rate = 0;

  void SetRate(double value) {
    rate = value;
    ++calls;
  }
};

constexpr Field<Thing> kThingFields[] = {
    {1, "Name", &Thing::name},
    {6, "Max", &Thing::max},
    {2, "Shown", &Thing::shown},
    {3, "Style", &Thing::style},
    {4, "Color", &Thing::color},
    {5, "Font", &Thing::font},
    {7, "Headers", kVia<&Thing::source, &Source::headers>},
    {8, "Side", kVia<&Thing::source, &Source::side>, {}, {0, 1}},
    {9, "Rate",
     Property<Thing, double>{[](const Thing& t) { return t.rate; },
                             [](Thing& t, double v) { t.SetRate(v); }}},
    {48, "Merge", &Thing::merge, {}, {}, [](const Thing& t) { return !t.merge; }},
};

Thing Unusual() {
  return {"\u03BB",          -0.25, false, 200, Color{-1}, {"Times", 9, {}, true},
          {12, Side::Right}, false, 0,     7.5};
}

std::string Written(const Thing& thing, WriterMode mode) {
  std::string bytes;
  SectionWriter writer(bytes, mode);
  WriteSection(writer, {"Section:", "Thing"}, kThingFields, thing);
  return bytes;
}

Thing Read(const std::string& bytes) {
  ValueReader values(bytes);
  SectionReader reader(values);
  Thing thing;
  ReadSection(reader, kThingFields, thing);
  return thing;
}

TEST(FieldTable, SectionsReturnInBothModes) {
  for (const WriterMode mode : {WriterMode::Typed, WriterMode::Text}) {
    const Thing read = Read(Written(Unusual(), mode));
    EXPECT_TRUE(FieldsEqual(kThingFields, read, Unusual()));
    EXPECT_EQ(read.source, Unusual().source);
    EXPECT_EQ(read.calls, 1);
  }
}

TEST(FieldTable, ComparesEveryField) {
  const Thing unusual = Unusual();
  for (const Field<Thing>& field : kThingFields) {
    Thing changed;
    ASSERT_TRUE(SetField(field, changed, GetField(field, unusual))) << field.key;
    EXPECT_FALSE(FieldsEqual(kThingFields, changed, Thing())) << field.key;
  }
  Thing undefined;
  undefined.max = kUndefined;
  EXPECT_TRUE(FieldsEqual(kThingFields, undefined, undefined));
  EXPECT_FALSE(FieldsEqual(kThingFields, undefined, Thing()));
}

TEST(FieldTable, ConditionsRuleWriting) {
  EXPECT_EQ(Written(Thing(), WriterMode::Text).find("Merge"), std::string::npos);
  EXPECT_NE(Written(Unusual(), WriterMode::Text).find("Merge48S"), std::string::npos);
}

TEST(FieldTable, PassesOverUnknownKeysAndValuesNotAllowed) {
  std::string bytes;
  SectionWriter writer(bytes);
  writer.WriteFont(77, "", Font());
  writer.WriteInteger(8, "", 2);     // no such side
  writer.WriteInteger(3, "", 256);   // no such byte
  writer.WriteString(6, "", "2,5");  // another letter than the field's own
  writer.WriteEndOfSection();
  const Thing thing = Read(bytes);
  EXPECT_EQ(thing.source.side, Side::Left);
  EXPECT_EQ(thing.style, 3);
  EXPECT_EQ(thing.max, 2.5);
}

// Two rows of one number: the condition decides for reading as well.
TEST(FieldTable, ConditionsChooseAmongRowsOfOneNumber) {
  struct Either {
    bool by_count = false;
    std::int32_t count = 0;
    double factor = 0;
  };
  static constexpr Field<Either> kFields[] = {
      {1, "ByCount", &Either::by_count},
      {2, "Value", &Either::count, {}, {}, [](const Either& e) { return e.by_count; }},
      {2, "Value", &Either::factor, {}, {}, [](const Either& e) { return !e.by_count; }},
  };
  for (const bool by_count : {false, true}) {
    std::string bytes;
    SectionWriter writer(bytes);
    WriteSection(writer, {"", "Either"}, kFields, Either{by_count, 4, 0.5});
    ValueReader values(bytes);
    SectionReader reader(values);
    Either read;
    ReadSection(reader, kFields, read);
    EXPECT_EQ(read.count, by_count ? 4 : 0);
    EXPECT_EQ(read.factor, by_count ? 0 : 0.5);
  }
}

TEST(FieldTable, ListsFieldsInOrder) {
  std::string listed;
  VisitFields(kThingFields, Thing(), [&](const FieldView& field) {
    listed += std::to_string(field.number) + field.letter + std::string(field.key) + ' ';
  });
  EXPECT_EQ(listed,
            "1SName 6DMax 2BShown 3IStyle 4IColor 5FFont 7IHeaders 8ISide 9DRate 48BMerge ");
}

// Whatever the damage: read, or refused with a message; never a crash, never more memory than the bytes can mean.
TEST(FieldTable, EveryByteDamaged) {
  for (const WriterMode mode : {WriterMode::Typed, WriterMode::Text}) {
    const std::string good = Written(Unusual(), mode);
    int refused = 0;
    for (std::size_t i = 0; i < good.size(); ++i) {
      for (int byte = 0; byte < 256; ++byte) {
        std::string bad = good;
        bad[i] = static_cast<char>(byte);
        try {
          Read(bad);
        } catch (const StreamError&) {
          ++refused;
        }
      }
      EXPECT_THROW(Read(good.substr(0, i)), StreamError) << i;
    }
    EXPECT_GT(refused, 0);
  }
}

}  // namespace
}  // namespace tarnwick
