#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "expr/words/expr_word.h"
#include "expr/words/express_list.h"
#include "expr/words/o_collection.h"
#include "expr/words/parser_exception.h"
#include "expr/words/sorted_collection.h"

namespace tarnwick {
namespace {

struct Item {
  int key = 0;
  std::string name;
};

class RecordingList final : public TOCollection<Item> {
 public:
  explicit RecordingList(std::vector<std::string>& freed) : TOCollection(3), freed_(freed) {}
  ~RecordingList() override { Clear(); }
  void FreeItem(Item* item) override {
    freed_.push_back(item->name);
    TOCollection::FreeItem(item);
  }

 private:
  std::vector<std::string>& freed_;
};

TEST(OCollection, FreesItsItemsInOrder) {
  std::vector<std::string> freed;
  {
    RecordingList list(freed);
    list.Add(std::make_unique<Item>(Item{1, "a"}));
    list.Add(std::make_unique<Item>(Item{2, "b"}));
    list.Clear();
    EXPECT_EQ(list.Count(), 0U);
    list.Add(std::make_unique<Item>(Item{3, "c"}));
  }
  EXPECT_EQ(freed, (std::vector<std::string>{"a", "b", "c"}));
}

class ByKey final : public TSortedCollection<Item> {
 public:
  int Compare(const Item& key1, const Item& key2) const override { return key1.key - key2.key; }
  std::string Names() const {
    std::string names;
    for (const Item* const item : *this) names += item->name;
    return names;
  }
};

TEST(SortedCollection, SearchesForThePlaceOfAKey) {
  ByKey list;
  EXPECT_EQ(list.Search({5, ""}).index, 0U);
  for (const int key : {4, 2, 6, 8})
    list.Insert(std::make_unique<Item>(Item{key, std::to_string(key)}));
  EXPECT_EQ(list.Names(), "2468");
  const std::size_t places[] = {0, 0, 0, 1, 1, 2, 2, 3, 3, 4};
  for (int key = 0; key < 10; ++key) {
    const SearchResult result = list.Search({key, ""});
    EXPECT_EQ(result.found, key > 0 && key < 9 && key % 2 == 0) << key;
    EXPECT_EQ(result.index, places[key]) << key;
  }
}

TEST(SortedCollection, RefusesOrReplacesATakenKey) {
  ByKey list;
  list.Insert(std::make_unique<Item>(Item{1, "a"}));
  const std::unique_ptr<Item> refused = list.Insert(std::make_unique<Item>(Item{1, "b"}));
  ASSERT_TRUE(refused);
  EXPECT_EQ(list.Names(), "a");
  EXPECT_EQ(list.Replace(std::make_unique<Item>(Item{1, "c"}))->name, "a");
  EXPECT_EQ(list.Names(), "c");
  EXPECT_FALSE(list.Replace(std::make_unique<Item>(Item{2, "d"})));
  EXPECT_EQ(list.IndexOf({2, ""}), 1U);
  EXPECT_FALSE(list.IndexOf({3, ""}));
}

TEST(SortedCollection, FindsTheVeryItemAmongDuplicates) {
  ByKey list;
  list.SetDuplicates(true);
  for (const char* const name : {"a", "b", "c"}) list.Insert(std::make_unique<Item>(Item{1, name}));
  list.Insert(std::make_unique<Item>(Item{0, "z"}));
  ASSERT_EQ(list.Count(), 4U);
  for (std::size_t i = 0; i < list.Count(); ++i) EXPECT_EQ(list.IndexOf(list[i]), i);
  EXPECT_FALSE(list.IndexOf(Item{1, "d"}));
  EXPECT_EQ(list.Search({1, ""}).index, 1U);
}

TEST(ExpressList, MatchesNamesInAnyCase) {
  TExpressList words;
  words.Insert(std::make_unique<TDoubleConstant>("Alpha", 1.0));
  EXPECT_TRUE(words.Insert(std::make_unique<TDoubleConstant>("ALPHA", 2.0)));
  words.Insert(std::make_unique<TDoubleConstant>("al", 3.0));
  ASSERT_NE(words.Find("aLPHa"), nullptr);
  EXPECT_EQ(words.Find("alpha")->Name(), "alpha");
  EXPECT_EQ(*words.Find("alpha")->AsPointer(), 1);
  EXPECT_EQ(words.Find("alp"), nullptr);
}

TEST(Words, AreMadeAsWritten) {
  EXPECT_THROW(TFunction("f", 0, Notation::Function, 7, nullptr), EParserException);
  EXPECT_NO_THROW(TFunction("f", 0, Notation::Function, 6, nullptr));
  EXPECT_TRUE(IsUndefined(TDoubleConstant("c", "").Value()));
  EXPECT_EQ(TDoubleConstant("1.5e3", "1.5e3").Value(), 1500);
  EXPECT_THROW(TDoubleConstant("c", "1e"), EParserException);
  const TStringConstant text("'Ab'");
  EXPECT_EQ(text.Name(), "'ab'");
  EXPECT_EQ(text.AsString(), "Ab");
  EXPECT_EQ(TStringConstant("'a").AsString(), "'a");
  EXPECT_EQ(TStringConstant("'").AsString(), "");
  TGeneratedVariable variable("v");
  EXPECT_EQ(variable.ResultType(), WordKind::Number);
  variable.SetVarType(WordKind::String);
  variable.SetStringValue("s");
  EXPECT_EQ(variable.ResultType(), WordKind::String);
  EXPECT_EQ(variable.AsString(), "s");
}

}  // namespace
}  // namespace tarnwick
