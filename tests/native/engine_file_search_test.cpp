#include <gtest/gtest.h>

#include <climits>
#include <functional>

#include "engine/file_search.h"
#include "engine/file_types.h"
#include "engine/name_patterns.h"
#include "tests/support/memory_files.h"

namespace tallowmere {
namespace {

class RecordingHost : public SearchHost {
 public:
  std::string matches;  ///< paths, a line each
  std::string failures;
  FileFacts last;
  int retries = 0;
  int failures_left = INT_MAX;  ///< the user stops at the last of these
  int stop_after = -1;          ///< questions until Stop; below 0: never

  std::function<std::string()> current_folder = [] { return ""; };
  std::string folders;  ///< what that has answered, a line each

  bool go_on() override {
    const std::string folder = current_folder() + "\n";
    if (folder != "\n" && !folders.ends_with(folder)) folders += folder;
    return stop_after < 0 || stop_after-- > 0;
  }
  void file_matched(const FoundFile& file) override {
    matches += std::string(file.folder) + std::string(file.name) + "\n";
    last = file.facts;
  }
  bool read_failed(const std::string& path, const SystemError& error) override {
    failures += path + ": " + error.text + "\n";
    return --failures_left > 0;
  }
  bool retry_folder(const SystemError&) override { return retries-- > 0; }
};

constexpr Ticks day = 86400 * ticks_per_second;

class FileSearchTest : public ::testing::Test {
 protected:
  FileSearchTest() {
    search.path = "/top";
    search.type_checked[0] = true;
    load_search_criteria(search, {"cat", search_or});
  }

  void add(std::initializer_list<const char*> names) {
    for (const char* name : names) files.add(std::string("/top/") + name, "cat");
  }

  FileSearch make() { return FileSearch(search, page, files, clock, host, use); }

  std::string found() {
    FileSearch run = make();
    run.search_files();
    searched = run.files_searched();
    unread = lines(run.unread());
    stopped = run.stopped();
    EXPECT_EQ(run.files_matched(), std::count(host.matches.begin(), host.matches.end(), '\n'));
    EXPECT_EQ(files.opened, files.closed);
    return std::exchange(host.matches, "");
  }

  static std::string lines(const std::vector<UnreadFile>& files) {
    std::string text;
    for (const UnreadFile& file : files) text += file.path + ": " + file.reason + "\n";
    return text;
  }

