#include "posix/posix_file_system.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "engine/file_search.h"
#include "posix/posix_clock.h"

namespace tallowmere {
namespace {

namespace fs = std::filesystem;

class PosixFilesTest : public ::testing::Test {
 protected:
  PosixFilesTest() {
    std::string pattern = (fs::temp_directory_path() / "tallowmere-XXXXXX").string();
    top = std::string(mkdtemp(pattern.data())) + "/";
  }
  ~PosixFilesTest() override { fs::remove_all(top); }

  void write(const std::string& name, const std::string& text) {
    std::ofstream(top + name, std::ios::binary) << text;
  }

  std::string listed(const std::string& folder) {
    FolderListing listing;
    if (const auto error = files.list_folder(folder, listing, [] { return true; })) {
      return error->text;
    }
    std::vector<std::string> names;
    for (std::size_t i = 0; i < listing.file_count(); ++i) names.emplace_back(listing.file(i).name);
    for (std::size_t i = 0; i < listing.folder_count(); ++i) {
      names.push_back(std::string(listing.folder(i)) + "/");
    }
    std::sort(names.begin(), names.end());
    std::string line;
    for (const std::string& name : names) line += name + "|";
    return line;
  }

  std::string read_all(const std::string& folder, const std::string& name) {
    if (const auto error = file->open(folder, name)) return error->text;
    unsigned char block[100];
    std::size_t got = 0;
    const auto error = file->read(block, sizeof block, got);
    return error ? error->text : std::string(block, block + got);
  }

