#include "support/supplier_walk.h"

#include <gtest/gtest.h>

#include <string>

#include "base/progress.h"
#include "data/columns/import_options.h"
#include "data/import/open_source.h"
#include "data/import/source_kinds.h"
#include "import/table_texts.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::Rows;

TEST(SupplierWalk, ComesToTheSameOverAnyText) {
  const struct {
    const char* what;
    std::string text;
  } texts[] = {
      {"commas", "x,y,z\n" + Rows(9, "@,@@,1@")},
      {"one row", "x,y\n1,2\n"},
      {"no line end behind the last", "x,y\n1,2\n3,4"},
      {"gaps", "x,y,z\n1,,3\n2,5,\n,6,7\n3,,\n"},
      {"words", "x,y\n1,oops\n2,3\nNA,4\n4,5\n"},
      {"shorter rows", "x,y,z\n1,2,3\n2,3\n3\n4,5,6\n"},
      {"blanks", Rows(9, "  @   @@")},
      {"empty lines and remarks", "x y\n# one\n1 2\n\n3 4\n# two\n\n\n5 6\n# end\n"},
      {"remarks behind", "x y\n" + Rows(9, "@ @@ # seen")},
      {"quotes over lines", "x,y,n\n1,2,\"a\nb\"\n3,4,\"c, \"\"d\"\"\"\n5,6,e\n"},
      {"returns and ends", "x,y\r\n1,2\r\n3,4\r\n5,6\r\n"},
      {"returns alone", "x,y\r1,2\r3,4\r5,6\r"},
      {"one row ends by a return alone", "x,y\n1,2\r\n3,4\r5,6\n7,8\n"},
      {"commas as decimals", "x;y\n1,5;2\n2,5;3\n3,5;4\n"},
      {"cut by places",
       "   t     U     I\n 1.0   2.5   3.5\n 2.0         4.5\n10.0   3.5  10.5\n11.0   4.5   "
       "6.5\n"},
      {"rows that lie along lines",
       "red\t" + std::string("1\t2\t3\t4\t5\t6\t7\t8\t9\t1\t2\t3\t4\t5\t6\t7\n") +
           "blue\t2\t3\t4\t5\t6\t7\t8\t9\t1\t2\t3\t4\t5\t6\t7\t8\n"},
      {"a spectrum in packed lines",
       "##TITLE=t\n##JCAMP-DX=4.24\n##XUNITS=1/"
       "CM\n##YUNITS=ABSORBANCE\n##FIRSTX=1\n##LASTX=6\n##NPOINTS=6\n##XFACTOR=1\n##YFACTOR=1\n##"
       "XYDATA=(X++(Y..Y))\n1 5 6 7\n4 8 9 5\n##END=\n"},
      {"dates", "t,v\n2024-03-07,1\n2024-03-08,2\n2024-03-09,4\n"},
      {"a table that ends", "x,y\n" + Rows(9, "@,@@") + "a\nb\nc\nd\ne\nf\n"},
      {"many rows", "x,y,z\n" + Rows(5000, "@,@@,1@.25")},
  };
  const testing::TemporaryFolder folder;
  for (const auto& text : texts) {
    SCOPED_TRACE(text.what);
    NoProgress unseen;
    const ImportSource source =
        OpenImportSource(folder.Write("t.txt", text.text), {}, BasicSourceKinds(), unseen);
    ASSERT_NE(source.supplier, nullptr);
    EXPECT_FALSE(testing::ExpectWalks(*source.supplier).empty());
  }
}

}  // namespace
}  // namespace tarnwick
