#include "posix/posix_file_system.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "engine/file_search.h"
#include "posix/posix_clock.h"

namespace tallowmere {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

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

  std::string listed(const std::string& folder, bool hidden = false) {
    FolderListing listing;
    listing.set_wants_hidden(hidden);
    const auto error = files.list_folder(folder, listing, [] { return true; });
    if (error) return error->text;
    std::set<std::string> names;
    for (std::size_t i = 0; i < listing.file_count(); ++i) names.emplace(listing.file(i).name);
    for (std::size_t i = 0; i < listing.folder_count(); ++i) {
      names.insert(std::string(listing.folder(i)) + "/");
    }
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
  const std::string longest(255, 'n');
  for (const std::string& name :
       {"a.txt"s, ".hidden"s, "trailing..."s, "not\xFFunicode"s, longest}) {
    write(name, "A");
  }
  fs::create_directory(top + "sub");
  fs::create_directory(top + ".git");
  fs::create_symlink("a.txt", top + "link.txt");
  fs::create_directory_symlink(".", top + "loop");
  ASSERT_EQ(mkfifo((top + "pipe").c_str(), 0600), 0);
  EXPECT_EQ(listed(top), "a.txt|" + longest + "|not\xFFunicode|sub/|trailing...|");
  EXPECT_EQ(listed(top, true),
            ".git/|.hidden|a.txt|" + longest + "|not\xFFunicode|sub/|trailing...|");
  EXPECT_EQ(read_all(top, "not\xFFunicode") + read_all(top, longest), "AA");
  EXPECT_EQ(listed(top + "nowhere/"), "No such file or directory");
  // What is no file fails instead of blocking.
  EXPECT_EQ(read_all(top, "pipe"), "Not a file on a disk");
  EXPECT_EQ(read_all("", top), "Is a directory");
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
  ASSERT_FALSE(other->seek(1) || other->read(&byte, 1, got));
  EXPECT_EQ(byte, 'B');
  EXPECT_EQ(read_all(top + "sub/", "a.txt"), "bB");
}

TEST_F(PosixFilesTest, PathsOfAnyLength) {
  // The system takes no path of this length in one piece.
  std::string path;  // below `top`
  const fs::path start = fs::current_path();
  fs::current_path(top);
  for (int i = 0; i < 30; ++i) {
    const std::string name(200, static_cast<char>('a' + i % 26));
    fs::create_directory(name);
    fs::current_path(name);
    path += name + "//";
  }
  std::ofstream("deep.txt") << "deep";
  fs::current_path(start);
  EXPECT_EQ(read_all(top + path, "deep.txt"), "deep");
  FileFacts facts;
  EXPECT_FALSE(files.facts(top + path, "deep.txt", facts));
  // Wherever the path has to be cut.
  std::string shifted = top;
  for (int i = 0; i < 110; ++i, shifted += "./") {
    ASSERT_EQ(listed(shifted + path), "deep.txt|") << i;
    ASSERT_EQ(listed("/" + shifted + path), "deep.txt|") << i;
  }
}

TEST_F(PosixFilesTest, FactsAndLocalDates) {
  write("a.txt", "12345");
  const timespec times[2] = {{1710000000, 0}, {1710000000, 500}};
  ASSERT_EQ(utimensat(AT_FDCWD, (top + "a.txt").c_str(), times, 0), 0);
  FileFacts facts;
  ASSERT_FALSE(files.facts(top, "a.txt", facts).has_value());
  EXPECT_EQ(facts, (FileFacts{(1710000000 + 11644473600) * ticks_per_second + 5, 5}));

  setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
  tzset();
  const PosixClock clock;
  EXPECT_EQ(clock.to_local(facts.modified), (DateTime{{2024, 3, 9}, 17, 0, 0}));
  const Ticks summer = clock.start_of_day({2024, 7, 1});
  EXPECT_EQ(summer - clock.start_of_day({2024, 1, 1}), (182 * 24 - 1) * 3600 * ticks_per_second);
  unsetenv("TZ");
  tzset();
}

TEST(CalendarDates, DaysCountThroughLeapYears) {
  Date day{1599, 12, 31};
  for (std::int64_t days = days_from_epoch(day); day.year < 2405; ++days) {
    ASSERT_TRUE(is_valid(day) && days_from_epoch(day) == days);
    const bool last_of_month = day.day == days_in_month(day.year, day.month);
    const Date next = add_days(day, 1);
    ASSERT_TRUE(next > day && next.day == (last_of_month ? 1 : day.day + 1));
    day = next;
  }
  EXPECT_EQ(days_from_epoch({1970, 1, 1}), 0);
  EXPECT_TRUE(is_valid({2000, 2, 29}) && !is_valid({1900, 2, 29}) && !is_valid({2023, 2, 29}));
}

}  // namespace
}  // namespace tallowmere
