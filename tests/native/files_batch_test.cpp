#include "files/file_batch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "engine/letter_case.h"

namespace tallowmere {
namespace {

const std::string sep(1, path_separator);

/// A disk in memory that takes names without regard to case, as Windows does.
class MemoryDisk : public FileOperations {
 public:
  using Result = std::optional<SystemError>;

  std::map<std::string, std::string> files;   ///< contents by key of the path
  std::map<std::string, std::string> errors;  ///< reason by key of the source
  std::vector<std::string> recycled;
  std::function<void()> before_writing;  ///< what happens once, when the target was looked at

  Result facts(const std::string& path, FileFacts& facts) override {
    const auto file = files.find(name_key(path));
    if (file == files.end()) return SystemError{2, "not found"};
    facts = {7 * ticks_per_second, std::ssize(file->second)};
    return std::nullopt;
  }
  Result copy(const std::string& source, const std::string& target, const Replace& replace,
              const Progress& progress) override {
    if (Result error = trouble(source)) return error;
    if (const auto happen = std::exchange(before_writing, nullptr)) happen();
    FileFacts there;
    if (!facts(target, there) && (!replace.allowed || (replace.seen && there != *replace.seen))) {
      return SystemError{in_the_way, "exists"};
    }
    if (!progress(1, 2)) return SystemError{1235, "given up"};
    files[name_key(target)] = files[name_key(source)];
    return std::nullopt;
  }
  Result move(const std::string& source, const std::string& target, const Replace& replace,
              const Progress& progress) override {
    if (Result error = copy(source, target, replace, progress)) return error;
    files.erase(name_key(source));
    return std::nullopt;
  }
  Result rename(const std::string& source, const std::string& target) override {
    return move(source, target, {name_key(source) == name_key(target)},
                [](std::int64_t, std::int64_t) { return true; });
  }
  bool can_recycle(const std::string&) override { return true; }
  Result remove(const std::string& path, bool recycle) override {
    if (Result error = trouble(path)) return error;
    files.erase(name_key(path));
    if (recycle) recycled.push_back(path);
    return std::nullopt;
  }
  Result create_folder(const std::string&) override { return std::nullopt; }

 private:
  Result trouble(const std::string& path) {
    if (const auto error = errors.find(name_key(path)); error != errors.end()) {
      return SystemError{in_the_way, error->second};  // the code alone means nothing
    }
    if (!files.contains(name_key(path))) return SystemError{2, "not found"};
    return std::nullopt;
  }
};

class ScriptedUser : public BatchUser {
 public:
  std::deque<ReplaceAnswer> answers;
  std::vector<ReplaceQuestion> asked;
  std::function<void()> on_question;   ///< what happens once, while the user thinks
  std::size_t stop_before = SIZE_MAX;  ///< the file at which the user has had enough
  bool give_up_inside = false;         ///< or amid the first one

  bool at_file(std::size_t index, std::size_t, const std::string&) override {
    return index < stop_before;
  }
  bool at_bytes(std::int64_t, std::int64_t) override { return !give_up_inside; }
  ReplaceAnswer ask_replace(const ReplaceQuestion& question) override {
    asked.push_back(question);
    if (const auto happen = std::exchange(on_question, nullptr)) happen();
    if (answers.empty()) return ReplaceAnswer::cancel;
    const ReplaceAnswer answer = answers.front();
    answers.pop_front();
    return answer;
  }
};

class FileBatchTest : public testing::Test {
 protected:
  std::string path(const std::string& folder, const std::string& name) {
    return sep + folder + sep + name;
  }
  void list_file(const std::string& folder, const std::string& name, std::int64_t size) {
    list.add_file_row(FileRecord{name, ticks_per_second, sep + folder + sep, size});
    list.matched_count = static_cast<std::int64_t>(list.file_count());
  }
  void add(const std::string& folder, const std::string& name, const std::string& text) {
    disk.files[name_key(path(folder, name))] = text;
    list_file(folder, name, std::ssize(text));
  }
  std::string on_disk(const std::string& folder, const std::string& name) {
    const auto file = disk.files.find(name_key(path(folder, name)));
    return file == disk.files.end() ? "-" : file->second;
  }
  std::string listed() {
    std::string text;
    for (std::size_t i = 0; i < list.file_count(); ++i) text += list.indexed_filename(i) + " ";
    return text;
  }
  std::string faults() {
    std::string text;
    for (const FileFault& fault : outcome.faults) text += fault.path + ": " + fault.reason + "\n";
    return text;
  }
  std::vector<std::string> paths(const std::vector<std::size_t>& rows) {
    return paths_of(list, rows);
  }
  TransferRequest request(FileCommand command, const std::string& name = {}) {
    return {command, sep + "to" + sep, name, confirm};
  }
  ListChange transfer(FileCommand command, const std::vector<std::size_t>& rows,
                      const std::string& name = {}) {
    outcome = transfer_files(paths(rows), request(command, name), disk, user);
    return update_list(list, outcome);
  }

