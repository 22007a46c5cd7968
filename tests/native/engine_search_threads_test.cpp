#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <new>
#include <random>
#include <set>
#include <thread>

#include "engine/file_search.h"
#include "tests/support/hanging_files.h"
#include "tests/support/seed.h"

namespace tallowmere {
namespace {

using Call = HangingFiles::Call;

/// Records all that a search reports, and stops it on command.
class LoggingHost : public SearchHost {
 public:
  std::string log;
  int matches = 0;
  int stop_after = INT_MAX;    ///< matches
  std::function<bool()> stop;  ///< also stops it
  std::function<bool()> retry;

  bool go_on() override {
    check_thread();
    return matches < stop_after && !(stop && stop());
  }
  void file_matched(const FoundFile& file) override {
    ++matches;
    note(std::string(file.folder) + std::string(file.name) + " " + std::to_string(file.facts.size));
  }
  bool read_failed(const std::string& path, const SystemError& error) override {
    note(path + ": " + error.text);
    return true;
  }
  bool retry_folder(const SystemError& error) override {
    note(error.text);
    return retry && retry();
  }

 private:
  void check_thread() const { EXPECT_EQ(std::this_thread::get_id(), own_); }
  void note(const std::string& line) {
    check_thread();
    log += line + "\n";
  }

  const std::thread::id own_ = std::this_thread::get_id();
};

class SearchThreadsTest : public ::testing::Test {
 protected:
  SearchThreadsTest() {
    search.path = "/";
    search.type_checked[0] = true;
    load_search_criteria(search, {"cat \xD0\xB6", search_or});
    search.unicode_text = true;
  }

  FileSearch make(SearchHost& host, const ThreadUse& use) {
    return FileSearch(search, page, files, clock, host, use);
  }

  void plant_tree(std::mt19937& random);
  std::string told(unsigned threads, int stop_after, const std::vector<std::string>* list);

