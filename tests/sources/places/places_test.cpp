// Texts that name places of sources, and what they are read as, one a line.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "sources/arrays/array_part.h"
#include "sources/arrays/time_units.h"
#include "sources/database/database_place.h"
#include "sources/lines/line_place.h"
#include "sources/links/link_text.h"
#include "sources/workbook/sheet_part.h"
#include "support/refusal.h"

namespace tarnwick {
namespace {

using testing::Refusal;

TEST(LinePlaces, AreReadAndWrittenBack) {
  const struct {
    const char *text, *back;  ///< "": refused
  } places[] = {
      {"pipe:/run/a", "pipe:/run/a"},
      {"PIPE:/run/./b/../a", "pipe:/run/a"},
      {"pipe:", ""},
      {"tcp:host:1", "tcp:host:1"},
      {"tcp:host:65535", "tcp:host:65535"},
      {"tcp:host:65536", ""},
      {"tcp:host:0", ""},
      {"tcp:host:", ""},
      {"tcp:host:5000x", ""},
      {"tcp:host", ""},
      {"tcp::5000", ""},
      {"tcp:5000", ""},
      {"tcp:[::1]:5000", "tcp:[::1]:5000"},
      {"tcp:[::1:5000", "tcp:[[::1]:5000"},
      {"listen:5000", "listen:127.0.0.1:5000"},
      {"listen:0.0.0.0:5000", "listen:0.0.0.0:5000"},
      {"listen:[::]:5000", "listen:[::]:5000"},
      {"listen::5000", ""},
      {"listen:", ""},
      {"listen:x", ""},
      {"serial:/dev/ttyS0", "serial:/dev/ttyS0?baud=9600"},
      {"serial:/dev/ttyS0?baud=115200", "serial:/dev/ttyS0?baud=115200"},
      {"serial:/dev/ttyS0?baud=1", "serial:/dev/ttyS0?baud=1"},
      {"serial:/dev/ttyS0?baud=0", ""},
      {"serial:/dev/ttyS0?baud=", ""},
      {"serial:/dev/ttyS0?baud=9600n", ""},
      {"serial:?baud=9600", ""},
      {"serial:", ""},
      {"udp:host:5000", ""},
      {"", ""},
  };
  for (const auto& place : places) {
    if (*place.back == 0) {
      EXPECT_EQ(Refusal([&] { ParseLinePlace(place.text); }),
                "No source of lines is named by \"" + std::string(place.text) +
                    "\": pipe:FILE, tcp:HOST:PORT, listen:PORT, listen:ADDRESS:PORT and "
                    "serial:DEVICE?baud=9600 name one");
    } else {
      const LinePlace read = ParseLinePlace(place.text);
      EXPECT_EQ(read.Text(), place.back) << place.text;
      EXPECT_EQ(ParseLinePlace(place.back), read);
    }
  }
}

TEST(DatabasePlaces, SayWhoIsAskedAndWhatAPlotIsCalled) {
  const struct {
    DatabasePlace place;
    const char *text, *name, *server, *title;
  } places[] = {
      {{"sqlite", "/d/a b.db", "", ""}, "sqlite:/d/a b.db", "/d/a b.db", "", "a b"},
      {{"sqlite", "/d/a.db", "t?x", ""},
       "sqlite:/d/a.db?table=t%3Fx",
       "/d/a.db, table \"t?x\"",
       "",
       "t?x"},
      {{"sqlite", "/d/a?.db", "t", "SELECT 1"},
       "sqlite:/d/a%3F.db?query=SELECT 1",
       "/d/a?.db, table \"t\"",
       "",
       "t"},
      {{"postgresql", "//me@host:5433/base", "", ""},
       "postgresql://me@host:5433/base",
       "postgresql://me@host:5433/base",
       "host",
       "base"},
      {{"postgresql", "///base?host=/run/s", "", ""},
       "postgresql:///base%3Fhost=/run/s",
       "postgresql:///base?host=/run/s",
       "/run/s",
       "base"},
      {{"mysql", "//host", "", ""}, "mysql://host", "mysql://host", "host", "host"},
      {{"odbc", "DSN", "", ""}, "odbc:DSN", "odbc:DSN", "DSN", "DSN"},
      {{"odbc", "DSN", "t", ""}, "odbc:DSN?table=t", "odbc:DSN, table \"t\"", "DSN", "t"},
  };
  for (const auto& row : places) {
    EXPECT_EQ(row.place.Text(), row.text);
    EXPECT_EQ(row.place.Name(), row.name);
    EXPECT_EQ(row.place.Server(), row.server);
    EXPECT_EQ(row.place.Title(), row.title);
    const DatabasePlace back = ParsePlace(row.text);
    EXPECT_EQ(back.address, row.place.address);
    EXPECT_EQ(back.query, row.place.query);
    EXPECT_EQ(back.table, row.place.query.empty() ? row.place.table : "");
  }
}

TEST(DatabasePlaces, QueriesOnlyRead) {
  const std::string begin =
      "A data base is only read: the query must begin with SELECT, WITH or VALUES";
  const std::string one =
      "A data base is only read by one statement: no \";\" may stand inside the query";
  const struct {
    const char* query;
    std::string refusal;
  } queries[] = {
      {"SELECT 1", ""},
      {" select 1 ; ;", ""},
      {"With a AS (SELECT 1) SELECT * FROM a", ""},
      {"VALUES (1)", ""},
      {"select(1)", ""},
      {"select", ""},
      {"selects 1", begin},
      {"select_1", begin},
      {"select9", begin},
      {"selectz", begin},
      {"selecta", begin},
      {"select0", begin},
      {"(select 1)", begin},
      {"", begin},
      {";", begin},
      {"update t", begin},
      {"SELECT 1; SELECT 2", one},
      {"SELECT ';'", one},
      {"SELECT 1 INTO t", "into"},
      {"SELECT 1 \"into\"", "into"},
      {"WITH a AS (INSERT) SELECT 1", "insert"},
      {"WITH a AS (delete", "delete"},
      {"SELECT merge", "merge"},
      {"SELECT 1\nupdate", "update"},
      {"SELECT inserted, updates, to_delete, merge_9, xinto, into1 FROM a_into", ""},
      {"SELECT zinto, intoz, 9into, into0, into9, ainto FROM t", ""},
      {"SELECT into_x, into", "into"},
  };
  for (const auto& row : queries) {
    const std::string refusal = Refusal([&] { RequireReadingQuery(row.query); });
    const bool word = !row.refusal.empty() && row.refusal.find(' ') == row.refusal.npos;
    const std::string whole =
        word ? "A data base is only read: the query holds the word " + row.refusal +
                   " (make a view of it if it only reads, and name that as the table)"
             : row.refusal;
    EXPECT_EQ(refusal, whole) << row.query;
  }
  EXPECT_EQ(ReadingQuery(" a ;; ; "), "a");
}

TEST(SheetParts, KeepTheEdgesOfASheet) {
  const struct {
    const char* range;
    std::array<std::int64_t, 4> edges;  ///< all 0: refused
  } ranges[] = {
      {"A1:A1", {1, 1, 1, 1}},
      {" $a$1 : $b$2 ", {1, 2, 1, 2}},
      {"Z9:AA10", {9, 10, 26, 27}},
      {"XFD1:XFD1048576", {1, 1048576, 16384, 16384}},
      {"XFE1:XFE2", {}},
      {"A1:A1048577", {}},
      {"A0:A1", {}},
      {"0:1", {}},
      {"1:1", {1, 1, 1, 16384}},
      {"A:A", {1, 1048576, 1, 1}},
      {"1:A", {}},
      {"A1:B", {}},
      {"AAAA1:B2", {}},
      {"A12345678:B2", {}},
      {"A1", {}},
      {"A-1:B2", {}},
      {"1A:2B", {}},
      {"  ", {1, 1048576, 1, 16384}},
  };
  for (const auto& row : ranges) {
    if (row.edges[0] == 0) {
      EXPECT_EQ(Refusal([&] { RangeEdges(row.range); }),
                "\"" + std::string(row.range) +
                    "\" is no range of a sheet; A1:C9, A:C and 1:9 are, to column XFD and row "
                    "1048576");
    } else {
      EXPECT_EQ(RangeEdges(row.range), row.edges) << row.range;
    }
  }
}

TEST(TimeUnits, CountFromAMoment) {
  const struct {
    const char* units;
    double per_day, day;  ///< 0: none
  } rows[] = {
      {"days since 1970-01-01", 1, 25569},
      {"day since 1970-1-1", 1, 25569},
      {"d since 1970-01-01 12:00", 1, 25569.5},
      {"Hours since 1900-1-1 0:0:0", 24, 2},
      {"hr since 1900-01-01", 24, 2},
      {"h since 1900-01-01", 24, 2},
      {"minutes since 2000-01-01T06:00:00Z", 1440, 36526.25},
      {"min since 2000-01-01 06:00:00 +00:00", 1440, 36526.25},
      {"seconds since 2000-01-01 00:00:00.5", 86400, 36526 + 0.5 / 86400},
      {"s since 2000-01-01 1:2:3", 86400, 36526 + (3600 + 120 + 3) / 86400.0},
      {"ms since 2000-01-01", 86400e3, 36526},
      {"us since 2000-01-01", 86400e6, 36526},
      {"ns since 2000-01-01", 86400e9, 36526},
      {"months since 2000-01-01", 0, 0},
      {" since 2000-01-01", 0, 0},
      {"days", 0, 0},
      {"days since", 0, 0},
      {"days since x", 0, 0},
      {"days since 2000-13-01", 0, 0},
  };
  for (const auto& row : rows) {
    const auto counted = ParseCountedTime(row.units);
    ASSERT_EQ(counted.has_value(), row.per_day != 0) << row.units;
    if (!counted) continue;
    EXPECT_DOUBLE_EQ(counted->days * row.per_day, 1) << row.units;
    EXPECT_NEAR(counted->day, row.day, 1e-9) << row.units;
  }
  for (const char* const common : {"", "Standard", "gregorian", "proleptic_gregorian"}) {
    EXPECT_TRUE(IsCommonCalendar(common)) << common;
  }
  for (const char* const other : {"360_day", "noleap", "julian"}) {
    EXPECT_FALSE(IsCommonCalendar(other)) << other;
  }
}

TEST(LinkTexts, AreTakenApart) {
  const struct {
    const char *link, *service, *topic, *item;
  } links[] = {
      {"a|b!c", "a", "b", "c"},  {"a|b", "a", "b", ""},        {"a!c", "", "", "c"},
      {"|b!c", "", "b", "c"},    {"a|!c", "a", "", "c"},       {"a|b!", "a", "b", ""},
      {"a!b|c", "a!b", "c", ""}, {"a|b!c!d", "a", "b", "c!d"}, {"a|b|c!d", "a", "b|c", "d"},
      {"", "", "", ""},
  };
  for (const auto& row : links) {
    EXPECT_EQ(SplitLink(row.link), (LinkParts{row.service, row.topic, row.item})) << row.link;
    const bool whole = *row.service != 0 && *row.topic != 0 && *row.item != 0;
    EXPECT_EQ(WrongWithLink(row.link).has_value(), !whole) << row.link;
  }
  EXPECT_TRUE(WrongWithLink("a|b!c:d"));
  using Texts = std::vector<std::string>;
  EXPECT_EQ(SplitLinkList(" a|b!c ,; d|e!f:"), (Texts{"a|b!c", "d|e!f"}));
  EXPECT_EQ(JoinLinks({"a", "b"}), "a,b");
  EXPECT_EQ(NamesOfLinks({"a|b!c", "a|d!c", "a|b!e"}), (Texts{"a|b!c", "a|d!c", "e"}));
  std::string list;
  for (int i = 0; i < 256; ++i) list += "a|b!" + std::to_string(i) + ",";
  EXPECT_EQ(ReadLinkList(list).size(), 256u);
  EXPECT_EQ(Refusal([&] { ReadLinkList(list + "a|b!c"); }),
            "A list of links holds at most 256 links, not 257");
  EXPECT_EQ(Refusal([&] { ReadLinkList(" , "); }),
            "No link is named: a link is written service|topic!item");
  EXPECT_EQ(ParseArrays(" a ;; b;"), (Texts{"a", "b"}));
  EXPECT_EQ(ArraysText(Texts{"a", "b"}), "a;b");
}

}  // namespace
}  // namespace tarnwick