  MemoryFiles files;
  FixedClock clock;
  RecordingHost host;
  CodePage page = CodePage::windows_1252();
  SearchCriteria search;
  ThreadUse use;
  std::int64_t searched = 0;
  std::string unread;
  bool stopped = false;
};

TEST_F(FileSearchTest, OwnFilesFirstThenSubfoldersByName) {
  add({"z.txt", "B/1.txt", "B/deep/er/2.txt", "a/3.txt"});
  files.add("/top/c/4.txt", "dog");
  EXPECT_EQ(found(), "/top/z.txt\n/top/a/3.txt\n/top/B/1.txt\n/top/B/deep/er/2.txt\n");
  EXPECT_EQ(searched, 5);
  search.search_subfolders = false;
  EXPECT_EQ(found(), "/top/z.txt\n");
  // At any depth.
  search.search_subfolders = true;
  search.path = "/deep/";
  for (int i = 0; i < 3000; ++i) search.path += "d/";
  files.add(search.path + "f", "cat");
  const std::string deepest = std::exchange(search.path, "/deep");
  EXPECT_EQ(found(), deepest + "f\n");
}

TEST_F(FileSearchTest, FileTypesAreTakenOneAfterAnother) {
  add({"a.txt", "c.doc", "d.wri", "e"});
  files.add("/top/b.TXT", "dog");
  int reads = 0;
  files.on_read = [&] { ++reads; };
  search.type_checked = {false, true, true, false, true, false, false};
  search.user_types = {"*", "doc", "t?t", "wri", "txt", "", ""};
  // A file that fits two types is listed and counted twice, but read once.
  EXPECT_EQ(found(), "/top/c.doc\n/top/a.txt\n/top/a.txt\n");
  EXPECT_TRUE(searched == 5 && reads == 3);
  files.add("/top/f.txt", "cat").unreadable = true;
  found();
  EXPECT_EQ(unread, "/top/f.txt: Access is denied\n");
}

TEST(FileTypes, PatternsFitTheWholeExtension) {
  const struct {
    const char* pattern;
    std::vector<std::string> fitting, other;
  } cases[] = {
      {"w??",
       {"a.wri", "A.WPS", "x.y.w12", "n.w\xC3\xA9z", ".wri"},
       {"a.w", "a.writ", "a.wi", "wri", "a.xw12", "a.w.z", "a.wri."}},
      {"tar.gz", {"data.tar.gz"}, {"data.gz"}},
      {"G\xC3\xB6", {"data.tar.g\xC3\x96"}, {"g\xC3\xB6"}},
      {"*", {"Makefile"}, {}},
      {"", {}, {"Makefile", "a."}},
  };
  for (const auto& [pattern, fitting, other] : cases) {
    for (const auto& name : fitting) EXPECT_TRUE(fits_file_type(name, pattern)) << name;
    for (const auto& name : other) EXPECT_FALSE(fits_file_type(name, pattern)) << name;
  }
}

TEST(NamePatterns, FitWholeNamesAndTakeWhateverIsTyped) {
  std::string many = std::string(8000, '*') + "a;" + std::string(300, '?') + "*;";
  for (int i = 0; i < 300; ++i) many += "*a*a*a*a*a*a*a*a*a*a*a*a*???b;";
  const std::string as(252, 'a');
  const struct {
    std::string patterns;
    std::vector<std::string> fitting, other;
  } cases[] = {
      {" ; \t;", {}, {"", " ", ";", "a"}},
      {" .git ;NODE_modules;; *.b?k",
       {".GIT", "node_modules", ".bak", "a.b.b\xC3\xA9k"},
       {"git", ".gitignore", "a.bk", "a.bak2", " .git "}},
      {"*aba*?b;x*", {"ababxb", "xabababb", "aba*x*yb", "x"}, {"abab", "ababa", "b"}},
      {"***\xC3\x89t?", {"\xC3\xA9T\xE2\x82\xAC", "x\xC3\xA9t\xFF"}, {"et", "\xC3\xA9t"}},
      // Does not take much longer than the others.
      {many, {as, as + "b", std::string(300, 'b')}, {as + "c", "b"}},
  };
  for (const auto& [patterns, fitting, other] : cases) {
    const NamePatterns leave_out(patterns);
    for (const auto& name : fitting) EXPECT_TRUE(leave_out.fit(name)) << name;
    for (const auto& name : other) EXPECT_FALSE(leave_out.fit(name)) << name;
  }
}

TEST_F(FileSearchTest, WhatIsLeftOutIsCountedAndNamesAreAsIfTheyWereNotThere) {
  add({"a.txt", "c.doc", "a.bak", "top", "sub/b.txt", "sub/c.BAK", ".git/d", "sub/.git/e"});
  files.add("/top/new.txt", "cat", day * 400);
  files.folder_errors["/top/.git/"] = {5, "Access is denied"};
  search.leave_out = "*.bak; .git; top";
  search.type_checked = {false, true, true};
  search.user_types = {"*", "t?t", "txt"};  // each file comes twice
  search.date_search = specific_year;
  search.s_year = 1601;
  for (const bool subfolders : {false, true}) {
    search.search_subfolders = subfolders;
    FileSearch run = make();
    host.current_folder = [&] { return run.current_folder(); };
    run.search_files();
    host.current_folder = [] { return ""; };
    EXPECT_TRUE(run.files_searched() == (subfolders ? 6 : 4) && run.unread().empty());
    const LeftOut& left_out = run.left_out();
    EXPECT_TRUE(left_out.types == 1 && left_out.names == (subfolders ? 5 : 2)) << left_out.names;
    EXPECT_EQ(left_out.dates, 1);
  }
  EXPECT_TRUE(host.matches.ends_with("/top/a.txt\n/top/sub/b.txt\n/top/sub/b.txt\n"));
  EXPECT_EQ(host.folders, "/top/\n/top/sub/\n");
  // A search of files that the user has chosen asks for no names.
  EXPECT_TRUE(make().search_selected_file("/top/", "a.bak"));
  make().SearchListboxFiles(1, [](std::size_t) { return FoundFile{"/top/", "a.bak", {}}; });
  EXPECT_TRUE(host.matches.ends_with("/top/a.bak\n"));
}

TEST_F(FileSearchTest, WhatIsNotOnThisComputerIsFetchedOnlyWhenAsked) {
  add({"a", "b"});
  files.add("/top/cloud", "cat").online_only = true;
  int read = 0;
  files.on_read = [&] { ++read; };
  for (const bool facts_listed : {true, false}) {
    for (const bool fetch : {false, true}) {
      files.listing_knows_facts = facts_listed;
      search.online_files = fetch;
      read = files.opened = files.closed = 0;
      EXPECT_EQ(found(), std::string("/top/a\n/top/b\n") + (fetch ? "/top/cloud\n" : ""));
      EXPECT_EQ(unread, fetch ? "" : "/top/cloud: not on this computer\n");
      EXPECT_EQ(files.opened, fetch || !facts_listed ? 3 : 2);
      EXPECT_EQ(make().search_selected_file("/top/", "cloud"), fetch);
      FileSearch list = make();
      list.SearchListboxFiles(1, [](std::size_t) { return FoundFile{"/top/", "cloud", {}}; });
      EXPECT_EQ(std::exchange(host.matches, ""), fetch ? "/top/cloud\n" : "");
      EXPECT_EQ(lines(list.unread()), unread);
      EXPECT_TRUE(searched == 3 && read == (fetch ? 5 : 2) && files.opened == files.closed);
    }
  }
}

TEST_F(FileSearchTest, DateModes) {
  const std::tuple<const char*, Date, Ticks> dated[] = {{"/top/a", {2023, 12, 31}, day - 1},
                                                        {"/top/b", {2024, 1, 1}, 0},
                                                        {"/top/c", {2024, 2, 29}, day / 2},
                                                        {"/top/d", {2024, 5, 17}, 0}};
  for (const auto& [path, date, later] : dated) {
    files.add(path, "cat", clock.start_of_day(date) + later);
  }
  files.add("/top/e", "cat", 0);
  const struct {
    int mode, number, month;  ///< days or year
    Date from, to;
    std::string found;
  } cases[] = {
      {between_dates, 0, 0, {2024, 2, 29}, {2024, 2, 29}, "c"},
      {between_dates, 0, 0, {2023, 12, 31}, {2024, 1, 1}, "ab"},
      {previous_days, 0, 0, {}, {}, "d"},
      {previous_days, 78, 0, {}, {}, "cd"},
      {specific_month, 2023, 12, {}, {}, "a"},
      {specific_month, 2024, 1, {}, {}, "b"},
      {all_dates, 0, 0, {}, {}, "abcde"},
      {specific_year, 2023, 0, {}, {}, "a"},
      // Settings may hold any number.
      {specific_month, 2023, 0, {}, {}, ""},
      {specific_month, 2023, 13, {}, {}, ""},
      {specific_year, INT_MIN, 0, {}, {}, ""},
      {specific_year, INT_MAX, 0, {}, {}, ""},
      {5, 0, 0, {}, {}, ""},
  };
  // A listing without dates asks for each file's.
  for (const bool facts_listed : {true, false}) {
    files.listing_knows_facts = facts_listed;
    for (const auto& [mode, number, month, from, to, names] : cases) {
      search.date_search = mode;
      search.past_days = search.s_year = search.s_month_year = number;
      search.s_month = month;
      search.from_date = from;
      search.to_date = to;
      std::string expected;
      for (const char name : names) expected += std::string("/top/") + name + "\n";
      EXPECT_EQ(found(), expected) << mode << " " << number << " " << month;
      EXPECT_EQ(searched, 5);
    }
  }
  EXPECT_EQ(host.last.size, 3);
}

TEST_F(FileSearchTest, TroubleIsCountedAndNamedAndMayStopTheSearch) {
  files.add("/top/bad.txt", "cat").unreadable = true;
  add({"good.txt", "sub/x.txt"});
  files.add("/top/torn.txt", std::string(200000, '.')).breaks_at = 100000;
  files.folder_errors["/top/sub/"] = {5, "Access is denied"};
  for (const bool stops : {false, true}) {
    if (stops) host.failures_left = 1;
    const std::string sub = stops ? "" : "/top/sub/: Access is denied\n";
    EXPECT_EQ(found(), "/top/good.txt\n");
    EXPECT_EQ(searched, 3);
    EXPECT_EQ(unread, "/top/bad.txt: Access is denied\n/top/torn.txt: Data error\n" + sub);
    EXPECT_EQ(std::exchange(host.failures, ""), "/top/torn.txt: Data error\n");
    EXPECT_EQ(stopped, stops);
  }
}

TEST_F(FileSearchTest, AListingThatBreaksOffIsSearchedAsFarAsItGoes) {
  add({"a", "b", "c", "sub/1", "sub/2", "sub/deep/3", "sub/deep/4"});
  files.folder_errors["/top/sub/"] = {59, "Network error"};
  files.listed_before_error["/top/sub/"] = 1;
  EXPECT_EQ(found(), "/top/a\n/top/b\n/top/c\n/top/sub/1\n");
  EXPECT_EQ(unread, "/top/sub/: Network error\n");
  // The same in the folder to search, which is not asked about once it has begun.
  files.folder_errors = {{"/top/", {59, "Network error"}}};
  files.listed_before_error = {{"/top/", 2}};
  EXPECT_EQ(found(), "/top/a\n/top/b\n");
  EXPECT_EQ(unread, "/top/: Network error\n");
  EXPECT_FALSE(stopped);
  // A folder that cannot be listed at all is tried again as long as the user wants.
  files.listed_before_error.clear();
  host.retries = 3;
  EXPECT_EQ(found(), "");
  EXPECT_TRUE(stopped && host.retries == -1);
}

TEST_F(FileSearchTest, StopKeepsWhatWasFound) {
  add({"a", "b", "c", "d", "e", "f", "g", "h", "i"});
  host.stop_after = 5;
  const std::string kept = found();
  EXPECT_TRUE(stopped && kept.starts_with("/top/a\n") && kept.size() < 7u * 6) << kept;
  EXPECT_EQ(searched, std::ssize(kept) / 7);

  // Inside one long file, too, which counts as searched like any other that was begun.
  files.add("/top/a", std::string(20 * FileChunks::chunk_size, '.'));
  host.stop_after = 8;
  int reads = 0;
  files.on_read = [&] { ++reads; };
  EXPECT_EQ(found(), "");
  EXPECT_TRUE(searched == 1 && reads < 10);
}

TEST_F(FileSearchTest, ListSearchKeepsStoredFactsAndAsksTheDiskForDates) {
  files.add("/top/a", "cat", clock.start_of_day({2024, 3, 1}));
  files.add("/top/b", "dog", clock.start_of_day({2024, 3, 1}));
  files.add("/other/c", "cat", clock.start_of_day({2020, 3, 1}));
  const std::pair<const char*, const char*> listed[] = {
      {"/top/", "a"}, {"/top/", "b"}, {"/other/", "c"}, {"/top/", "gone"}};
  const auto at = [&](std::size_t i) {
    return FoundFile{listed[i].first, listed[i].second, {7, 7}};
  };
  FileSearch all = make();
  all.SearchListboxFiles(4, at);
  EXPECT_EQ(std::exchange(host.matches, ""), "/top/a\n/other/c\n");
  EXPECT_EQ(host.last.modified, 7);
  EXPECT_EQ(all.files_searched(), 4);
  EXPECT_EQ(lines(all.unread()), "/top/gone: File not found\n");

  search.date_search = specific_year;
  search.s_year = 2024;
  make().SearchListboxFiles(4, at);
  EXPECT_EQ(host.matches, "/top/a\n");
  // The selected file is tested whatever its date.
  EXPECT_TRUE(make().search_selected_file("/other/", "c"));
  EXPECT_FALSE(make().search_selected_file("/top/", "b"));
}

TEST_F(FileSearchTest, CountsWhatMayReadOtherwiseAsUnicodeText) {
  files.add("/top/ascii", "cat");
  files.add("/top/page", "cat \xFC");
  files.add("/top/utf16.txt", std::string("\xFF\xFE") + std::string("c\0a\0t\0", 6));
  files.add("/top/utf16be", "\xFE\xFF cat");
  files.add("/top/utf8", "M\xC3\xBCller cat");
  search.type_checked[1] = true;  // so one of the files comes twice
  search.user_types[1] = "txt";
  const struct {
    const char* criteria;
    bool unicode_text;
    std::int64_t count;
    const char* last;
  } cases[] = {{"cat", false, 2, "/top/utf8\n"},
               {"M\xC3\xBCller", false, 3, ""},
               {"M\xC3\xBCller", true, 0, "/top/utf8\n"},
               {"", false, 0, "/top/utf16.txt\n"}};
  for (const auto& [criteria, unicode_text, count, last] : cases) {
    load_search_criteria(search, {criteria, search_or});
    search.unicode_text = unicode_text;
    host.matches.clear();
    FileSearch run = make();
    run.search_files();
    EXPECT_EQ(run.read_as_bytes(), count) << criteria;
    EXPECT_TRUE(host.matches.ends_with(last)) << host.matches;
  }
}

}  // namespace
}  // namespace tallowmere