  CodePage page = CodePage::windows_1252();
  FixedClock clock;
  SearchCriteria search;
  HangingFiles files;
};

/// Folders and files of all kinds, some of them in trouble.
void SearchThreadsTest::plant_tree(std::mt19937& random) {
  const auto chance = [&](unsigned one_in) { return random() % one_in == 0; };
  std::vector<std::string> folders = {"/"};
  const std::size_t count = 1 + random() % 60;
  while (folders.size() < count) {
    folders.push_back(folders[random() % folders.size()] + "d" + std::to_string(random() % 99) +
                      "/");
  }
  for (const std::string& folder : folders) {
    for (auto left = chance(20) ? 300 : random() % 8; left > 0; --left) {
      const char* types[] = {".txt", ".c", ".text", ""};
      const std::string name = "f" + std::to_string(random() % 999) + types[random() % 4];
      const std::size_t padding = chance(30) ? 200000 : random() % 9;
      auto& file =
          files.add(folder + name,
                    std::string(padding, '.') + (chance(3)   ? "dog"
                                                 : chance(2) ? " cat"
                                                             : "\xC3\xA9\xE2\x80\x8B\xD0\x96"),
                    static_cast<Ticks>(random() % 3) * 400 * 86400 * ticks_per_second);
      file.unreadable = chance(15);
      file.online_only = chance(15);
      if (chance(15)) file.breaks_at = random() % (padding + 1);
    }
    if (folder != "/" && chance(12)) {
      files.folder_errors[folder] = {59, "Network error"};
      if (chance(2)) files.listed_before_error[folder] = random() % 4;
    }
  }
  files.listing_knows_facts = chance(2);
}

/// All that one run reports, of the folders or of a list of files.
std::string SearchThreadsTest::told(unsigned threads, int stop_after,
                                    const std::vector<std::string>* list) {
  LoggingHost host;
  host.stop_after = stop_after;
  FileSearch run = make(host, {threads, false});
  host.stop = [&run] { return run.current_folder() == "nowhere"; };
  if (list) {
    run.SearchListboxFiles(list->size(), [&](std::size_t i) {
      const std::string_view path = (*list)[i];
      const std::size_t name = path.rfind('/') + 1;
      return FoundFile{path.substr(0, name), path.substr(name), {1, 1}};
    });
  } else {
    run.search_files();
  }
  for (const UnreadFile& file : run.unread()) host.log += "? " + file.path + file.reason + "\n";
  const LeftOut& left_out = run.left_out();
  host.log +=
      std::to_string(left_out.types + 1000 * (left_out.names + 1000 * left_out.dates)) + " ";
  return host.log + std::to_string(run.files_searched()) + " " +
         std::to_string(run.files_matched()) + (run.stopped() ? " stopped" : "");
}

TEST_F(SearchThreadsTest, TellTheSameAsOneWhereverTheyAreStopped) {
  std::mt19937 random(test_seed());
  for (int tree = 0; tree < 4; ++tree) {
    files.clear();
    plant_tree(random);
    search.user_types = {"*", "txt", "t?xt", "c", "t??", "", ""};
    search.type_checked = {tree % 2 == 0, true, false, true, true, false, false};
    search.date_search = tree % 3 == 0 ? specific_year : all_dates;
    search.s_year = 1602;
    search.leave_out = tree % 2 == 0 ? "" : "d1*; *7.txt";
    std::vector<std::string> list;
    for (const std::string& path : files.paths()) {
      if (random() % 9 != 0) list.push_back(path);
    }
    std::shuffle(list.begin(), list.end(), random);
    for (const auto* from : {static_cast<const std::vector<std::string>*>(nullptr),
                             static_cast<const std::vector<std::string>*>(&list)}) {
      for (int stop_after = 0; stop_after < 1000; stop_after += 1 + stop_after / 4) {
        const std::string alone = told(0, stop_after, from);
        for (const unsigned threads : {1u, 2u, 3u, 8u}) {
          ASSERT_EQ(told(threads, stop_after, from), alone) << tree << " " << stop_after;
          files.wait_for_threads(0);
        }
        if (!alone.ends_with("stopped")) break;
      }
    }
  }
}

TEST_F(SearchThreadsTest, AHangDoesNotHoldUpTheHost) {
  for (const char* name : {"/1", "/2", "/a/3", "/a/4", "/b/5"}) files.add(name, "cat");
  for (const Call call : {Call::list, Call::facts, Call::open, Call::read}) {
    search.date_search = call == Call::facts ? previous_days : all_dates;
    files.listing_knows_facts = call != Call::facts;
    for (const unsigned threads : {1u, 3u}) {
      LoggingHost host;
      host.stop = [&] { return files.hanging() > 0; };
      {
        FileSearch run = make(host, {threads, false});
        files.hang_next(call);
        if (call == Call::open) {
          EXPECT_FALSE(run.search_selected_file("/a/", "3"));
        } else {
          run.search_files();
        }
        EXPECT_TRUE(run.stopped());
        EXPECT_EQ(files.hanging(), 1);
        EXPECT_TRUE(call != Call::list || run.current_folder() == "/");
      }
      EXPECT_GT(files.cancelled(), 0);
      // The next one starts at once, one that tests a single file too.
      LoggingHost next;
      search.date_search = all_dates;
      EXPECT_TRUE(make(next, {threads, false}).search_selected_file("/a/", "3"));
      make(next, {threads, false}).search_files();
      EXPECT_EQ(next.matches, 5);
      EXPECT_EQ(files.hanging(), 1);
      files.release();
      files.wait_for_threads(0);
      EXPECT_EQ(files.opened, files.closed);
    }
  }
}

TEST_F(SearchThreadsTest, WhatAThreadThrowsReachesTheHostAndWhatWasFoundIsKept) {
  for (int i = 0; i < 500; ++i) files.add("/" + std::to_string(1000 + i), "cat");
  for (const unsigned threads : {0u, 1u, 4u}) {
    std::atomic<int> reads = 0;
    files.on_read = [&] {
      if (++reads == 300) throw std::bad_alloc();
    };
    LoggingHost host;
    EXPECT_THROW(make(host, {threads, false}).search_files(), std::bad_alloc);
    EXPECT_LT(host.matches, 500);
    std::string kept;
    for (int i = 0; i < host.matches; ++i) kept += "/" + std::to_string(1000 + i) + " 3\n";
    EXPECT_EQ(host.log, kept);
  }
}

TEST_F(SearchThreadsTest, AFolderThatComesBackIsSearched) {
  files.add("/sub/1", "cat");
  for (const unsigned threads : {0u, 1u, 4u}) {
    files.folder_errors["/"] = {21, "The device is not ready"};
    LoggingHost host;
    int tries = 0;
    host.retry = [&] {
      if (++tries == 20) files.folder_errors.clear();
      return true;
    };
    make(host, {threads, false}).search_files();
    EXPECT_EQ(tries, 20);
    EXPECT_EQ(host.matches, 1);
  }
}

/// Files of which one folder is listed only when nothing else goes on any more.
class BlockedFiles : public MemoryFiles {
 public:
  std::string blocked;
  std::atomic<bool> blocking = true;

