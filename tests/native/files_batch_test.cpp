#include "files/file_batch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "engine/letter_case.h"

namespace tallowmere {
namespace {

/// A disk in memory that takes names without regard to case, as Windows does.
class MemoryDisk : public FileOperations {
 public:
  using Result = std::optional<SystemError>;

  std::map<std::string, std::string> files;  ///< contents by key of the path
  std::string locked;                        ///< the key of a file in use
  std::string recycled;                      ///< paths, each after a space
  std::function<void()> before_writing;      ///< what happens once, when the target was looked at

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
    Result error = copy(source, target, replace, progress);
    if (!error) files.erase(name_key(source));
    return error;
  }
  Result rename(const std::string& source, const std::string& target) override {
    return move(source, target, {name_key(source) == name_key(target)},
                [](std::int64_t, std::int64_t) { return true; });
  }
  bool can_recycle(const std::string&) override { return true; }
  Result remove(const std::string& path, bool recycle) override {
    if (Result error = trouble(path)) return error;
    files.erase(name_key(path));
    if (recycle) recycled += " " + path;
    return std::nullopt;
  }
  Result create_folder(const std::string&) override { return std::nullopt; }

 private:
  Result trouble(const std::string& path) {
    // The code alone means nothing.
    if (name_key(path) == locked) return SystemError{in_the_way, "in use"};
    FileFacts none;
    return facts(path, none);
  }
};

class ScriptedUser : public BatchUser {
 public:
  std::vector<ReplaceAnswer> answers;
  std::string asked;  ///< per question the target, the sizes of the source and of the target
  std::function<void()> on_question;   ///< what happens once, while the user thinks
  std::size_t stop_before = SIZE_MAX;  ///< the file at which the user has had enough
  bool give_up_inside = false;         ///< or amid the first one

  bool at_file(std::size_t index, std::size_t, const std::string&) override {
    return index < stop_before;
  }
  bool at_bytes(std::int64_t, std::int64_t) override { return !give_up_inside; }
  ReplaceAnswer ask_replace(const ReplaceQuestion& question) override {
    asked += question.target + " " + std::to_string(question.source_facts.size) + ">" +
             std::to_string(question.target_facts.size) + " ";
    if (const auto happen = std::exchange(on_question, nullptr)) happen();
    if (answers.empty()) return ReplaceAnswer::cancel;
    return std::exchange(answers, {answers.begin() + 1, answers.end()}).front();
  }
};

class FileBatchTest : public testing::Test {
 protected:
  using enum FileCommand;

  std::string& file(const std::string& name) { return disk.files[name_key(name)]; }
  void add(const std::string& name, const std::string& text) {
    file(name) = text;
    const std::size_t start = name.rfind('/') + 1;
    list.add_file_row(
        {name.substr(start), ticks_per_second, name.substr(0, start), std::ssize(text)});
    list.matched_count = static_cast<std::int64_t>(list.file_count());
  }
  /// Adds the files 0, 1, ... of the folder a; each holds its name.
  void add_numbered(int count) {
    for (int i = 0; i < count; ++i) add("/a/" + std::to_string(i), std::to_string(i));
  }
  /// The contents of files, one after the other.
  std::string on_disk(std::initializer_list<const char*> names) {
    std::string text;
    for (const char* name : names) text += file(name);
    return text;
  }
  /// How many files are done, what became of the viewed one, and what the list holds then.
  std::string update() {
    constexpr const char* viewed[] = {" done, ", " done, view moved, ", " done, view rewritten, ",
                                      " done, view gone, "};
    change = update_list(list, outcome);
    std::string text = std::to_string(outcome.done) + viewed[static_cast<int>(change.viewed)];
    for (std::size_t i = 0; i < list.file_count(); ++i) {
      text += list.indexed_filename(i) + " ";
    }
    return text;
  }
  std::string transfer(FileCommand command, const std::vector<std::size_t>& rows,
                       const std::string& name = {}) {
    outcome = transfer_files(paths_of(list, rows), {command, "/to/", name, confirm}, disk, user);
    return update();
  }
  void remove(const std::vector<std::size_t>& rows, const std::vector<bool>& recycle) {
    outcome = delete_files(paths_of(list, rows), recycle, disk, user);
  }
  std::string give_name(const std::string& path, const std::string& name) {
    outcome = rename_file(path, name, disk);
    return update();
  }

