#include "data/import/source_kinds.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "base/error.h"
#include "data/columns/import_source.h"
#include "data/import/data_files.h"
#include "data/import/import_file.h"
#include "data/series/data_series_file.h"
#include "support/temporary_folder.h"
#include "text/text_supplier_maker.h"

namespace tarnwick {
namespace {

/// Where sources of a kind that this layer does not know have been opened.
std::vector<std::string>& Opened() {
  static std::vector<std::string> opened;
  return opened;
}

std::unique_ptr<TDataSupplier> OpenMadeUp(const TDSInfo& info, Progress&) {
  Opened().push_back(info.DatasourceInfo);
  return testing::SupplierOf(info, "t,u,v\n1,10,100\n2,20,200\n3,30,300\n");
}

void ExamineMadeUp(FileToExamine file, ImportSource& source) {
  const std::string_view bytes = file.file.Bytes();
  source.info.FileHasHeaders = 1;
  source.supplier =
      testing::SupplierOf(source.info, std::string(bytes.substr(bytes.find(';') + 1)));
  source.columns.assign(source.supplier->ColumnNames().size(), ColumnGuess{true, false, {}});
}

constexpr SourceSetting kMadeUpSettings[] = {{"TextSeparators", SettingUse::Opens},
                                             {"YDataColumn"}};
constexpr SourceKind kMadeUp[] = {
    {.kind = DataSourceKind::Database,
     .name = "Made up",
     .recognises = [](std::string_view bytes) { return bytes.starts_with("MADE;"); },
     .examine = &ExamineMadeUp,
     .open = &OpenMadeUp,
     .settings = kMadeUpSettings}};

LoadOptions WithMadeUp() {
  LoadOptions options;
  options.kinds = kMadeUp;
  return options;
}

std::unique_ptr<TDataSeries> MadeUpSeries(const std::string& place, const std::string& column) {
  auto series = std::make_unique<TDataSeries>();
  TDSInfo& info = series->Source();
  info.DataSource = DataSourceKind::Database;
  info.DatasourceInfo = place;
  info.FileHasHeaders = 1;
  info.XDataColumn = "t";
  info.YDataColumn = column;
  return series;
}

TEST(SourceKinds, RowsNameStoredSettingsAndCanOpenWhatTheyExamine) {
  std::set<std::string_view> stored;
  for (const auto& field : DataSeriesFields()) stored.insert(field.key);
  std::set<DataSourceKind> kinds;
  for (const SourceKind& row : BasicSourceKinds()) {
    EXPECT_TRUE(kinds.insert(row.kind).second) << row.name;
    EXPECT_EQ(row.recognises == nullptr, row.examine == nullptr) << row.name;
    EXPECT_TRUE(row.examine == nullptr || row.open != nullptr) << row.name;
    EXPECT_EQ(row.open == nullptr, row.settings.empty()) << row.name;
    for (const SourceSetting& setting : row.settings) {
      EXPECT_TRUE(stored.contains(setting.key)) << row.name << ": " << setting.key;
    }
  }
}

TEST(SourceKinds, AFileIsOfTheFirstKindThatRecognisesIt) {
  EXPECT_EQ(KindOfFile(BasicSourceKinds(), "a,b\n@UNFORMATTED\n", "f").kind,
            DataSourceKind::Unformatted);
  EXPECT_EQ(KindOfFile(BasicSourceKinds(), "a,b\n1,2\n", "f").kind, DataSourceKind::Text);
  EXPECT_THROW(KindOfFile(kMadeUp, "a,b\n1,2\n", "f"), FileError);
}

TEST(SourceKinds, DataSetsOfAKindFromAboveAreReadTogetherWhereTheyMayBe) {
  const auto u = MadeUpSeries("one", "u");
  const auto v = MadeUpSeries("one", "v");
  const auto other_place = MadeUpSeries("two", "u");
  const auto other_reading = MadeUpSeries("one", "u");
  other_reading->Source().TextSeparators = ";";
  other_reading->Source().MergeSeparators = false;
  const auto placeless = MadeUpSeries("", "u");
  TDataSeries* const all[] = {u.get(), other_place.get(), v.get(), placeless.get(),
                              other_reading.get()};

  for (const LoadReport& report : RefreshAll(all)) EXPECT_FALSE(report.loaded);
  Opened().clear();
  const std::vector<LoadReport> reports = RefreshAll(all, WithMadeUp());
  EXPECT_EQ(Opened(), (std::vector<std::string>{"one", "two", "one"}));
  EXPECT_EQ(v->Points().At(v->Points().Size() - 1).y, 300);
  EXPECT_EQ(other_place->PointCount(), 3);
  EXPECT_FALSE(reports[3].loaded) << "it has no place to be read from";
  EXPECT_FALSE(reports[4].loaded) << "separated otherwise there is no column u";
}

TEST(SourceKinds, AFileOfAKindFromAboveIsImportedAndRemembersItsKind) {
  const testing::TemporaryFolder folder;
  const auto path = folder.Write("a.dat", "MADE;t,u\n1,10\n2,20\n");
  const ImportResult result = ImportFile(path, {}, WithMadeUp());
  ASSERT_EQ(result.series.size(), 1U);
  EXPECT_EQ(result.series[0]->PointCount(), 2);
  EXPECT_EQ(result.series[0]->Source().DataSource, DataSourceKind::Database);
  TDataSeries* const all[] = {result.series[0].get()};
  RefreshAll(all, WithMadeUp());
  EXPECT_EQ(result.series[0]->PointCount(), 3);
}

TEST(SourceKinds, AMissingFileOrAFolderIsNamed) {
  const testing::TemporaryFolder folder;
  for (const std::filesystem::path& path : {folder.File("none.txt"), folder.Path()}) {
    TDSInfo info;
    info.DatasourceInfo = path.string();
    try {
      NoProgress unseen;
      OpenDataFile(info, unseen);
      ADD_FAILURE() << path;
    } catch (const FileError& error) {
      EXPECT_NE(std::string(error.what()).find(path.string()), std::string::npos);
    }
  }
}

}  // namespace
}  // namespace tarnwick
