#include "base/whole_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <thread>

#include "base/error.h"
#include "base/mapped_file.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

namespace fs = std::filesystem;
using testing::ReadFile;
using testing::TemporaryFolder;

std::ptrdiff_t FilesIn(const fs::path& folder) {
  return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
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

TEST(WholeFile, ReplacesOnlyWhenCommitted) {
  const TemporaryFolder folder;
  const fs::path file = folder.Write("a.txt", "old");
  {
    WholeFile writing(file);
    writing.Write(std::string(1 << 20, 'x'));
    EXPECT_EQ(ReadFile(file), "old");
  }
  EXPECT_EQ(ReadFile(file), "old");
  EXPECT_EQ(FilesIn(folder.Path()), 1);
  WriteWholeFile(file, "new");
  EXPECT_EQ(ReadFile(file), "new");
  EXPECT_EQ(FilesIn(folder.Path()), 1);
}

TEST(WholeFile, KeepsPermissionsAndLinks) {
  const TemporaryFolder folder;
  const fs::path file = folder.Write("a.txt", "old");
  fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  fs::create_directory(folder.File("elsewhere"));
  fs::create_symlink("../a.txt", folder.File("elsewhere/link"));
  WriteWholeFile(folder.File("elsewhere/link"), "new");
  EXPECT_EQ(ReadFile(file), "new");
  EXPECT_TRUE(fs::is_symlink(folder.File("elsewhere/link")));
  EXPECT_EQ(fs::status(file).permissions(),
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  fs::create_symlink("not yet", folder.File("ahead"));
  WriteWholeFile(folder.File("ahead"), "there");
  EXPECT_EQ(ReadFile(folder.File("not yet")), "there");
}

TEST(WholeFile, SaysWhatFailed) {
  const TemporaryFolder folder;
  const std::string name = folder.Path().string();
  EXPECT_EQ(MessageOf([&] { WriteWholeFile(folder.Path(), ""); }),
            "Cannot write the file: " + name + ", Is a directory");
  EXPECT_EQ(MessageOf([&] { WriteWholeFile(folder.File("no/a"), ""); }),
            "Cannot write the file: " + name + "/no/a, No such file or directory");
  fs::create_symlink("loop", folder.File("loop"));
  EXPECT_EQ(MessageOf([&] { WriteWholeFile(folder.File("loop"), ""); }),
            "Cannot write the file: " + name + "/loop, Too many levels of symbolic links");
  EXPECT_EQ(MessageOf([&] { MappedFile{folder.File("no")}; }),
            "Cannot read the file: " + name + "/no, No such file or directory");
  EXPECT_EQ(MessageOf([&] { MappedFile{folder.Path()}; }),
            "Cannot read the file: " + name + ", Is a directory");
}

TEST(WholeFile, BeyondTheLimitOfTheSystemIsNoEndOfTheProgram) {
  const TemporaryFolder folder;
  const fs::path file = folder.Write("a", "old");
  struct rlimit usual {};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &usual), 0);
  RefuseTooLargeFiles();
  const struct rlimit small { 1000, usual.rlim_max };
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const std::string message = MessageOf([&] { WriteWholeFile(file, std::string(5000, 'x')); });
  ::setrlimit(RLIMIT_FSIZE, &usual);
  EXPECT_EQ(message, "Cannot write the file: " + file.string() + ", File too large");
  EXPECT_EQ(ReadFile(file), "old");
}

// A device must never be replaced by a file of its name.
TEST(WholeFile, WritesDevicesStraight) {
  WriteWholeFile("/dev/null", "gone");
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_EQ(MessageOf([] { WriteWholeFile("/dev/full", "x"); }),
            "Cannot write the file: /dev/full, No space left on device");
}

TEST(MappedFile, ReadsFilesPipesAndEmptyFiles) {
  const TemporaryFolder folder;
  const std::string contents(100'000, 'y');
  MappedFile first(folder.Write("a", contents));
  const MappedFile moved = std::move(first);
  EXPECT_EQ(moved.Bytes(), contents);
  EXPECT_EQ(MappedFile(folder.Write("empty", "")).Bytes(), "");
  EXPECT_FALSE(MappedFile("/proc/self/status").Bytes().empty());

  const fs::path pipe = folder.File("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  std::jthread writer([&] { testing::WriteFile(pipe, contents); });
  EXPECT_EQ(MappedFile(pipe).Bytes(), contents);
}

TEST(MappedFile, WhatHasNoEndIsRefusedByItsFirstBlock) {
  std::size_t seen = 0;
  const FirstLook refuse = [&](std::string_view block) {
    seen = block.size();
    throw FileError("zeros", "", "");
  };
  EXPECT_EQ(MessageOf([&] { MappedFile("/dev/zero", refuse); }), "zeros: ");
  EXPECT_GE(seen, 65536U);
  const TemporaryFolder folder;
  EXPECT_EQ(MappedFile(folder.Write("a", "short"), refuse).Bytes(), "short");
}

}  // namespace
}  // namespace tarnwick