  ResultList list;
  MemoryDisk disk;
  ScriptedUser user;
  BatchOutcome outcome;
  ListChange change;
  bool confirm = true;
};

TEST_F(FileBatchTest, ACopyLeavesItsRowAMoveAndARenameTakeItAlong) {
  add("/a/One.txt", "1");
  add("/b/Two.txt", "2");
  list.viewed_index = 0;
  EXPECT_EQ(transfer(copy, {0, 1}), "2 done, /a/One.txt /b/Two.txt ");
  EXPECT_FALSE(change.records_changed || change.rows_refreshed || change.rows_removed);
  EXPECT_EQ(transfer(move, {0}, "New.txt"), "1 done, view moved, /to/New.txt /b/Two.txt ");
  EXPECT_TRUE(change.records_changed);
  EXPECT_EQ(on_disk({"/to/one.txt", "/to/new.txt", "/a/One.txt"}), "11");

  EXPECT_EQ(give_name("/to/New.txt", "ONE.txt"), "0 done, /to/New.txt /b/Two.txt ");
  EXPECT_EQ(give_name("/to/New.txt", "NEW.txt"), "1 done, view moved, /to/NEW.txt /b/Two.txt ");
}

// The rows are those of the files when the work is over, wherever they have gone meanwhile.
TEST_F(FileBatchTest, RowsThatMoveDuringTheWork) {
  add_numbered(3);
  add("/a/1", "1");  // found by two types
  list.viewed_index = 1;
  const std::vector<std::string> chosen = paths_of(list, std::vector<std::size_t>{0, 1, 3});
  EXPECT_EQ(chosen.size(), 2u) << "one file is one file, listed twice or not";
  outcome = transfer_files(chosen, {move, "/to/", {}}, disk, user);
  std::ranges::reverse(list.records());
  list.viewed_index = 2;
  EXPECT_EQ(update(), "2 done, view moved, /to/1 /a/2 /to/1 /to/0 ");

  remove({0, 3}, {true, false});
  std::ranges::rotate(list.records(), list.records().begin() + 1);
  list.viewed_index = -1;
  EXPECT_EQ(update(), "2 done, /a/2 ");
  EXPECT_TRUE(change.rows_removed && change.row_to_select == 0);
  EXPECT_EQ(on_disk({"/a/2", "/to/0"}), "2");
  EXPECT_EQ(disk.recycled, " /to/1");

  outcome = rename_file("/a/2", "4", disk);
  list.setup_new_list();
  update();
  EXPECT_FALSE(change.records_changed);
}

TEST_F(FileBatchTest, OneFailureKeepsNoOtherBack) {
  // The two small sigmas are two names to the system, which looks at the capitals.
  for (const char* name :
       {"/a/locked", "/a/gone", "/to/THERE", "/a/x", "/b/X", "/a/\u03c2", "/b/\u03c3"}) {
    add(name, name);
  }
  disk.locked = name_key("/a/locked");
  disk.files.erase(name_key("/a/gone"));
  confirm = false;
  EXPECT_EQ(transfer(move, {0, 1, 2, 3, 4, 5, 6}),
            "3 done, /a/locked /a/gone /to/THERE /to/x /b/X /to/\u03c2 /to/\u03c3 ");
  std::string faults;
  for (const auto& [path, reason] : outcome.faults) faults += path + ": " + reason + "\n";
  EXPECT_EQ(faults,
            "/a/locked: in use\n/a/gone: not found\n/to/THERE: The file is already in that folder\n"
            "/b/X: Another selected file with the same name was placed there first\n");
  EXPECT_EQ(on_disk({"/to/x", "/b/x"}), "/a/x/b/X");
  EXPECT_EQ(user.asked, "");
}

TEST_F(FileBatchTest, QuestionsAndAnswers) {
  using enum ReplaceAnswer;
  add_numbered(5);
  for (const char* name : {"/to/0", "/to/1", "/to/2", "/to/3", "/to/4"}) file(name) = "old";
  user.answers = {no, yes, cancel};
  transfer(copy, {0, 1, 2, 3});
  EXPECT_TRUE(outcome.stopped);
  EXPECT_EQ(user.asked, "/to/0 1>3 /to/1 1>3 /to/2 1>3 ");
  user.answers = {yes_to_all};
  transfer(copy, {2, 3, 4});
  EXPECT_EQ(on_disk({"/to/0", "/to/1", "/to/2", "/to/3", "/to/4"}), "old1234");

  // It changes while the user thinks, and again when the copy is ready.
  user.asked.clear();
  user.on_question = [&] { file("/to/0") = "other"; };
  disk.before_writing = [&] { file("/to/0") = "another"; };
  user.answers = {yes, yes, no};
  transfer(copy, {0});
  EXPECT_EQ(user.asked + file("/to/0"), "/to/0 1>3 /to/0 1>5 /to/0 1>7 another");

  // It is there only now. To replace all is to replace this one, too.
  for (const auto& [answer, left] : {std::pair{no, "late"}, {yes_to_all, "0"}}) {
    disk.files.erase("/TO/0");
    disk.before_writing = [&] { file("/to/0") = "late"; };
    user.answers = {answer};
    transfer(copy, {0});
    EXPECT_EQ(file("/to/0"), left);
  }
}

TEST_F(FileBatchTest, AReplacedFileThatIsListed) {
  add("/a/x", "long new text");
  add("/to/X", "old");
  list.viewed_index = 1;
  confirm = false;
  EXPECT_EQ(transfer(copy, {0}), "1 done, view rewritten, /a/x /to/X ");
  EXPECT_TRUE(change.rows_refreshed);
  EXPECT_EQ(list.record(1), (FileRecord{"X", 7 * ticks_per_second, "/to/", 13}));

  // The replaced row is selected, too: it is gone before its turn comes.
  EXPECT_EQ(transfer(move, {0, 1}), "1 done, view rewritten, /to/x ");
  EXPECT_TRUE(outcome.faults.empty() && list.matched_count == 1);
  EXPECT_TRUE(list.viewed_index == 0 && change.row_to_select == 0);
}

TEST_F(FileBatchTest, WhatTheUserGivesUpIsNoFailure) {
  add_numbered(3);
  user.stop_before = 1;
  EXPECT_EQ(transfer(move, {0, 1, 2}), "1 done, /to/0 /a/1 /a/2 ");
  user.stop_before = SIZE_MAX;
  user.give_up_inside = true;
  EXPECT_EQ(transfer(move, {1, 2}), "0 done, /to/0 /a/1 /a/2 ");
  EXPECT_TRUE(outcome.stopped && outcome.faults.empty());

  user.stop_before = 1;
  remove({0, 2}, {true, true});
  EXPECT_EQ(update(), "1 done, /a/1 /a/2 ");
}

TEST_F(FileBatchTest, OnlyWhatIsDeletedLeavesTheList) {
  add_numbered(5);
  disk.locked = name_key("/a/1");
  list.viewed_index = 3;
  remove({0, 1, 4}, {true, true, false});
  EXPECT_EQ(update(), "2 done, /a/1 /a/2 /a/3 ");
  EXPECT_EQ(outcome.faults.at(0).reason, "in use");
  EXPECT_TRUE(list.viewed_index == 2 && list.matched_count == 3);

  outcome.gone = {"/a/3"};
  EXPECT_EQ(update(), "2 done, view gone, /a/1 /a/2 ");
  EXPECT_TRUE(change.row_to_select == 1 && list.viewed_index == -1);
  outcome.gone = {"/a/1", "/a/2"};
  EXPECT_EQ(update(), "2 done, ");
  EXPECT_EQ(change.row_to_select, -1);
}

}  // namespace
}  // namespace tallowmere