  PosixFileSystem files;
  std::unique_ptr<FileReader> file = files.reader();
  std::string top;
};

TEST_F(PosixFilesTest, ListsOrdinaryFilesAndFolders) {
  write("a.txt", "A");
  write(".hidden", "");
  write("trailing...", "");
  write("not\xFFunicode", "n");
  write(std::string(255, 'n'), "long");
  fs::create_directory(top + "sub");
  fs::create_directory(top + ".git");
  fs::create_symlink("a.txt", top + "link.txt");
  fs::create_directory_symlink(".", top + "loop");
  ASSERT_EQ(mkfifo((top + "pipe").c_str(), 0600), 0);
  EXPECT_EQ(listed(top), "a.txt|" + std::string(255, 'n') + "|not\xFFunicode|sub/|trailing...|");
  EXPECT_EQ(read_all(top, "not\xFFunicode"), "n");
  EXPECT_EQ(read_all(top, std::string(255, 'n')), "long");
  EXPECT_EQ(listed(top + "nowhere/"), "No such file or directory");
  EXPECT_EQ(listed(top + "a.txt/"), "Not a directory");
}

TEST_F(PosixFilesTest, WhatIsNoFileFailsInsteadOfBlocking) {
  ASSERT_EQ(mkfifo((top + "pipe").c_str(), 0600), 0);
  EXPECT_EQ(read_all(top, "pipe"), "Not a file on a disk");
  EXPECT_EQ(read_all("/dev/", "zero"), "Not a file on a disk");
  EXPECT_EQ(read_all("", top), "Is a directory");
  EXPECT_EQ(read_all(top, "gone"), "No such file or directory");
}

TEST_F(PosixFilesTest, EveryReaderHasItsOwnFileAndPlace) {
  fs::create_directory(top + "sub");
  write("a.txt", "aA");
  write("sub/a.txt", "bB");
  const auto other = files.reader();
  unsigned char byte = 0;
  std::size_t got = 0;
  ASSERT_FALSE(file->open(top, "a.txt"));
  ASSERT_FALSE(other->open(top + "sub/", "a.txt"));
  std::string read;
  for (FileReader* reader : {file.get(), other.get(), file.get(), other.get()}) {
    EXPECT_EQ(listed(top + "sub/"), "a.txt|");
    ASSERT_FALSE(reader->read(&byte, 1, got));
    read.append(got, static_cast<char>(byte));
  }
  EXPECT_EQ(read, "abAB");
  file->close();
  ASSERT_FALSE(other->seek(1));
  ASSERT_FALSE(other->read(&byte, 1, got));
  EXPECT_EQ(byte, 'B');
  EXPECT_EQ(read_all(top + "sub/", "a.txt"), "bB");
}

TEST_F(PosixFilesTest, PathsOfAnyLength) {
  // The system takes no path of this length in one piece.
  std::string path = top;
  std::string doubled;  // the same below `top`, with two slashes each
  const fs::path start = fs::current_path();
  for (int i = 0; i < 30; ++i) {
    const std::string name(200, static_cast<char>('a' + i % 26));
    fs::create_directory(fs::path(i == 0 ? top : "") / name);
    fs::current_path(fs::path(i == 0 ? top : "") / name);
    path += name + "/";
    doubled += name + "//";
  }
  std::ofstream("deep.txt") << "deep";
  fs::current_path(start);
  EXPECT_EQ(listed(path), "deep.txt|");
  EXPECT_EQ(read_all(path, "deep.txt"), "deep");
  listed(top);
  EXPECT_EQ(read_all(path, "deep.txt"), "deep");
  EXPECT_EQ(listed(path + "gone/"), "No such file or directory");
  FileFacts facts;
  EXPECT_FALSE(files.facts(path, "deep.txt", facts).has_value());
  EXPECT_EQ(facts.size, 4);
  // Wherever the path has to be cut.
  std::string shifted = top;
  for (int i = 0; i < 110; ++i, shifted += "./") {
    ASSERT_EQ(listed(shifted + doubled), "deep.txt|") << i;
    ASSERT_EQ(listed("/" + shifted + doubled), "deep.txt|") << i;
  }
}

TEST_F(PosixFilesTest, FactsAndLocalDates) {
  write("a.txt", "12345");
  const timespec times[2] = {{1710000000, 0}, {1710000000, 500}};
  ASSERT_EQ(utimensat(AT_FDCWD, (top + "a.txt").c_str(), times, 0), 0);
  FileFacts facts;
  ASSERT_FALSE(files.facts(top, "a.txt", facts).has_value());
  EXPECT_EQ(facts.size, 5);
  EXPECT_EQ(facts.modified, (1710000000 + 11644473600) * ticks_per_second + 5);
  EXPECT_TRUE(files.facts(top, "gone", facts).has_value());

  setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
  tzset();
  const PosixClock clock;
  EXPECT_EQ(clock.to_local(facts.modified), (DateTime{{2024, 3, 9}, 17, 0, 0}));
  const Ticks summer = clock.start_of_day({2024, 7, 1});
  EXPECT_EQ(clock.to_local(summer), (DateTime{{2024, 7, 1}, 0, 0, 0}));
  EXPECT_EQ(summer - clock.start_of_day({2024, 1, 1}), (182 * 24 - 1) * 3600 * ticks_per_second);
  EXPECT_EQ(clock.start_of_day({-5'000'000, 1, 1}), 0);
  EXPECT_GT(clock.start_of_day({5'000'000, 1, 1}), clock.start_of_day({30000, 12, 31}));
  unsetenv("TZ");
  tzset();
}

TEST(CalendarDates, DaysCountThroughLeapYears) {
  EXPECT_EQ(days_in_month(2024, 2), 29);
  EXPECT_EQ(days_in_month(1900, 2), 28);
  EXPECT_EQ(days_in_month(2000, 2), 29);
  EXPECT_EQ(add_days({2024, 2, 28}, 2), (Date{2024, 3, 1}));
  EXPECT_EQ(add_days({2024, 1, 1}, -1), (Date{2023, 12, 31}));
  EXPECT_EQ(days_from_epoch({1970, 1, 1}), 0);
  for (const std::int64_t days : {-200000, -1, 0, 59, 19000, 400000}) {
    EXPECT_EQ(days_from_epoch(add_days({1970, 1, 1}, days)), days);
  }
  EXPECT_FALSE(is_valid({2023, 2, 29}));
}

}  // namespace
}  // namespace tallowmere
