// The program folder: filled from what is installed, brought up to date, and the user's where the user had a hand in it.
#include "desk/settings/program_folder.h"

#include <gtest/gtest.h>

#include "desk/settings/program_paths.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

namespace fs = std::filesystem;
using Paths = std::vector<fs::path>;

class ProgramFolderTest : public ::testing::Test {
 protected:
  ProgramFolderTest() {
    for (const char* part : {"usr/bin", "usr/share/tarnwick/TFN", "usr/share/tarnwick/examples",
                             "usr/share/tarnwick/HELP"})
      fs::create_directories(folder_.File(part));
    Install("TFN/Line.tfn", "line");
    Install("TFN/Hill.tfn", "hill");
    Install("examples/decay.dat", "1 2\n");
    Install("HELP/tarnwick.qch", "help");
    Install("default.ttp", "look");
    Install("libexec", "no part of it");
  }
  /// With a time of its own, as another version has.
  void Install(const std::string& name, const std::string& bytes) {
    const fs::path file = folder_.Write("usr/share/tarnwick/" + name, bytes);
    fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(--hours_));
  }
  ProgramPaths Find() const {
    return FindProgramPaths({folder_.File("usr/bin"), user_, folder_.File("cache")});
  }

  testing::TemporaryFolder folder_;
  fs::path user_ = folder_.File("home/tarnwick");
  int hours_ = 1000;
};

TEST_F(ProgramFolderTest, IsFilledOnFirstUse) {
  const ProgramPaths paths = Find();
  EXPECT_EQ(paths.trouble, "");
  EXPECT_EQ(FitFunctions(paths), (Paths{user_ / "TFN/Hill.tfn", user_ / "TFN/Line.tfn"}));
  EXPECT_EQ(TemplateOfNewGraphs(paths), user_ / "default.ttp");
  EXPECT_EQ(paths.examples, Paths{user_ / "examples/decay.dat"});
  EXPECT_EQ(paths.help, user_ / "HELP/tarnwick.qch");
  EXPECT_FALSE(fs::exists(user_ / "libexec"));
}

TEST_F(ProgramFolderTest, FollowsTheInstallationWhereTheUserHadNoHandInIt) {
  fs::create_directories(user_ / "TFN");
  testing::WriteFile(user_ / "TFN/Hill.tfn", "written before the first start");
  ASSERT_EQ(Find().trouble, "");
  testing::WriteFile(user_ / "TFN/Line.tfn", "changed");
  fs::remove(user_ / "default.ttp");
  fs::remove(user_ / "examples/decay.dat");
  Install("TFN/Line.tfn", "line of another version");
  Install("TFN/Hill.tfn", "hill of another version");
  Install("TFN/New.tfn", "new");
  Install("examples/decay.dat", "3 4\n");
  Install("HELP/tarnwick.qch", "more help");
  const ProgramPaths paths = Find();
  EXPECT_EQ(testing::ReadFile(user_ / "TFN/Line.tfn"), "changed");
  EXPECT_EQ(testing::ReadFile(user_ / "TFN/Hill.tfn"), "written before the first start");
  EXPECT_EQ(testing::ReadFile(user_ / "TFN/New.tfn"), "new");
  EXPECT_EQ(testing::ReadFile(user_ / "HELP/tarnwick.qch"), "more help");
  EXPECT_TRUE(TemplateOfNewGraphs(paths).empty()) << "it was taken away";
  EXPECT_FALSE(fs::exists(user_ / "examples/decay.dat")) << "it was taken away";
}

TEST_F(ProgramFolderTest, WhatCannotBeCopiedIsUsedWhereItIsInstalled) {
  folder_.Write("home", "no folder");
  const ProgramPaths paths = Find();
  EXPECT_EQ(paths.trouble,
            "What is installed cannot be copied to " + user_.string() + ": Not a directory");
  const fs::path share = folder_.File("usr/bin/../share/tarnwick");
  EXPECT_EQ(FitFunctions(paths), (Paths{(share / "TFN/Hill.tfn").lexically_normal(),
                                        (share / "TFN/Line.tfn").lexically_normal()}));
  EXPECT_EQ(TemplateOfNewGraphs(paths), share / "default.ttp");
  EXPECT_EQ(paths.help, share / "HELP/tarnwick.qch");
  EXPECT_EQ(MakeFunctionFolder(paths), fs::path());
}

TEST_F(ProgramFolderTest, IsWhereTheProgramLiesWhenThatIsItsOwn) {
  fs::remove_all(folder_.File("usr/share"));
  fs::create_directories(folder_.File("usr/bin/TFN"));
  folder_.Write("usr/bin/TFN/Own.tfn", "own");
  const ProgramPaths paths = Find();
  EXPECT_EQ(FitFunctions(paths), Paths{folder_.File("usr/bin/TFN/Own.tfn")});
  EXPECT_EQ(paths.own_template, folder_.File("usr/bin/default.ttp"));
  EXPECT_FALSE(fs::exists(user_));
  EXPECT_EQ(paths.trouble, "");
  fs::remove(folder_.File("usr/bin/TFN/Own.tfn"));
  EXPECT_EQ(Find().trouble, "There are no fitting functions: they are not in " +
                                folder_.File("usr/bin/TFN").string() +
                                ", where they belong beside the program");
}

}  // namespace
}  // namespace tarnwick
