// A library loaded at run time works with the host's engine and desk, not with a copy of its own.
#include <gtest/gtest.h>

#include <QLibrary>
#include <cstdlib>
#include <string>

#include "base/error.h"
#include "desk/document/document.h"
#include "graph/axes/axis_fields.h"
#include "probe/probe.h"
#include "support/project_paths.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

std::filesystem::path ProbeFile() {
  return testing::ProgramFolder() / "probe.so";
}

class OneEngine : public ::testing::Test {
 protected:
  void SetUp() override {
    library_.setFileName(QString::fromStdString(ProbeFile().string()));
    library_.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    const auto entry = reinterpret_cast<testing::ProbeFunction>(library_.resolve("TarnwickProbe"));
    ASSERT_NE(entry, nullptr) << library_.errorString().toStdString();
    probe_ = entry();
  }

  QLibrary library_;
  testing::Probe probe_{};
};

TEST_F(OneEngine, TablesAndTypesLieInOnePlace) {
  EXPECT_EQ(probe_.axis_fields, AxisFields().data());
  EXPECT_EQ(probe_.document, &Document::staticMetaObject);
}

TEST_F(OneEngine, AGraphMadeInTheLibraryIsUsedOutside) {
  const std::unique_ptr<TxyGraph> graph = probe_.graph();
  ASSERT_EQ(graph->SeriesCount(), 1U);
  TDataSeries& series = graph->Series(0);
  EXPECT_NE(dynamic_cast<TSeries*>(&series), nullptr);
  EXPECT_EQ(series.PointCount(), 1);
  EXPECT_EQ(graph->AddSeries(std::make_unique<TSeries>()).PointCount(), 0);
}

TEST_F(OneEngine, AnErrorOfTheLibraryIsCaughtOutside) {
  try {
    probe_.refuse();
    ADD_FAILURE() << "nothing was thrown";
  } catch (const FileError& error) {
    EXPECT_EQ(error.Text(), "refused");
  }
}

/// What the loader finds missing when the program starts with the library loaded at once.
std::string MissingIn(const std::string& program) {
  const testing::TemporaryFolder folder;
  const std::string command = "LD_PRELOAD='" + ProbeFile().string() +
                              "' LD_TRACE_LOADED_OBJECTS=1 LD_WARN=yes LD_BIND_NOW=yes '" +
                              (testing::ProgramFolder() / program).string() + "' >'" +
                              folder.File("answer").string() + "' 2>&1";
  EXPECT_EQ(std::system(command.c_str()), 0) << command;
  const std::string answer = testing::ReadFile(folder.File("answer"));
  EXPECT_NE(answer.find("probe.so"), std::string::npos) << answer;
  const std::size_t missing = answer.find("undefined symbol: _ZN8tarnwick");
  return missing == std::string::npos
             ? ""
             : answer.substr(missing, answer.find('\n', missing) - missing);
}

TEST(Host, TheDesktopProgramHasAllThatALibraryAsksFor) {
  EXPECT_EQ(MissingIn("tarnwick"), "");
  EXPECT_NE(MissingIn("tarnwick-cli"), "") << "a program that is no host cannot serve the library";
}

}  // namespace
}  // namespace tarnwick
