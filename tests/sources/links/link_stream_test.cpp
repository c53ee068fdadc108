#include "sources/links/link_stream.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusMessage>
#include <memory>
#include <string>

#include "link_publisher.h"
#include "stream_watcher.h"
#include "support/refusal.h"

namespace tarnwick {
namespace {

using tarnwick_links::LinkPublisher;
using testing::Refusal;
using testing::StreamWatcher;

constexpr char kLinks[] = "lab|oven!time,lab|oven!a,lab|oven!b";

TDSInfo Links(const char* x, const char* y, const char* links = kLinks) {
  TDSInfo info;
  info.DataSource = DataSourceKind::Dde;
  info.DatasourceInfo = links;
  info.Follow = true;
  info.XDataColumn = x;
  info.YDataColumn = y;
  return info;
}

/// A stream that has been started; the program of the other side lives in this thread.
class Heard : public StreamWatcher {
 public:
  explicit Heard(const TDSInfo& info) : StreamWatcher(info) { stream->Start(); }

  bool When(const std::function<bool()>& wanted) {
    return Wait([&] {
      QCoreApplication::processEvents();
      return wanted();
    });
  }
  bool Tells(const std::string& text) {
    return When([&] { return stream->Told() == text; });
  }
  bool Has(std::int32_t points) {
    return When([&] { return series.PointCount() == points; });
  }
};

TEST(LinkStream, EachValueIsAPointOverTheClockAndNoneIsLost) {
  LinkPublisher lab("lab", "oven");
  Heard heard(Links("Date and time", "a"));
  ASSERT_TRUE(heard.Tells("Hears lab|oven!a")) << heard.stream->Told();
  constexpr int kPoints = 20000;
  for (int i = 0; i < kPoints; ++i) {
    lab.Publish("a", i);
    lab.Publish("not heard", 1.0);
  }
  ASSERT_TRUE(heard.Has(kPoints)) << heard.series.PointCount();
  EXPECT_EQ(heard.lost + heard.unreadable, 0);
  double before = 0;
  for (std::size_t i = 0; i < kPoints; ++i) {
    const Point point = heard.series.Points().At(i);
    ASSERT_EQ(point.y, static_cast<double>(i)) << "the order of X is not that of arrival";
    ASSERT_GT(point.x, before) << "a moment was told twice";
    before = point.x;
  }
}

TEST(LinkStream, RowsAreReadAsTheDescriptionSays) {
  struct Case {
    const char* shows;
    const char* x;
    const char* y_expression;
    ColumnFormat y_format;
    std::int32_t keep;
    std::string points;
  };
  const Case cases[] = {
      {"X is what its link has then", "time", "Y", ColumnFormat::Automatic, 0, "1:10 2:30 2:40"},
      {"the last two", "time", "Y", ColumnFormat::Automatic, 2, "2:30 2:40"},
      {"the rows are counted", "Row number", "Y", ColumnFormat::Automatic, 0, "1:10 3:30 4:40"},
      {"other links in an expression", "time", "Y+b", ColumnFormat::Automatic, 0, "1:15 2:37 2:47"},
      {"a decimal comma", "time", "Y", ColumnFormat::DecimalComma, 0, "1:1 2:3 2:4"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.shows);
    LinkPublisher lab("lab", "oven");
    const bool comma = one.y_format == ColumnFormat::DecimalComma;
    const auto publish = [&](int y) {
      lab.Publish("a", QString::number(y / (comma ? 10 : 1)) + (comma ? ",5" : " mV"));
    };
    lab.Publish("time", 1.0);
    lab.Publish("b", 5.0);
    TDSInfo info = Links(one.x, "lab|oven!a");
    info.YColExpr = one.y_expression;
    info.YFormat = one.y_format;
    info.KeepPoints = one.keep;
    Heard heard(info);
    ASSERT_TRUE(heard.Tells("Hears lab|oven!a")) << heard.stream->Told();
    publish(10);
    lab.Publish("time", 2.0);
    lab.Publish("b", 7.0);
    lab.Publish("a", QStringLiteral("burnt"));
    publish(30);
    publish(40);
    EXPECT_TRUE(heard.When([&] { return heard.Points() == one.points; })) << heard.Points();
    EXPECT_EQ(heard.unreadable, 1);
    if (&one != cases) continue;  // it is told once a second
    EXPECT_TRUE(heard.Tells("Hears lab|oven!a; Error reading DDE value : burnt"));
  }
}

TEST(LinkStream, AProgramThatGoesAndComesBackLeavesABreak) {
  Heard heard(Links("Row number", "a", "come|go!a"));
  const std::string waiting =
      "Waiting for the program org.tarnwick.link.come, which is not on the session bus";
  for (const int round : {1, 2}) {
    EXPECT_TRUE(heard.Tells(waiting)) << heard.stream->Told();
    EXPECT_EQ(heard.stream->State(), StreamState::Away);
    LinkPublisher program("come", "go");
    ASSERT_TRUE(heard.Tells("Hears come|go!a")) << heard.stream->Told();
    program.Publish("a", 1.0);
    ASSERT_TRUE(heard.Has(round));
  }
  EXPECT_TRUE(heard.Tells(waiting));
  EXPECT_EQ(heard.Points(), "1:1 | 2:1");
  heard.stream->Stop();
  EXPECT_EQ(heard.stream->State(), StreamState::Stopped);
}

TEST(LinkStream, WhatIsNoLinkOfTheInterfaceIsNotHeard) {
  LinkPublisher lab("lab", "oven");
  QDBusConnection other = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "other");
  Heard heard(Links("Row number", "a"));
  ASSERT_TRUE(heard.Tells("Hears lab|oven!a"));
  for (const bool sender_is_lab : {false, true}) {
    for (const QVariantList& arguments :
         {QVariantList{"a", "5"}, QVariantList{"a", 5}, QVariantList{"a"}, QVariantList{}}) {
      if (sender_is_lab && arguments == QVariantList{"a", "5"}) continue;
      QDBusMessage signal =
          QDBusMessage::createSignal("/oven", "org.tarnwick.Link", QStringLiteral("Changed"));
      signal.setArguments(arguments);
      (sender_is_lab ? QDBusConnection("link-publisher-lab") : other).send(signal);
    }
  }
  lab.Publish("a", QString(1 << 20, '7'));
  lab.Publish("a", 1.0);
  ASSERT_TRUE(heard.Has(1));
  EXPECT_EQ(heard.unreadable, 1);
  QDBusConnection::disconnectFromBus("other");
}

TEST(LinkStream, WhatCannotBeHeardIsToldBeforeOrAtTheStart) {
  struct Case {
    TDSInfo info;
    const char* told;
  };
  const Case cases[] = {
      {Links("time", "c"), "There is no column \"c\": "},
      {Links("time", "Date and time"), "No link gives Y: "},
      {Links("time", "a", "lab|oven"), "A link is written service|topic!item: "},
      {Links("Row number", "a", "two words|oven!a"),
       "\"two words|oven!a\" : can not set link to DDE server!"},
  };
  for (const Case& one : cases) {
    std::string told = Refusal([&] {
      Heard heard(one.info);
      EXPECT_TRUE(heard.WaitFor(StreamState::Failed));
      throw Error(heard.stream->Told());
    });
    EXPECT_TRUE(told.starts_with(one.told)) << told;
  }
}

}  // namespace
}  // namespace tarnwick
