#include "sources/links/link_source.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QTimer>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "data/import/import_file.h"
#include "data/import/load_source.h"
#include "data/packed/unpack.h"
#include "link_publisher.h"
#include "sources/all_source_kinds.h"
#include "sources/links/bus_names.h"
#include "sources/links/bus_transport.h"
#include "sources/links/link_supplier.h"
#include "sources/streams/stream_clock.h"
#include "support/cancelling_progress.h"
#include "support/refusal.h"

namespace tarnwick {
namespace {

using std::chrono::milliseconds;
using tarnwick_links::LinkPublisher;
using testing::Refusal;

LoadOptions WithAllKinds() {
  LoadOptions load;
  load.kinds = AllSourceKinds();
  return load;
}

TEST(BusNames, LinksAreMappedAsTheDocumentSays) {
  struct Case {
    const char* service;
    const char* topic;
    std::optional<QString> name, path;
  };
  const Case cases[] = {
      {"srv", "sheet", "org.tarnwick.link.srv", "/sheet"},
      {"de.lab.Reactor", "/runs/now", "de.lab.Reactor", "/runs/now"},
      {"my-lab", "a_b", "org.tarnwick.link.my-lab", "/a_b"},
      {"srv", "Book 1.x", "org.tarnwick.link.srv", "/Book_201_2ex"},
      {"*", "lab", "", "/lab"},
      {"two words", "/", std::nullopt, "/"},
      {"", "/a//b", std::nullopt, std::nullopt},
      {"a..b", "/a b", std::nullopt, std::nullopt},
      {"1st", "", std::nullopt, std::nullopt},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(BusNameOf(one.service), one.name) << one.service;
    EXPECT_EQ(ObjectPathOf(one.topic), one.path) << one.topic;
  }
}

ImportResult Import(const std::string& links, const ImportOptions& options = {}) {
  NoProgress unseen;
  return ImportOpened(OpenLinks(links, options, unseen), options, WithAllKinds(), MakeDataSeries);
}

TEST(LinkSource, OneRowOfPresentValuesOverTheClockOrALink) {
  LinkPublisher lab("lab", "oven");
  ASSERT_TRUE(lab.IsPublishing()) << lab.Why().toStdString();
  lab.Publish("t", 12.5);
  lab.Publish("temperature", 296.25);
  lab.Publish("heater", QStringLiteral("40 %"));
  lab.Publish("since", QStringLiteral("2024-03-04"));
  const std::string links = "lab|oven!temperature; lab|oven!heater: lab|oven!t, lab|oven!since";

  const ImportResult result = Import(links);
  ASSERT_EQ(result.series.size(), 3u) << "dates are left out";
  EXPECT_TRUE(result.x_is_date);
  EXPECT_EQ(result.x_name, "Date and time");
  TDataSeries& series = *result.series[1];
  EXPECT_EQ(series.SeriesName(), "heater");
  EXPECT_EQ(series.Source().DataSource, DataSourceKind::Dde);
  EXPECT_EQ(series.Source().DatasourceInfo, links);
  ASSERT_EQ(series.Points().Size(), 1);
  EXPECT_EQ(series.Points().At(0).y, 40);
  EXPECT_NEAR(series.Points().At(0).x, StreamClock().Now(), 1.0 / 1440);

  ImportOptions options;
  options.x_column = "t";
  options.y_columns = {"lab|oven!temperature"};
  const ImportResult over_link = Import(links, options);
  EXPECT_EQ(over_link.series.at(0)->Points().At(0).x, 12.5);
  EXPECT_EQ(over_link.series.at(0)->Points().At(0).y, 296.25);

  lab.Publish("heater", QStringLiteral("55 %"));
  TDataSeries* const all[] = {&series};
  EXPECT_TRUE(RefreshAll(all, WithAllKinds())[0].loaded);
  EXPECT_EQ(series.Points().At(0).y, 55);
}

TEST(LinkSource, WhoeverSendsIsHeard) {
  QDBusConnection shell = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "shell");
  QTimer each;
  QObject::connect(&each, &QTimer::timeout, [&] {
    for (const char* const text : {"", "296.4"}) {
      QDBusMessage signal = QDBusMessage::createSignal("/lab", "org.tarnwick.Link", "Changed");
      signal << "temperature" << text;
      shell.send(signal);
    }
  });
  each.start(50);
  EXPECT_EQ(AskLinks({"*|lab!temperature"})[0].text, "296.4") << "an empty text is no value";
  QDBusConnection::disconnectFromBus("shell");
}

/// Has the interface, and answers to nothing.
class SilentPublisher final : public QDBusVirtualObject {
 public:
  SilentPublisher() {
    bus_.registerVirtualObject("/deaf", this);
    bus_.registerService("org.tarnwick.link.silent");
  }
  ~SilentPublisher() override { QDBusConnection::disconnectFromBus("silent"); }
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage&, const QDBusConnection&) override { return true; }

 private:
  QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "silent");
};

TEST(LinkSource, WhatDoesNotAnswerIsToldAndThePointsStay) {
  LinkPublisher lab("lab", "oven");
  lab.Publish("temperature", 296.25);
  lab.Publish("state", QStringLiteral("abc"));
  const SilentPublisher silent;
  struct Case {
    const char* link;
    const char* told;
  };
  const Case cases[] = {
      {"two words|oven!t",
       "\"two words|oven!t\" : can not set link to DDE server! (\"two words\" "
       "is no name on the session bus)"},
      {"gone|oven!t",
       "\"gone|oven!t\" : can not open link to DDE server! (no program has the name "
       "org.tarnwick.link.gone on the session bus)"},
      {"lab|cellar!t", "The link \"lab|cellar!t\" gives no value (No such object path"},
      {"lab|oven!pressure", "The link \"lab|oven!pressure\" gives no value"},
      {"lab|oven!state", "Error reading DDE value : abc (of the link \"lab|oven!state\")"},
      {"silent|deaf!t", "The link \"silent|deaf!t\" gives no value (none came within 2 s)"},
      {"lab|oven", "A link is written service|topic!item: \"lab|oven\""},
  };
  ImportResult result = Import("lab|oven!temperature");
  TDataSeries& series = *result.series.at(0);
  TDataSeries* const all[] = {&series};
  for (const Case& one : cases) {
    series.Source().DatasourceInfo = std::string("lab|oven!temperature,") + one.link;
    const std::string refusal = Refusal([&] { RefreshAll(all, WithAllKinds()); });
    EXPECT_TRUE(refusal.starts_with(one.told)) << refusal;
    EXPECT_EQ(series.Points().Size(), 1);
  }
}

TEST(LinkSource, AskingIsCancelledBetweenTwoLinks) {
  const SilentPublisher silent;
  testing::CancellingProgress cancelled(0);
  const auto begun = std::chrono::steady_clock::now();
  EXPECT_THROW(OpenLinks("silent|deaf!t,silent|deaf!u", {}, cancelled), UnpackingCancelled);
  EXPECT_LT(std::chrono::steady_clock::now() - begun, milliseconds(1500));
}

TEST(BusTransport, TheWindowsLiveWhileAnAnswerIsWaitedFor) {
  const SilentPublisher silent;
  BusTransport transport(std::make_shared<BusConnection>(), milliseconds(300));
  ASSERT_TRUE(transport.SetLink("silent", "deaf") && transport.Open());
  int ticks = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
  timer.start(10);
  EXPECT_EQ(transport.RequestData("t"), "");
  EXPECT_EQ(transport.Trouble(), "none came within 0.3 s");
  EXPECT_GT(ticks, 5);
}

}  // namespace
}  // namespace tarnwick
