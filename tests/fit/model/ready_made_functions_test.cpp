// The ready-made functions of TFN/ are made from TFN/functions.json: with TARNWICK_WRITE_FUNCTIONS set in the environment
// this test writes them, else it requires that they are what the list says.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "fit/model/curve_fit.h"
#include "fit/model/curve_fit_file.h"
#include "fit/model/fit_function_file.h"
#include "support/project_paths.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::ReadFile;

const std::filesystem::path kFolder = testing::SourceFolder() / "TFN";
// Thins the points of a fit beyond this number only; a curve of so many points is smooth at any zoom.
constexpr std::int32_t kPoints = 10000;

FitSettings SettingsOf(const nlohmann::json& function) {
  FitSettings settings;
  settings.XVarName = function.value("x", settings.XVarName);
  settings.Expression = function["expression"];
  settings.NPoints = kPoints;
  settings.ProcType = FitProcType::cfp_Newton;
  for (const nlohmann::json& one : function["parameters"]) {
    ParameterSettings& parameter = settings.parameters.emplace_back();
    parameter.Name = one["name"];
    parameter.Value = one["value"];
    parameter.Vary = true;
    parameter.Printed = true;
    parameter.Description = one["description"];
    parameter.Units = one.value("units", "");
    parameter.Low = one.value("low", parameter.Low);
    parameter.High = one.value("high", parameter.High);
    parameter.StartDev = one.value("start_deviation", parameter.StartDev);
  }
  return settings;
}

TEST(ReadyMadeFunctions, AreWhatTheirListSays) {
  std::ifstream list(kFolder / "functions.json");
  std::set<std::filesystem::path> files;
  for (const nlohmann::json& function : nlohmann::json::parse(list)) {
    const std::string name = function["name"];
    const ::testing::ScopedTrace trace(__FILE__, __LINE__, name);
    const std::filesystem::path& file = *files.insert(kFolder / (name + ".tfn")).first;
    const FitSettings settings = SettingsOf(function);
    if (std::getenv("TARNWICK_WRITE_FUNCTIONS") != nullptr) SaveFitFunction(file, settings);
    ASSERT_EQ(ReadFile(file), StoredModel(settings, WriterMode::Typed));
    TCurFit fit;
    fit.SetSettings(LoadFitFunction(file), MarkModified::No);
    fit.Prepare();
    EXPECT_TRUE(fit.GeneratedVariables().empty());
    const double expected = function["example"][1];
    EXPECT_NEAR(fit.Value(function["example"][0]), expected, 1e-13 * std::abs(expected));
  }
  EXPECT_GE(files.size(), 30U);
  for (const auto& entry : std::filesystem::directory_iterator(kFolder)) {
    if (entry.path().extension() == ".tfn") {
      EXPECT_TRUE(files.contains(entry.path())) << entry.path() << " is not in the list";
    }
  }
}

TEST(FitFunctionFile, RefusesWhatIsNoModel) {
  const testing::TemporaryFolder folder;
  const auto message = [&](const std::string& bytes) -> std::string {
    std::ofstream(folder.File("f.tfn"), std::ios::binary) << bytes;
    try {
      LoadFitFunction(folder.File("f.tfn"));
    } catch (const FileError& error) {
      EXPECT_EQ(error.Text(), "Wrong File Format!");
      return error.what();
    }
    return "none";
  };
  const std::string file = folder.File("f.tfn").string();
  const std::string graph =
      "\x06\x09xyvk06.01\x06\x03"
      "99S\x06\x0A"
      "Appearance\x06\x03 0B\x08";
  const struct {
    std::string bytes;
    std::string place;
  } rows[] = {{"", "byte 0, unexpected end of file"},
              {"a line of text\n", "byte 0, unexpected value"},
              {graph, "byte 11, conversion error"},
              {"\x06\x03 0B\x08", "byte 6, unexpected value"},
              {"\x06\x03"
               "39I\x02\x01\x06\x03 0B\x08",
               "byte 13, unexpected end of file"}};
  for (const auto& row : rows) {
    EXPECT_EQ(message(row.bytes), "Wrong File Format!: " + file + ", " + row.place);
  }
}

}  // namespace
}  // namespace tarnwick