  ResultList list;
  MemoryDisk disk;
  ScriptedUser user;
  BatchOutcome outcome;
  bool confirm = true;
};

TEST_F(FileBatchTest, AMoveTakesItsRowAlongAndACopyLeavesIt) {
  add("a", "One.txt", "1");
  add("b", "Two.txt", "2");
  list.viewed_index = 0;
  ListChange change = transfer(FileCommand::copy, {0, 1});
  EXPECT_EQ(outcome.done, 2u);
  EXPECT_FALSE(change.records_changed || change.rows_refreshed || change.rows_removed);
  EXPECT_EQ(change.viewed, ViewedFile::untouched);
  EXPECT_EQ(on_disk("to", "one.txt") + on_disk("a", "One.txt"), "11");

  change = transfer(FileCommand::move, {0}, "New.txt");
  EXPECT_TRUE(change.records_changed);
  EXPECT_EQ(change.viewed, ViewedFile::moved);
  EXPECT_EQ(list.record(0).filename, "New.txt");
  EXPECT_EQ(list.record(0).filepath, sep + "to" + sep);
  EXPECT_EQ(on_disk("to", "new.txt") + on_disk("a", "One.txt"), "1-");
}

// The rows are those of the files when the work is over, wherever they have gone meanwhile.
TEST_F(FileBatchTest, RowsThatMoveDuringTheWork) {
  for (const char* name : {"1", "2", "3"}) add("a", name, name);
  list_file("a", "2", 1);  // found by two types
  list.viewed_index = 1;
  const std::vector<std::string> chosen = paths({0, 1, 3});
  EXPECT_EQ(chosen.size(), 2u) << "one file is one file, listed twice or not";
  outcome = transfer_files(chosen, request(FileCommand::move), disk, user);
  std::ranges::reverse(list.records());
  list.viewed_index = 2;
  EXPECT_EQ(update_list(list, outcome).viewed, ViewedFile::moved);
  EXPECT_EQ(listed(), path("to", "2") + " " + path("a", "3") + " " + path("to", "2") + " " +
                          path("to", "1") + " ");

  outcome = delete_files(paths({0, 3}), {true, false}, disk, user);
  std::ranges::rotate(list.records(), list.records().begin() + 1);
  const ListChange change = update_list(list, outcome);
  EXPECT_EQ(listed(), path("a", "3") + " ");
  EXPECT_EQ(change.row_to_select, 0);
  EXPECT_EQ(on_disk("a", "3") + on_disk("to", "1"), "3-");
  EXPECT_EQ(disk.recycled, std::vector<std::string>{path("to", "2")});

  outcome = rename_file(path("a", "3"), "4", disk);
  list.setup_new_list();
  EXPECT_FALSE(update_list(list, outcome).records_changed);
}

TEST_F(FileBatchTest, OneFailureKeepsNoOtherBack) {
  add("a", "locked.txt", "1");
  add("a", "gone.txt", "2");
  add("to", "THERE.txt", "3");
  add("a", "same.txt", "4");
  add("b", "Same.txt", "5");
  add("a", "\u03c2", "6");  // two names to the system, which looks at the capitals
  add("b", "\u03c3", "7");
  disk.errors[name_key(path("a", "locked.txt"))] = "in use";
  disk.files.erase(name_key(path("a", "gone.txt")));
  confirm = false;
  transfer(FileCommand::move, {0, 1, 2, 3, 4, 5, 6});
  EXPECT_EQ(outcome.done, 3u);
  EXPECT_EQ(faults(), path("a", "locked.txt") + ": in use\n" + path("a", "gone.txt") +
                          ": not found\n" + path("to", "THERE.txt") +
                          ": The file is already there\n" + path("b", "Same.txt") +
                          ": Another of the selected files has taken its name there\n");
  EXPECT_EQ(listed(), path("a", "locked.txt") + " " + path("a", "gone.txt") + " " +
                          path("to", "THERE.txt") + " " + path("to", "same.txt") + " " +
                          path("b", "Same.txt") + " " + path("to", "\u03c2") + " " +
                          path("to", "\u03c3") + " ");
  EXPECT_EQ(on_disk("to", "same.txt") + on_disk("b", "same.txt"), "45");
  EXPECT_TRUE(user.asked.empty());
}

TEST_F(FileBatchTest, QuestionsAndAnswers) {
  for (const char* name : {"1", "2", "3", "4", "5"}) {
    add("a", name, "new" + std::string(name));
    disk.files[name_key(path("to", name))] = "old";
  }
  using enum ReplaceAnswer;
  user.answers = {no, yes, cancel};
  transfer(FileCommand::copy, {0, 1, 2, 3});
  EXPECT_TRUE(outcome.stopped);
  EXPECT_EQ(outcome.done, 1u);
  EXPECT_EQ(user.asked.size(), 3u);
  EXPECT_EQ(user.asked[1].target, path("to", "2"));
  EXPECT_EQ(user.asked[1].target_facts.size, 3);
  EXPECT_EQ(user.asked[1].source_facts.size, 4);
  EXPECT_EQ(on_disk("to", "1") + on_disk("to", "2") + on_disk("to", "3"), "oldnew2old");

  user.answers = {yes_to_all};
  transfer(FileCommand::copy, {2, 3, 4});
  EXPECT_EQ(outcome.done, 3u);
  EXPECT_EQ(user.asked.size(), 4u);
}

TEST_F(FileBatchTest, AnotherTargetIsAskedAboutAgain) {
  add("a", "x", "new");
  std::string& target = disk.files[name_key(path("to", "x"))];
  using enum ReplaceAnswer;
  // It changes while the user thinks, and again when the copy is ready.
  target = "old";
  user.on_question = [&] { target = "other"; };
  disk.before_writing = [&] { target = "another"; };
  user.answers = {yes, yes, no};
  transfer(FileCommand::copy, {0});
  ASSERT_EQ(user.asked.size(), 3u);
  EXPECT_EQ(user.asked[2].target_facts.size, 7);
  EXPECT_EQ(target, "another");

  // It is there only now.
  disk.files.erase(name_key(path("to", "x")));
  disk.before_writing = [&] { disk.files[name_key(path("to", "x"))] = "late"; };
  user.answers = {no};
  transfer(FileCommand::copy, {0});
  EXPECT_EQ(user.asked.size(), 4u);
  EXPECT_EQ(on_disk("to", "x"), "late");

  // To replace all is to replace this one, too.
  disk.before_writing = [&] { disk.files[name_key(path("to", "x"))] = "later"; };
  user.answers = {yes_to_all};
  transfer(FileCommand::copy, {0});
  EXPECT_EQ(on_disk("to", "x"), "new");
}

TEST_F(FileBatchTest, AReplacedFileThatIsListed) {
  add("a", "x", "long new text");
  add("to", "X", "old");
  list.viewed_index = 1;
  confirm = false;
  ListChange change = transfer(FileCommand::copy, {0});
  EXPECT_EQ(change.viewed, ViewedFile::rewritten);
  EXPECT_TRUE(change.rows_refreshed);
  EXPECT_EQ(list.record(1).filesize, 13);
  EXPECT_EQ(list.record(1).filedate, 7 * ticks_per_second);

  // The replaced row is selected, too: it is gone before its turn comes.
  change = transfer(FileCommand::move, {0, 1});
  EXPECT_EQ(faults(), "");
  EXPECT_EQ(change.viewed, ViewedFile::rewritten);
  EXPECT_EQ(listed(), path("to", "x") + " ");
  EXPECT_EQ(list.viewed_index, 0);
  EXPECT_EQ(change.row_to_select, 0);
  EXPECT_EQ(list.matched_count, 1);
}

TEST_F(FileBatchTest, WhatTheUserGivesUpIsNoFailure) {
  for (const char* name : {"1", "2", "3"}) add("a", name, name);
  user.stop_before = 1;
  transfer(FileCommand::move, {0, 1, 2});
  EXPECT_EQ(outcome.done, 1u);
  EXPECT_EQ(listed(), path("to", "1") + " " + path("a", "2") + " " + path("a", "3") + " ");
  user.stop_before = SIZE_MAX;
  user.give_up_inside = true;
  transfer(FileCommand::move, {1, 2});
  EXPECT_TRUE(outcome.stopped && outcome.faults.empty());
  EXPECT_EQ(outcome.done, 0u);
  EXPECT_EQ(on_disk("a", "2"), "2");

  user.stop_before = 1;
  outcome = delete_files(paths({0, 2}), {true, true}, disk, user);
  EXPECT_TRUE(outcome.stopped);
  update_list(list, outcome);
  EXPECT_EQ(listed(), path("a", "2") + " " + path("a", "3") + " ");
}

TEST_F(FileBatchTest, OnlyWhatIsDeletedLeavesTheList) {
  for (const char* name : {"0", "1", "2", "3", "4"}) add("a", name, name);
  disk.errors[name_key(path("a", "1"))] = "in use";
  list.viewed_index = 3;
  outcome = delete_files(paths({0, 1, 4}), {true, true, false}, disk, user);
  EXPECT_EQ(update_list(list, outcome).viewed, ViewedFile::untouched);
  EXPECT_EQ(outcome.done, 2u);
  EXPECT_EQ(faults(), path("a", "1") + ": in use\n");
  EXPECT_EQ(listed(), path("a", "1") + " " + path("a", "2") + " " + path("a", "3") + " ");
  EXPECT_EQ(list.viewed_index, 2);
  EXPECT_EQ(list.matched_count, 3);

  outcome.gone = paths({2});
  ListChange change = update_list(list, outcome);
  EXPECT_EQ(change.viewed, ViewedFile::gone);
  EXPECT_EQ(change.row_to_select, 1) << "the last one";
  EXPECT_EQ(list.viewed_index, -1);
  outcome.gone = paths({0, 1});
  EXPECT_EQ(update_list(list, outcome).row_to_select, -1);
}

TEST_F(FileBatchTest, ARenameChangesItsRecordOnlyWhenItCameAbout) {
  add("a", "old.txt", "1");
  add("a", "other.txt", "2");
  list.viewed_index = 0;
  for (const char* name : {"OTHER.txt", "OLD.txt"}) {
    outcome = rename_file(path("a", "old.txt"), name, disk);
    const ListChange change = update_list(list, outcome);
    EXPECT_EQ(change.viewed, outcome.done == 1 ? ViewedFile::moved : ViewedFile::untouched);
  }
  EXPECT_EQ(listed(), path("a", "OLD.txt") + " " + path("a", "other.txt") + " ");
}

}  // namespace
}  // namespace tallowmere
