#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "data/import/import_file.h"
#include "data/import/loader.h"
#include "import/table_texts.h"
#include "support/refusal.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::Described;
using testing::Rows;

TEST(UnusualTables, AreReadAsAPersonReadsThem) {
  const struct {
    const char* what;
    std::string text;
    const char* read;
  } tables[] = {
      {"words between the numbers",
       "kinetics\n\n" + Rows(9, "At t = @   y =  @@  0.7@") + "nst = 4\n", "At t: y, y 2, 9"},
      {"marks beside the numbers", Rows(9, "step:@, loss=@@ (lr=0.0@)"), "step: loss, lr, 9"},
      {"other lines between them",
       Rows(4, "At t = @ y = @@") + "    roots[] = 0 1\n" + Rows(5, "At t = 1@ y = @@"),
       "At t: y, 9"},
      {"units behind the numbers", Rows(9, "after @ s the cell has @@ mV"),
       "after [s]: the cell has [mV], 9"},
      {"labels that read as times", Rows(12, "0.@ 1s @@ B-V Boron") + "7.5 1s.2p 8.5 B-IV Boron\n",
       "(col 0): (col 2), 13"},
      {"mostly texts between commas",
       "state,slug,nick,motto,site,rank,town,size,seal,map,flag\n" +
           Rows(12, "\"A@\",\"a@\",\"the, @\",\"m\",\"www\",@@,\"T@\",7@1,s,m,f"),
       "rank: size, 12"},
      {"mostly texts between tabs", Rows(12, "A@\ta b\tthe x\tm n\t@@\tT\tS\ta\tb\t7@1"),
       "(col 4): (col 9), 12"},
  };
  const testing::TemporaryFolder folder;
  for (const auto& table : tables) {
    const ImportResult result = ImportFile(folder.Write("t.txt", table.text));
    EXPECT_EQ(Described(result), table.read) << table.what;
    TDataSeries* const series = result.series.back().get();
    const auto points = series->PointCount();
    series->Clear();
    RefreshAll({&series, 1});
    EXPECT_EQ(series->PointCount(), points) << table.what;
  }
}

TEST(UnusualTables, AreNoSentences) {
  const struct {
    const char* what;
    std::string text;
  } texts[] = {
      {"a number that counts lines of one form", Rows(12, "line @ of the text")},
      {"lines of many forms",
       Rows(5,
            "found @ files\nread @ of them in @@ seconds\nThe end, for now. It was 8 o'clock.\n"
            "no more")},
      {"texts with a running number between commas", "n,name,note\n" + Rows(12, "@,A@,the note")},
      {"texts with one column of numbers", Rows(12, "A@,the note,a,b,4@7,c,d,e")},
  };
  const testing::TemporaryFolder folder;
  for (const auto& text : texts) {
    EXPECT_FALSE(testing::Refusal([&] { ImportFile(folder.Write("t.txt", text.text)); }).empty())
        << text.what;
  }
}

}  // namespace
}  // namespace tarnwick
