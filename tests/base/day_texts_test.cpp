// Dates and times as people and programs write them, and just beside that: what each text is read as.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/day_number.h"
#include "support/told.h"

namespace tarnwick {
namespace {

std::string Read(const std::optional<double>& day) {
  if (!day) return "no";
  return *day < 1 || !IsCalendarDay(*day) ? FormatDay(*day, "hh:nn:ss.zzz")
                                          : FormatDay(*day, "yyyy-mm-dd hh:nn:ss.zzz");
}

TEST(DayTexts, AreReadAs) {
  const char* const dates[] = {"2024-02-29",
                               "2023-02-29",
                               "2024-2-3",
                               "2024-13-01",
                               "2024-00-10",
                               "2024-10-00",
                               "0000-01-01",
                               "0001-01-01",
                               "9999-12-31",
                               "10000-01-01",
                               "99-01-02",
                               "2024/02/03",
                               "2024.02.03",
                               "2024-02/03",
                               "03.02.2024",
                               "31.04.2024",
                               "3.2.69",
                               "3.2.68",
                               "3.2.00",
                               "3.2.099",
                               "2/3/2024",
                               "13/2/2024",
                               "2/13/2024",
                               "2/3/24",
                               "2-3-2024",
                               "03-Feb-2024",
                               "03 Feb 2024",
                               "03/Feb/2024",
                               "03Feb2024",
                               "3-February-24",
                               "3-Febr-24",
                               "3-Fe-24",
                               "Feb 3, 2024",
                               "Feb 3 2024",
                               "February 3,2024",
                               "Feb, 3 2024",
                               "Sun Feb 4 2024",
                               "Sunday, 4 February 2024",
                               "Sun, 04 Feb 2024",
                               "Xyz 4 Feb 2024",
                               "20240203",
                               "20240203T06",
                               "20240203T0630",
                               "20240203T063015",
                               "20240203T06301",
                               "20240203 06:30",
                               "2024-Feb-03",
                               "3.2.2024.",
                               "3..2024",
                               "3. Februar 2024",
                               "3 de febrero de 2024",
                               "3-f\xC3\xA9v.-24",
                               "2024-02-03x",
                               "2024",
                               "3.2",
                               "Feb 2024",
                               "",
                               " ",
                               "-",
                               "2024-02-",
                               "32/1/2024"};
  const char* const times[] = {
      "06:30",       "6:3",        "06:30:15",  "06:30:15.5",  "06:30:15,25", "06:30:15.1234567",
      "06:30:60",    "06:60",      "24:00",     "24:00:01",    "25:00",       "9999:00",
      "10000:00",    "12:00 am",   "12:00 pm",  "1:00 AM",     "1:00pm",      "13:00 pm",
      "0:30 am",     "6 pm",       "6:30 p",    "06:30Z",      "06:30 UTC",   "06:30 GMT",
      "06:30+02:00", "06:30+0200", "06:30+02",  "06:30-11:30", "06:30+15:00", "06:30+2",
      "06:30 EST",   "06:30 CEST", "06:30 JST", "06:30 XYZ",   "06:30 UTC+2", "06:30:15.",
      "06.30",       "0630",       ":30",       "06:",         "06:30:"};
  std::vector<std::string> told;
  for (const char* const text : dates) {
    const std::string first = Read(ParseDay(text));
    const std::string other = Read(ParseDay(text, SlashDate::DayFirst));
    const std::string compact = Read(ParseCompactDay(text));
    told.push_back(std::string(text) + ": " + first + (other == first ? "" : ", or " + other) +
                   (compact == "no" ? "" : ", as digits " + compact));
  }
  for (const char* const text : times) {
    std::string line = std::string(text) + ": " + Read(ParseDay(text));
    for (const char* const between : {" ", "T", ":", "_", ", ", "-"}) {
      const std::string whole = std::string("2024-02-03") + between + text;
      const std::string read = Read(ParseDay(whole));
      line += read == "no" ? " no" : " " + read.substr(5);
      line += HasZone(whole) ? "z" : "";
    }
    line += " | " + Read(ParseDay("3 Feb 2024 " + std::string(text))) + " | " +
            Read(ParseDay("Feb 3 " + std::string(text) + " 2024"));
    told.push_back(line);
  }
  for (const char* const digits :
       {"20240203", "2024020306", "202402030630", "20240203063015", "20240203063015.25",
        "20240203063015Z", "2024020306301", "20241303", "20240230", "2024020324", "2024020325",
        "202402032360", "2024020323596", "00010101", "99991231235959", "2024-0203"})
    told.push_back(std::string("digits ") + digits + ": " + Read(ParseCompactDay(digits)));
  for (const char* const text :
       {"2020-06-01T00:00:00/2020-06-01T01:00:00", "2020-06-01--2020-06-02",
        "2020-06-01/2020-06-02", "2020-06-01/x", "a/b", "2020-06-01 - 2020-06-02", "2020/06/01"})
    told.push_back(std::string("interval ") + text + ": '" +
                   std::string(BeginningOfInterval(text)) + "'");
  testing::ExpectTold("base/days.txt", "texts", told);
}

TEST(DayTexts, AreWrittenAndJoined) {
  std::vector<std::string> told;
  const DateTime moments[] = {{2024, 2, 29, 23, 59, 59, 999},
                              {1, 1, 1, 0, 0, 0, 0},
                              {9999, 12, 31, 12, 0, 0, 1},
                              {1899, 12, 30, 11, 59, 0, 0},
                              {1900, 3, 1, 0, 30, 5, 40}};
  for (const DateTime& parts : moments) {
    const double day = JoinDay(parts);
    EXPECT_EQ(SplitDay(day), parts);
    std::string line = std::to_string(DayOfWeek(day));
    for (const char* const format :
         {"d/m/yy", "dd.mm.yyyy", "ddd d mmm", "dddd, mmmm", "h:m:s.z", "hh:mm:ss.zzz", "h am/pm",
          "h:nn a/p", "hhampm", "c", "mm/dd hh:mm", "s:m", "yyy", "'h' h \"m\"", "nn nnn"})
      line += " | " + FormatDay(day, format);
    told.push_back(line + " | " + MomentText(day));
  }
  const DateTime beyond[] = {{2024, 13, 1},
                             {2024, 0, 1},
                             {2024, -11, 1},
                             {2024, 25, 31},
                             {2023, 2, 29},
                             {2024, 3, 0},
                             {2024, 1, 366},
                             {2024, 1, 1, 25},
                             {2024, 1, 1, 0, -1},
                             {2024, 1, 1, 0, 0, 61},
                             {2024, 1, 1, 0, 0, 0, 1001}};
  for (const DateTime& parts : beyond) told.push_back(Read(JoinDay(parts)));
  std::string days;
  for (const int year : {1900, 2000, 2023, 2024, 2100}) {
    for (int month = 1; month <= 12; ++month)
      days += " " + std::to_string(DaysInMonth(year, month));
    days += ";";
  }
  told.push_back(days);
  testing::ExpectTold("base/days.txt", "written", told);
}

}  // namespace
}  // namespace tarnwick
