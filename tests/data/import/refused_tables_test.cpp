#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "data/import/import_file.h"
#include "import/table_texts.h"
#include "support/refusal.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::Described;
using testing::Rows;

TEST(GuessedTables, RefuseWhatIsNone) {
  const std::string atoms = Rows(9, "C 0.@ 1.5 @@");
  const struct {
    const char* what;
    std::string text;
    const char* why;
  } texts[] = {
      {"atoms", "9\nbenzene\n" + atoms, "atoms of molecules"},
      {"atoms in a data bank's form", Rows(9, "ATOM  1@ CA  GLY A @ 1.5 @@ 0.5 1.00 20.00"),
       "atoms of molecules"},
      {"corners and faces", Rows(9, "v 0.@ 1.5 @@") + Rows(9, "f @ 1@ 2@"), "corners and faces"},
      {"facets",
       Rows(9,
            "facet normal 0 0 1\nouter loop\nvertex @ 1 2\nvertex 2 @ 1\nvertex 1 2 @\n"
            "endloop\nendfacet"),
       "corners and faces"},
      {"rows of all lengths", Rows(9, "1.5 2 3 4\n55 6 77\n8 999\n10 2.25 3 4 5\n@ 2"),
       "number of columns"},
      {"a curve drawn in characters", "time v\n" + Rows(20, " @.5  |    .   *   .    |"),
       "drawn in characters"},
      {"shapes of a picture",
       "# Region\n" + Rows(4, "polygon(1@.5,2,3,4)\npolygon(1@.5,2,3,4,5,6)"),
       "shapes of a picture"},
      {"atoms within a job", "molecule {\n0 1\n" + Rows(9, "C 0.@ 1.5 @.5") + "units angstrom\n}\n",
       "atoms of molecules"},
      {"atoms of residues", "water\n 9\n" + Rows(9, "1SOL OW @ 0.126 1.62@ 1.679"),
       "atoms of molecules"},
      {"statements", "lc = 0.2;\n" + Rows(9, "Point(@) = {0, @, 3, lc};") + "Line(1) = {1, 2};\n",
       "statements of a program"},
      {"settings", Rows(9, "Size@ = @ 4 5"), "statements of a program"},
      {"a drawing", "  0\nSECTION\n  2\nTABLES\n" + Rows(9, "  0\n@.5"), "a drawing (DXF)"},
      {"records that go on behind plus", Rows(9, "1@ 2 3\n+ @ 5"), "begin with \"+\""},
      {"lists of many lengths",
       Rows(3,
            "@,1\n@,1,2,3,4,5,6,7,8\n@,1,2\n@,1,2,3,4,5,6,7\n@,1,2,3\n@,1,2,3,4,5,6\n"
            "@,1,2,3,4\n@,1,2,3,4,5"),
       "a list of its own length"},
      {"two lines an orbit",
       Rows(9,
            "1 26536U 00055A   00265.6193021@  .00000000  00000-0  00000+0 0    58\n"
            "2 26536  98.7900 210.3675 0010476 274.6981  85.3501 14.1089552@    30"),
       "orbits of satellites"},
      {"XML", "<?xml version=\"1.0\"?>\n" + Rows(9, "@ 2"), "This is XML"},
      {"JSON", "{ \"rows\": [\n" + Rows(9, "@, 2,") + "]}\n", "This is JSON"},
      {"PostScript", "%!PS-Adobe\n" + Rows(9, "@ 2 moveto"), "PostScript"},
      {"three rows below more lines of prose",
       "norm of the residuals 0.75\nnumber of evaluations 21\nexit parameter 5\na final result\n"
       "of the problem\nin short\n\nfinal approximate solution\n\n\n 1 2 3\n 4 5 6\n 7 8 9\n",
       "no table of numbers"},
      {"keys and values", Rows(12, "set.line@.Colour: @"), "no table of numbers"},
      {"three named rows within a text",
       Rows(40, "line @@ of the text") + "t v\n" + Rows(3, "@ @@") + Rows(3, "more @"),
       "no table of numbers"},
      {"matrices between settings",
       "M = {\n n = 4;\n prior = -1;\n A = matrix {\n" + Rows(4, "@.5, 0.@, 1.0;") + " };\n};\n",
       "statements of a program"},
      {"atoms and bonds",
       "@<TRIPOS>ATOM\n" + Rows(9, "@ C@ 1.5 2.5 @.5 C.ar 1 <1> 0.1") + "@<TRIPOS>BOND\n" +
           Rows(12, "@ 1 2 1"),
       "atoms of molecules"},
      {"a receiver of satellites",
       "     2.11           OBSERVATION DATA    M (MIXED)           RINEX VERSION / TYPE\n" +
           Rows(9, " 05  4  2  0  0  0.0000000  0\n  55923622.160    2476768@.375"),
       "RINEX"},
      {"maps of the ionosphere",
       "     1.0            IONOSPHERE MAPS     GPS                 IONEX VERSION / TYPE\n" +
           Rows(9, "  1@  1@  1@  1@"),
       "IONEX"},
      {"a dump of netCDF",
       "netcdf simple_xy {\ndimensions:\n x = 6 ;\ndata:\n data =\n" + Rows(9, " @, 1, 2, 3,") +
           "}\n",
       "netCDF"},
      {"a count of rows beside fractions", "game,won\n1,1/4\n2,1/5\n3,2/5\n", "counts the rows"},
      {"bytes", Rows(9, "8@ 0@ a@ 3f"), "bytes in hexadecimal"},
      {"lists under keys", Rows(4, "k@ = [ 1.5 2.5 3.5\n  4.5 5.@ 6.5\n 7.5]"), "under its key"},
      {"atoms and bonds in sections",
       "!Header gpr 110\n!Atoms 9\n" + Rows(9, "@ 6 2048") + "!Bonds 9\n" + Rows(9, "@ 1 S"),
       "atoms of molecules"},
      {"remarks alone", Rows(4, "# @ 2"), "--comment \"%\""},
      {"names alone", "time,voltage\n", "no rows"},
      {"and beside numbers in brackets", "t,dP\n1,(0.5)\n2,(0.75)\n3,(0.25)\n",
       "\"dP\" holds no numbers: \"(0.5)\""},
  };
  const testing::TemporaryFolder folder;
  for (const auto& text : texts) {
    const std::filesystem::path file = folder.Write("t.txt", text.text);
    EXPECT_NE(testing::Refusal([&] { ImportFile(file); }).find(text.why), std::string::npos)
        << text.what;
  }
  ImportOptions stated;
  stated.x_column = "#1";
  EXPECT_EQ(Described(ImportFile(folder.Write("t.txt", "9\nbenzene\n" + atoms), stated)),
            "(col 1): (col 2), (col 3), 9");
}

}  // namespace
}  // namespace tarnwick
