#include <gtest/gtest.h>

#include <climits>

#include "engine/file_search.h"
#include "engine/file_types.h"
#include "tests/support/memory_files.h"
#include "viewer/block_reader.h"

namespace tallowmere {
namespace {

class RecordingHost : public SearchHost {
 public:
  std::string matches;  ///< paths, a line each
  std::vector<std::string> failures;
  int retries = 0;
  std::size_t most_failures = SIZE_MAX;  ///< the user stops at this one
  int stop_after = -1;                   ///< questions until Stop; below 0: never

  std::function<void()> meanwhile;

  bool go_on() override {
    if (meanwhile) meanwhile();
    return stop_after < 0 || stop_after-- > 0;
  }
  void file_matched(const FoundFile& file) override {
    matches += std::string(file.folder) + std::string(file.name) + "\n";
    last = file.facts;
  }
  bool read_failed(const std::string& path, const SystemError& error) override {
    failures.push_back(path + " " + error.text);
    return failures.size() < most_failures;
  }
  bool retry_folder(const SystemError&) override { return retries-- > 0; }

  FileFacts last;
};

constexpr Ticks day = 86400 * ticks_per_second;

class FileSearchTest : public ::testing::Test {
 protected:
  FileSearchTest() {
    search.path = "/top";
    search.type_checked[0] = true;
    input.criteria = "cat";
    input.search_type = search_or;
  }

  FileSearch make() {
    load_search_criteria(search, input);
    return FileSearch(search, page, files, clock, host);
  }

  std::string found() {
    FileSearch run = make();
    run.search_files();
    searched = run.files_searched();
    unread = run.unread();
    stopped = run.stopped();
    EXPECT_EQ(run.files_matched(), std::count(host.matches.begin(), host.matches.end(), '\n'));
    EXPECT_EQ(files.opened, files.closed);
    return std::exchange(host.matches, "");
  }

  Ticks moment(int year, int month, int day_of_month) {
    return clock.start_of_day({year, month, day_of_month});
  }

