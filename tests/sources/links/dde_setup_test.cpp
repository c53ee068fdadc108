#include "sources/links/dde_setup.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/error.h"
#include "sources/links/link_text.h"
#include "support/refusal.h"

namespace tarnwick {
namespace {

/// What a program on the other side does, and what it was asked.
struct OtherSide {
  bool takes_names = true;
  bool is_there = true;
  std::string answer;
  LinkTransport::Changed changed;
  std::string calls;
};

class ScriptedTransport final : public LinkTransport {
 public:
  explicit ScriptedTransport(OtherSide& other) : other_(other) {}

  bool SetLink(const std::string& service, const std::string& topic) override {
    other_.calls += "set " + service + ' ' + topic + ';';
    return other_.takes_names;
  }
  bool Open() override {
    other_.calls += "open;";
    return other_.is_there;
  }
  void Close() override { other_.calls += "close;"; }
  std::string RequestData(const std::string& item) override {
    other_.calls += "request " + item + ';';
    return other_.answer;
  }
  void Bind(const std::string& item, Changed changed) override {
    other_.calls += "bind " + item + ';';
    other_.changed = std::move(changed);
  }
  std::string Trouble() const override { return {}; }

 private:
  OtherSide& other_;
};

/// A link whose callbacks write down what they are told.
struct Heard {
  Heard(OtherSide& other, LinkReads reads, LinkUpdates updates)
      : link(std::make_unique<ScriptedTransport>(other), reads, updates) {
    link.SetOnData([this](const TDdeSetup& told) { calls += "data " + told.Text() + ';'; });
    link.SetOnError([this](const std::string& error) { calls += "error " + error + ';'; });
  }
  TDdeSetup link;
  std::string calls;
};

TEST(DdeSetup, SetsTheLinkByItsTextAndTellsWhatFails) {
  struct Case {
    const char* shows;
    LinkUpdates updates;
    bool takes_names, is_there;
    std::string asked, error;
  };
  const Case cases[] = {
      {"polled", LinkUpdates::OnRequest, true, true, "close;set srv sheet;open;", ""},
      {"hot", LinkUpdates::Hot, true, true, "close;set srv sheet;open;bind R1C1;", ""},
      {"no such names", LinkUpdates::Hot, false, true, "close;set srv sheet;",
       "\"srv|sheet!R1C1\" : can not set link to DDE server!"},
      {"nobody there", LinkUpdates::Hot, true, false, "close;set srv sheet;open;",
       "\"srv|sheet!R1C1\" : can not open link to DDE server!"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.shows);
    OtherSide other;
    other.takes_names = one.takes_names;
    other.is_there = one.is_there;
    Heard heard(other, LinkReads::Numbers, one.updates);
    heard.link.SetLink("srv|sheet!R1C1");
    EXPECT_EQ(other.calls, one.asked);
    EXPECT_EQ(heard.link.Item(), "R1C1");
    EXPECT_EQ(heard.link.Error(), one.error);
    EXPECT_EQ(heard.calls, one.error.empty() ? "" : "error " + one.error + ';');
    other.takes_names = other.is_there = true;
    heard.link.SetLink("srv|sheet!R1C1");
    EXPECT_EQ(heard.link.Error(), "") << "the error before is not cleared";
  }
}

TEST(DdeSetup, ReceivesAnswersAndChanges) {
  struct Case {
    const char* text;
    LinkReads reads;
    std::string kept_text;
    double value;
    std::string calls;
  };
  const std::string unread = "Error reading DDE value : ";
  const Case cases[] = {
      {"3.25", LinkReads::Numbers, "3.25", 3.25, "data 3.25;"},
      {"", LinkReads::Numbers, "1", 1, ""},
      {"abc", LinkReads::Numbers, "abc", 1, "error " + unread + "abc;"},
      {"2,5", LinkReads::Numbers, "2,5", 1, "error " + unread + "2,5;"},
      {"abc", LinkReads::Texts, "abc", 0, "data abc;"},
      {"", LinkReads::Texts, "1", 0, ""},
  };
  for (const Case& one : cases) {
    for (const LinkUpdates updates : {LinkUpdates::OnRequest, LinkUpdates::Hot}) {
      SCOPED_TRACE(std::string(one.text) + (updates == LinkUpdates::Hot ? ", hot" : ""));
      OtherSide other;
      Heard heard(other, one.reads, updates);
      heard.link.SetLink("srv|sheet!R1C1");
      const auto receive = [&](const char* text) {
        other.answer = text;
        updates == LinkUpdates::Hot ? other.changed(text) : heard.link.Request();
      };
      receive("1");
      heard.calls.clear();
      receive(one.text);
      EXPECT_EQ(heard.link.Text(), one.kept_text);
      EXPECT_EQ(heard.link.Value(), one.value);
      EXPECT_EQ(heard.calls, one.calls);
    }
  }
}

TEST(LinkText, IsSplitAtItsMarks) {
  struct Case {
    const char* link;
    LinkParts parts;
    bool stands_in_list;
  };
  const Case cases[] = {
      {"srv|sheet!R1C1", {"srv", "sheet", "R1C1"}, true},
      {"a.b|/x/y!i!j", {"a.b", "/x/y", "i!j"}, true},
      {"s!x|t!i", {"s!x", "t", "i"}, true},
      {"srv|sheet", {"srv", "sheet", ""}, false},
      {"srv!item", {"", "", "item"}, false},
      {"|t!i", {"", "t", "i"}, false},
      {":1.5|t!i", {":1.5", "t", "i"}, false},
      {"", {}, false},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(SplitLink(one.link), one.parts) << one.link;
    EXPECT_EQ(!WrongWithLink(one.link), one.stands_in_list) << one.link;
  }
}

TEST(LinkText, ListsAreSeparatedByAnyOfThreeMarks) {
  using Texts = std::vector<std::string>;
  const Texts links = {"a|b!c", "a|b!d", "e|f!g h", "e|f!c"};
  EXPECT_EQ(ReadLinkList(" a|b!c,a|b!d;;e|f!g h : e|f!c,"), links);
  EXPECT_EQ(ReadLinkList(JoinLinks(links)), links);
  EXPECT_EQ(NamesOfLinks(links), (Texts{"a|b!c", "d", "g h", "e|f!c"}));
  std::string many;
  for (int i = 0; i < 300; ++i) many += "a|b!c,";
  for (const std::string& list : {std::string(), std::string(" ,;:"), std::string("a|b!c,d"), many})
    EXPECT_NE(testing::Refusal([&] { ReadLinkList(list); }), "") << list;
}

}  // namespace
}  // namespace tarnwick