  std::optional<SystemError> list_folder(const std::string& folder, FolderListing& listing,
                                         const std::function<bool()>& go_on) const override {
    if (folder == blocked) blocking.wait(true);
    return MemoryFiles::list_folder(folder, listing, go_on);
  }
};

TEST_F(SearchThreadsTest, WhatIsHeldHasABoundButForTheFolderThatTheHostWaitsFor) {
  BlockedFiles tree;
  tree.blocked = "/0/";
  tree.add("/0/0/deep", "cat");
  for (int i = 0; i < 20000; ++i) {
    tree.add("/" + std::to_string(1 + i / 250) + "/" + std::to_string(i), "cat");
  }
  LoggingHost host;
  int opened = 0;
  int quiet = 0;
  host.stop = [&] {
    quiet = tree.opened == opened ? quiet + 1 : 0;
    opened = tree.opened;
    if (quiet < 60 && opened < 20000) return false;
    if (tree.blocking.exchange(false)) {
      EXPECT_LT(opened, 7000);
      tree.blocking.notify_all();
    }
    return false;
  };
  FileSearch(search, page, tree, clock, host, {2, false}).search_files();
  EXPECT_EQ(host.matches, 20001);
  EXPECT_TRUE(host.log.starts_with("/0/0/deep"));
}

/// Lets nobody pass before so many threads have come, which never happens with fewer.
class Meeting {
 public:
  explicit Meeting(std::size_t wanted) : wanted_(wanted) {}

  void pass() {
    std::unique_lock lock(mutex_);
    came_.insert(std::this_thread::get_id());
    all_.notify_all();
    all_.wait(lock, [this] { return came_.size() >= wanted_; });
  }
  std::set<std::thread::id> came() const { return came_; }

 private:
  std::mutex mutex_;
  std::condition_variable all_;
  const std::size_t wanted_;
  std::set<std::thread::id> came_;
};

TEST_F(SearchThreadsTest, AllAreKeptBusyByOneFolderAndByMany) {
  for (const bool one_folder : {true, false}) {
    files.clear();
    for (int i = 0; i < 3000; ++i) {
      files.add((one_folder ? "/" : "/" + std::to_string(i) + "/") + std::to_string(i), "cat");
    }
    Meeting reading(4);
    Meeting listing(one_folder ? 1 : 4);
    std::atomic<int> folders = 0;
    files.on_read = [&] { reading.pass(); };
    files.on_list = [&] {
      if (++folders > 1) listing.pass();  // the first one is listed alone
    };
    LoggingHost host;
    make(host, {4, true}).search_files();
    EXPECT_EQ(host.matches, 3000);
    EXPECT_EQ(reading.came().count(std::this_thread::get_id()), 0u);
    // A disk that seeks has one of them.
    files.seeks = true;
    Meeting alone(1);
    files.on_read = files.on_list = [&] { alone.pass(); };
    make(host, {4, true}).search_files();
    EXPECT_EQ(alone.came().size(), 1u);
    files.seeks = false;
  }
}

}  // namespace
}  // namespace tallowmere