  MemoryFiles files;
  FixedClock clock;
  RecordingHost host;
  CodePage page = CodePage::windows_1252();
  SearchCriteria search;
  CriteriaInput input;
  std::int64_t searched = 0;
  std::vector<UnreadFile> unread;
  bool stopped = false;
};

TEST_F(FileSearchTest, OwnFilesFirstThenSubfoldersByName) {
  files.add("/top/z.txt", "cat");
  files.add("/top/B/1.txt", "cat");
  files.add("/top/B/deep/er/2.txt", "cat");
  files.add("/top/a/3.txt", "cat");
  files.add("/top/c/4.txt", "dog");
  EXPECT_EQ(found(), "/top/z.txt\n/top/a/3.txt\n/top/B/1.txt\n/top/B/deep/er/2.txt\n");
  EXPECT_EQ(searched, 5);
  search.search_subfolders = false;
  EXPECT_EQ(found(), "/top/z.txt\n");
  EXPECT_EQ(searched, 1);
}

TEST_F(FileSearchTest, DepthIsNoMatter) {
  std::string path = "/top/";
  for (int i = 0; i < 3000; ++i) path += "d/";
  files.add(path + "deep.txt", "cat");
  EXPECT_EQ(found(), path + "deep.txt\n");
}

TEST_F(FileSearchTest, FileTypesAreTakenOneAfterAnother) {
  files.add("/top/a.txt", "cat");
  files.add("/top/b.TXT", "cat");
  files.add("/top/c.doc", "cat");
  files.add("/top/d.wri", "cat");
  files.add("/top/e", "cat");
  int reads = 0;
  files.on_read = [&] { ++reads; };
  search.type_checked = {false, true, true, false, true, false, false};
  search.user_types = {"*", "doc", "t?t", "wri", "txt", "", ""};
  // A file that fits two types is listed and counted twice, but read once.
  EXPECT_EQ(found(), "/top/c.doc\n/top/a.txt\n/top/b.TXT\n/top/a.txt\n/top/b.TXT\n");
  EXPECT_EQ(searched, 5);
  EXPECT_EQ(reads, 3);
  search.type_checked = {};
  EXPECT_EQ(found(), "");
  EXPECT_EQ(searched, 0);
}

TEST(FileTypes, PatternsFitTheWholeExtension) {
  for (const char* name : {"a.wri", "A.WPS", "x.y.w12", "n.w\xC3\xA9z", ".wri"}) {
    EXPECT_TRUE(fits_file_type(name, "w??")) << name;
  }
  for (const char* name : {"a.w", "a.writ", "a.wi", "wri", "a.xw12", "a.w.z", "a.wri~", "a.wri."}) {
    EXPECT_FALSE(fits_file_type(name, "w??")) << name;
  }
  EXPECT_TRUE(fits_file_type("data.tar.gz", "tar.gz"));
  EXPECT_TRUE(fits_file_type("data.tar.gz", "GZ"));
  EXPECT_TRUE(fits_file_type("caf\xC3\x89.\xC3\x84\xC3\x96", "\xC3\xA4\xC3\xB6"));
  EXPECT_TRUE(fits_file_type("Makefile", "*"));
  EXPECT_FALSE(fits_file_type("Makefile", ""));
  EXPECT_FALSE(fits_file_type("page.html", "htm"));
}

TEST_F(FileSearchTest, DateModes) {
  files.add("/top/a", "cat", moment(2023, 12, 31) + day - 1);
  files.add("/top/b", "cat", moment(2024, 1, 1));
  files.add("/top/c", "cat", moment(2024, 2, 29) + day / 2);
  files.add("/top/d", "cat", moment(2024, 5, 17));
  files.add("/top/e", "cat", 0);
  search.date_search = between_dates;
  search.from_date = search.to_date = {2024, 2, 29};
  EXPECT_EQ(found(), "/top/c\n");
  EXPECT_EQ(searched, 5);
  search.from_date = {2023, 12, 31};
  search.to_date = {2024, 1, 1};
  EXPECT_EQ(found(), "/top/a\n/top/b\n");
  search.date_search = specific_year;
  search.s_year = 2023;
  EXPECT_EQ(found(), "/top/a\n");
  search.date_search = specific_month;
  search.s_month = 12;
  search.s_month_year = 2023;
  EXPECT_EQ(found(), "/top/a\n");
  // Settings may hold any number.
  for (const int month : {1, 0, 13, -1}) {
    search.s_month = month;
    EXPECT_EQ(found(), "");
  }
  search.date_search = specific_year;
  for (const int year : {0, INT_MIN, INT_MAX}) {
    search.s_year = year;
    EXPECT_EQ(found(), "");
  }
  search.date_search = previous_days;
  search.past_days = 0;
  EXPECT_EQ(found(), "/top/d\n");
  search.past_days = 78;
  EXPECT_EQ(found(), "/top/c\n/top/d\n");
  search.date_search = 5;
  EXPECT_EQ(found(), "");
  search.date_search = all_dates;
  EXPECT_EQ(found().size(), 35u);
  // A listing without dates asks for each file's.
  files.listing_knows_facts = false;
  search.date_search = specific_year;
  search.s_year = 2023;
  EXPECT_EQ(found(), "/top/a\n");
  EXPECT_EQ(host.last.size, 3);
}

TEST_F(FileSearchTest, TroubleIsCountedAndNamed) {
  files.add("/top/bad.txt", "cat").unreadable = true;
  files.add("/top/good.txt", "cat");
  files.add("/top/sub/x.txt", "cat");
  files.add("/top/torn.txt", std::string(200000, '.')).breaks_at = 100000;
  files.folder_errors["/top/sub/"] = {5, "Access is denied"};
  EXPECT_EQ(found(), "/top/good.txt\n");
  EXPECT_EQ(searched, 3);
  ASSERT_EQ(unread.size(), 3u);
  EXPECT_EQ(unread[0].path + ": " + unread[0].reason, "/top/bad.txt: Access is denied");
  EXPECT_EQ(unread[1].path + ": " + unread[1].reason, "/top/torn.txt: Data error");
  EXPECT_EQ(unread[2].path + ": " + unread[2].reason, "/top/sub/: Access is denied");
  EXPECT_EQ(host.failures, std::vector<std::string>{"/top/torn.txt Data error"});
}

TEST_F(FileSearchTest, TheAnswerToAReadErrorStopsTheSearch) {
  for (const char* name : {"a", "b", "c"}) {
    files.add(std::string("/top/") + name, "cat").breaks_at = 0;
  }
  files.add("/top/d", "cat");
  host.most_failures = 2;
  EXPECT_EQ(found(), "");
  EXPECT_EQ(host.failures.size(), 2u);
  EXPECT_EQ(searched, 2);
  EXPECT_EQ(unread.size(), 2u);
  EXPECT_TRUE(stopped);
}

TEST_F(FileSearchTest, AListingThatBreaksOffIsSearchedAsFarAsItGoes) {
  for (const char* name : {"a", "b", "c", "sub/1", "sub/2", "sub/deep/3", "sub/deep/4"}) {
    files.add(std::string("/top/") + name, "cat");
  }
  files.folder_errors["/top/sub/"] = {59, "An unexpected network error occurred"};
  files.listed_before_error["/top/sub/"] = 1;
  EXPECT_EQ(found(), "/top/a\n/top/b\n/top/c\n/top/sub/1\n");
  ASSERT_EQ(unread.size(), 1u);
  EXPECT_EQ(unread[0].path, "/top/sub/");
  // The same in the folder to search, which is not asked about once it has begun.
  files.folder_errors = {{"/top/", {59, "An unexpected network error occurred"}}};
  files.listed_before_error = {{"/top/", 2}};
  EXPECT_EQ(found(), "/top/a\n/top/b\n");
  ASSERT_EQ(unread.size(), 1u);
  EXPECT_EQ(unread[0].path, "/top/");
  EXPECT_EQ(host.retries, 0);
  EXPECT_FALSE(stopped);
}

TEST_F(FileSearchTest, OthersReadMeanwhile) {
  files.add("/top/a", std::string(5 * FileChunks::chunk_size, '.') + "cat");
  files.add("/top/b", std::string(70'000, 'b'));
  BlockReader viewer(files);
  std::string piece;
  host.meanwhile = [&] {
    if (viewer.is_open()) return viewer.close();
    EXPECT_FALSE(viewer.open("/top/", "b"));
    EXPECT_FALSE(viewer.read(60'001, 9'999, piece));
  };
  EXPECT_TRUE(make().search_selected_file("/top/", "a"));
  EXPECT_EQ(piece, std::string(9'999, 'b'));
  EXPECT_EQ(host.failures.size(), 0u);
}

TEST_F(FileSearchTest, AFolderThatCannotBeListedIsTriedAgainOrStops) {
  files.add("/top/a", "cat");
  files.folder_errors["/top/"] = {21, "The device is not ready"};
  host.retries = 3;
  EXPECT_EQ(found(), "");
  EXPECT_EQ(host.retries, -1);
  EXPECT_TRUE(stopped);
  files.folder_errors.clear();
  EXPECT_EQ(found(), "/top/a\n");
  EXPECT_FALSE(stopped);
}

TEST_F(FileSearchTest, StopKeepsWhatWasFound) {
  for (char name = 'a'; name <= 'z'; ++name) files.add(std::string("/top/") + name, "cat");
  host.stop_after = 5;
  const std::string kept = found();
  EXPECT_EQ(kept.substr(0, 7), "/top/a\n");
  EXPECT_LT(kept.size(), 7u * 6);
  EXPECT_EQ(searched, static_cast<std::int64_t>(kept.size() / 7));
  EXPECT_TRUE(stopped);

  // Inside one long file, too, which counts as searched like any other that was begun.
  MemoryFiles::File& huge = files.add("/top/a", std::string(20 * FileChunks::chunk_size, '.'));
  host.stop_after = 8;
  int reads = 0;
  files.on_read = [&] { ++reads; };
  EXPECT_EQ(found(), "");
  EXPECT_EQ(searched, 1);
  EXPECT_LT(reads, 10);
  EXPECT_GT(huge.text.size(), 0u);
}

TEST_F(FileSearchTest, ListSearchKeepsStoredFactsAndAsksTheDiskForDates) {
  files.add("/top/a", "cat", moment(2024, 3, 1));
  files.add("/top/b", "dog", moment(2024, 3, 1));
  files.add("/other/c", "cat", moment(2020, 3, 1));
  const std::vector<FoundFile> listed = {{"/top/", "a", {7, 7}},
                                         {"/top/", "b", {7, 7}},
                                         {"/other/", "c", {7, 7}},
                                         {"/top/", "gone", {7, 7}}};
  const auto at = [&](std::size_t i) { return listed[i]; };
  FileSearch all = make();
  all.SearchListboxFiles(listed.size(), at);
  EXPECT_EQ(std::exchange(host.matches, ""), "/top/a\n/other/c\n");
  EXPECT_EQ(host.last.modified, 7);
  EXPECT_EQ(all.files_searched(), 4);
  ASSERT_EQ(all.unread().size(), 1u);
  EXPECT_EQ(all.unread()[0].path, "/top/gone");

  search.date_search = specific_year;
  search.s_year = 2024;
  FileSearch dated = make();
  dated.SearchListboxFiles(listed.size(), at);
  EXPECT_EQ(host.matches, "/top/a\n");
  // The selected file is tested whatever its date.
  EXPECT_TRUE(make().search_selected_file("/other/", "c"));
  EXPECT_FALSE(make().search_selected_file("/top/", "b"));
}

}  // namespace
}  // namespace tallowmere
