#include "data/packed/unpack.h"

#include <bzlib.h>
#include <gtest/gtest.h>
#include <lzma.h>
#include <zlib.h>
#include <zstd.h>

#include <string>
#include <vector>

#include "data/import/import_file.h"
#include "data/points/point_columns.h"
#include "support/cancelling_progress.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using namespace std::string_literals;
using testing::TemporaryFolder;

std::string Gzip(std::string text) {
  std::string packed(text.size() + 1000, '\0');
  z_stream stream{};
  deflateInit2(&stream, 9, Z_DEFLATED, 16 + MAX_WBITS, 9, Z_DEFAULT_STRATEGY);
  stream.next_in = reinterpret_cast<Bytef*>(text.data());
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

std::string Bzip2(std::string text) {
  std::string packed(text.size() + 1000, '\0');
  auto size = static_cast<unsigned>(packed.size());
  EXPECT_EQ(BZ2_bzBuffToBuffCompress(packed.data(), &size, text.data(),
                                     static_cast<unsigned>(text.size()), 9, 0, 0),
            BZ_OK);
  return packed.substr(0, size);
}

std::string Xz(std::string text) {
  std::string packed(text.size() + 1000, '\0');
  std::size_t size = 0;
  EXPECT_EQ(lzma_easy_buffer_encode(
                0, LZMA_CHECK_CRC32, nullptr, reinterpret_cast<const uint8_t*>(text.data()),
                text.size(), reinterpret_cast<uint8_t*>(packed.data()), &size, packed.size()),
            LZMA_OK);
  return packed.substr(0, size);
}

std::string Zstd(std::string text) {
  std::string packed(text.size() + 1000, '\0');
  ZSTD_CCtx* const context = ZSTD_createCCtx();
  ZSTD_CCtx_setParameter(context, ZSTD_c_checksumFlag, 1);
  const std::size_t size =
      ZSTD_compress2(context, packed.data(), packed.size(), text.data(), text.size());
  ZSTD_freeCCtx(context);
  return packed.substr(0, size);
}

struct Packer {
  const char* name;
  std::string (*pack)(std::string text);
};
constexpr Packer kPackers[] = {{"gzip", &Gzip}, {"bzip2", &Bzip2}, {"xz", &Xz}, {"zstd", &Zstd}};

constexpr const char* kText = "time,value\n1,2.5\n2,3.5\n3,2.5\n4,7.25\n";
const std::vector<double> kValues = {2.5, 3.5, 2.5, 7.25};

std::vector<double> ValuesIn(const TemporaryFolder& folder, const std::string& bytes) {
  return YValues(ImportFile(folder.Write("data", bytes)).series.at(0)->Points());
}

std::string UnpackedText(const std::string& packed, const UnpackLimits& limits = {}) {
  NoProgress unseen;
  return std::string(Unpack(*PackingOf(packed), packed, "f", unseen, limits).Bytes());
}

template <class Work>
std::string MessageOf(Work work) {
  try {
    work();
  } catch (const FileError& error) {
    return error.what();
  }
  return "no error";
}

TEST(Unpack, ReadsEachPackingAndItsMembersWhateverTheFileIsCalled) {
  const TemporaryFolder folder;
  for (const Packer& by : kPackers) {
    SCOPED_TRACE(by.name);
    const std::string packed = by.pack(kText);
    EXPECT_EQ(ValuesIn(folder, packed), kValues);
    EXPECT_EQ(ValuesIn(folder, by.pack("time,value\n1,2.5\n2,3.5\n3,2.") + by.pack("") +
                                   by.pack("5\n4,7.25\n") + std::string(512, '\0')),
              kValues);
    const std::string large(100'000, 'x');
    EXPECT_EQ(UnpackedText(by.pack(large) + by.pack("y"),
                           {.in_memory = 9, .ratio = 100'000, .folder = folder.Path()}),
              large + "y");
    EXPECT_TRUE(std::filesystem::remove(folder.File("data")));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path())) << "what was unpacked is left behind";
  }
}

TEST(Unpack, NeverReadsADamagedFileAsShorterOrOther) {
  const TemporaryFolder folder;
  for (const Packer& by : kPackers) {
    const std::string packed = by.pack(kText);
    for (std::size_t place = 0; place < packed.size(); ++place) {
      SCOPED_TRACE(by.name + (" " + std::to_string(place)));
      for (const char flipped : {'\x01', '\x80', '\xFF'}) {
        std::string damaged = packed;
        damaged[place] = static_cast<char>(damaged[place] ^ flipped);
        try {
          EXPECT_EQ(ValuesIn(folder, damaged), kValues);
        } catch (const FileError&) {
        }
      }
      EXPECT_THROW(ValuesIn(folder, packed.substr(0, place)), FileError);
    }
  }
}

TEST(Unpack, SaysWhatIsWrong) {
  const TemporaryFolder folder;
  const std::string zeros(1 << 20, '\0');
  struct Row {
    std::string bytes;
    std::string message;
    UnpackLimits limits = {};
  };
  std::string damaged = Gzip(kText);
  damaged[damaged.size() - 5] ^= 1;
  const Row rows[] = {
      {damaged, "The gzip data are damaged: f, byte " + std::to_string(damaged.size() - 3)},
      {Xz(kText).substr(0, 50), "The xz data are cut short, their end is missing: f, byte 51"},
      {Zstd("") + "and more",
       "The zstd data end before the file does, and something else follows: f, byte " +
           std::to_string(Zstd("").size() + 1)},
      {Gzip(zeros),
       "The file unpacks to more than 500 times its size, which no table of numbers does: f",
       {.in_memory = 1 << 16, .folder = folder.Path()}},
      {Bzip2(zeros), "The file unpacks to 0 GB or more, which is not read: f", {.gigabytes = 0}},
      {"\x28\xB5\x2F\xFD\x00\xA8\x01\x00\x00"s,
       "The zstd data need more than 256 MB of memory to be unpacked: f, byte 1"},
      {Gzip(kText),
       "The file cannot be unpacked into the folder for temporary files, \"/no such\" (TMPDIR "
       "names "
       "another): No such file or directory: f",
       {.in_memory = 9, .folder = "/no such"}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(MessageOf([&] { UnpackedText(row.bytes, row.limits); }), row.message);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
  }
  EXPECT_EQ(
      MessageOf([&] { ValuesIn(folder, Xz(Gzip(kText))); }),
      "The file is packed twice, inside by gzip; unpack it first: " + folder.File("data").string());
}

TEST(Unpack, CanBeCancelledWithNothingLoaded) {
  const TemporaryFolder folder;
  std::string text = "a,b\n";
  for (int i = 0; i < 2'000'000; ++i) text += "1234567,8\n";
  const auto path = folder.Write("data", Zstd(text));
  testing::CancellingProgress progress(2);
  LoadOptions load;
  load.progress = &progress;
  const ImportResult result = ImportFile(path, {}, load);
  EXPECT_TRUE(result.cancelled && result.series.empty());
  EXPECT_EQ(progress.Shown(), "Unpacking: " + path.string());

  TDataSeries series;
  series.AddPoint(1, 2);
  series.Source().DataSource = DataSourceKind::Text;
  series.Source().DatasourceInfo = path.string();
  TDataSeries* const all[] = {&series};
  const LoadReport report = RefreshAll(all, load).at(0);
  EXPECT_TRUE(report.cancelled && !report.loaded);
  EXPECT_EQ(series.PointCount(), 1);
}

}  // namespace
}  // namespace tarnwick
