#include "shell/file_batch.h"

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "shell/file_command_texts.h"
#include "shell/file_names.h"

namespace tallowmere {
namespace {

const std::string sep(1, path_separator);

/// A disk in memory that takes names without regard to case, as Windows does.
class MemoryDisk : public FileOperations {
 public:
  using Result = std::optional<SystemError>;

  std::map<std::string, std::string> files;   ///< contents by folded path
  std::map<std::string, std::string> errors;  ///< reason by folded path of the source
  std::vector<std::string> recycled;

  Result facts(const std::string& path, FileFacts& facts) override {
    const auto file = files.find(folded(path));
    if (file == files.end()) return SystemError{2, "not found"};
    facts = {7 * ticks_per_second, std::ssize(file->second)};
    return std::nullopt;
  }
  Result copy(const std::string& source, const std::string& target, bool replace,
              const Progress& progress) override {
    if (Result error = trouble(source)) return error;
    if (!replace && files.contains(folded(target))) return SystemError{80, "exists"};
    if (!progress(1, 2)) return SystemError{1235, "given up"};
    files[folded(target)] = files[folded(source)];
    return std::nullopt;
  }
  Result move(const std::string& source, const std::string& target, bool replace,
              const Progress& progress) override {
    if (Result error = copy(source, target, replace, progress)) return error;
    files.erase(folded(source));
    return std::nullopt;
  }
  Result rename(const std::string& source, const std::string& target) override {
    return move(source, target, folded(source) == folded(target),
                [](std::int64_t, std::int64_t) { return true; });
  }
  bool can_recycle(const std::string&) override { return true; }
  Result remove(const std::string& path, bool recycle) override {
    if (Result error = trouble(path)) return error;
    files.erase(folded(path));
    if (recycle) recycled.push_back(path);
    return std::nullopt;
  }
  Result create_folder(const std::string&) override { return std::nullopt; }

 private:
  Result trouble(const std::string& path) {
    if (const auto error = errors.find(folded(path)); error != errors.end()) {
      return SystemError{5, error->second};
    }
    if (!files.contains(folded(path))) return SystemError{2, "not found"};
    return std::nullopt;
  }
};

class ScriptedUser : public BatchUser {
 public:
  std::deque<ReplaceAnswer> answers;
  std::vector<ReplaceQuestion> asked;
  std::size_t stop_before = SIZE_MAX;  ///< the file at which the user has had enough
  bool give_up_inside = false;         ///< or amid the first one

  bool at_file(std::size_t index, std::size_t, const std::string&) override {
    return index < stop_before;
  }
  bool at_bytes(std::int64_t, std::int64_t) override { return !give_up_inside; }
  ReplaceAnswer ask_replace(const ReplaceQuestion& question) override {
    asked.push_back(question);
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
  void add(const std::string& folder, const std::string& name, const std::string& text) {
    disk.files[folded(path(folder, name))] = text;
    list.add_file_row(FileRecord{name, ticks_per_second, sep + folder + sep, std::ssize(text)});
    list.matched_count = static_cast<std::int64_t>(list.file_count());
  }
  std::string on_disk(const std::string& folder, const std::string& name) {
    const auto file = disk.files.find(folded(path(folder, name)));
    return file == disk.files.end() ? "-" : file->second;
  }
  std::string listed() {
    std::string text;
    for (std::size_t i = 0; i < list.file_count(); ++i) text += list.indexed_filename(i) + " ";
    return text;
  }
  std::string faults(const BatchOutcome& outcome) {
    std::string text;
    for (const FileFault& fault : outcome.faults) text += fault.path + ": " + fault.reason + "\n";
    return text;
  }
  BatchOutcome transfer(FileCommand command, std::vector<std::size_t> rows,
                        const std::string& name = {}) {
    return transfer_files(list, rows, {command, sep + "to" + sep, name, confirm}, disk, user);
  }

  ResultList list;
  MemoryDisk disk;
  ScriptedUser user;
  bool confirm = true;
};

TEST_F(FileBatchTest, AMoveTakesItsRowAlongAndACopyLeavesIt) {
  add("a", "One.txt", "1");
  add("b", "Two.txt", "2");
  list.viewed_index = 0;
  const BatchOutcome copied = transfer(FileCommand::copy, {0, 1});
  EXPECT_EQ(copied.done, 2u);
  EXPECT_FALSE(copied.records_changed || copied.rows_refreshed || copied.rows_removed);
  EXPECT_EQ(copied.viewed, ViewedFile::untouched);
  EXPECT_EQ(on_disk("to", "one.txt") + on_disk("a", "One.txt"), "11");

  const BatchOutcome moved = transfer(FileCommand::move, {0}, "New.txt");
  EXPECT_TRUE(moved.records_changed);
  EXPECT_EQ(moved.viewed, ViewedFile::moved);
  EXPECT_EQ(list.record(0).filename, "New.txt");
  EXPECT_EQ(list.record(0).filepath, sep + "to" + sep);
  EXPECT_EQ(on_disk("to", "new.txt") + on_disk("a", "One.txt"), "1-");
}

TEST_F(FileBatchTest, OneFailureKeepsNoOtherBack) {
  add("a", "locked.txt", "1");
  add("a", "gone.txt", "2");
  add("to", "THERE.txt", "3");
  add("a", "same.txt", "4");
  add("b", "Same.txt", "5");
  disk.errors[folded(path("a", "locked.txt"))] = "in use";
  disk.files.erase(folded(path("a", "gone.txt")));
  confirm = false;
  const BatchOutcome outcome = transfer(FileCommand::move, {0, 1, 2, 3, 4});
  EXPECT_EQ(outcome.done, 1u);
  EXPECT_EQ(faults(outcome), path("a", "locked.txt") + ": in use\n" + path("a", "gone.txt") +
                                 ": not found\n" + path("to", "THERE.txt") +
                                 ": The file is already there\n" + path("b", "Same.txt") +
                                 ": Another of the selected files has taken its name there\n");
  EXPECT_EQ(listed(), path("a", "locked.txt") + " " + path("a", "gone.txt") + " " +
                          path("to", "THERE.txt") + " " + path("to", "same.txt") + " " +
                          path("b", "Same.txt") + " ");
  EXPECT_EQ(on_disk("to", "same.txt") + on_disk("b", "same.txt"), "45");
  EXPECT_TRUE(user.asked.empty());
}

TEST_F(FileBatchTest, QuestionsAndAnswers) {
  for (const char* name : {"1", "2", "3", "4", "5"}) {
    add("a", name, "new" + std::string(name));
    disk.files[path("to", name)] = "old";
  }
  using enum ReplaceAnswer;
  user.answers = {no, yes, cancel};
  BatchOutcome outcome = transfer(FileCommand::copy, {0, 1, 2, 3});
  EXPECT_TRUE(outcome.stopped);
  EXPECT_EQ(outcome.done, 1u);
  EXPECT_EQ(user.asked.size(), 3u);
  EXPECT_EQ(user.asked[1].target, path("to", "2"));
  EXPECT_EQ(user.asked[1].target_facts.size, 3);
  EXPECT_EQ(user.asked[1].source_facts.size, 4);
  EXPECT_EQ(on_disk("to", "1") + on_disk("to", "2") + on_disk("to", "3"), "oldnew2old");

  user.answers = {yes_to_all};
  outcome = transfer(FileCommand::copy, {2, 3, 4});
  EXPECT_EQ(outcome.done, 3u);
  EXPECT_EQ(user.asked.size(), 4u);
}

TEST_F(FileBatchTest, AReplacedFileThatIsListed) {
  add("a", "x", "long new text");
  add("to", "X", "old");
  list.viewed_index = 1;
  confirm = false;
  BatchOutcome outcome = transfer(FileCommand::copy, {0});
  EXPECT_EQ(outcome.viewed, ViewedFile::rewritten);
  EXPECT_TRUE(outcome.rows_refreshed);
  EXPECT_EQ(list.record(1).filesize, 13);
  EXPECT_EQ(list.record(1).filedate, 7 * ticks_per_second);

  // The replaced row is selected, too: it is gone before its turn comes.
  outcome = transfer(FileCommand::move, {0, 1});
  EXPECT_TRUE(outcome.faults.empty()) << faults(outcome);
  EXPECT_EQ(outcome.viewed, ViewedFile::rewritten);
  EXPECT_EQ(listed(), path("to", "x") + " ");
  EXPECT_EQ(list.viewed_index, 0);
  EXPECT_EQ(outcome.row_to_select, 0);
  EXPECT_EQ(list.matched_count, 1);
}

TEST_F(FileBatchTest, WhatTheUserGivesUpIsNoFailure) {
  for (const char* name : {"1", "2", "3"}) add("a", name, name);
  user.stop_before = 1;
  EXPECT_EQ(transfer(FileCommand::move, {0, 1, 2}).done, 1u);
  EXPECT_EQ(listed(), path("to", "1") + " " + path("a", "2") + " " + path("a", "3") + " ");
  user.stop_before = SIZE_MAX;
  user.give_up_inside = true;
  const BatchOutcome outcome = transfer(FileCommand::move, {1, 2});
  EXPECT_TRUE(outcome.stopped && outcome.faults.empty());
  EXPECT_EQ(outcome.done, 0u);
  EXPECT_EQ(on_disk("a", "2"), "2");

  user.stop_before = 1;
  const BatchOutcome deleted =
      delete_files(list, std::vector<std::size_t>{0, 2}, {true, true}, disk, user);
  EXPECT_TRUE(deleted.stopped);
  EXPECT_EQ(listed(), path("a", "2") + " " + path("a", "3") + " ");
}

TEST_F(FileBatchTest, OnlyWhatIsDeletedLeavesTheList) {
  for (const char* name : {"0", "1", "2", "3", "4"}) add("a", name, name);
  disk.errors[path("a", "1")] = "in use";
  list.viewed_index = 3;
  BatchOutcome outcome =
      delete_files(list, std::vector<std::size_t>{0, 1, 4}, {true, true, false}, disk, user);
  EXPECT_EQ(outcome.done, 2u);
  EXPECT_EQ(faults(outcome), path("a", "1") + ": in use\n");
  EXPECT_EQ(listed(), path("a", "1") + " " + path("a", "2") + " " + path("a", "3") + " ");
  EXPECT_EQ(list.viewed_index, 2);
  EXPECT_EQ(outcome.viewed, ViewedFile::untouched);
  EXPECT_EQ(list.matched_count, 3);
  EXPECT_EQ(disk.recycled, std::vector<std::string>{path("a", "0")});

  outcome = remove_rows(list, std::vector<std::size_t>{2});
  EXPECT_EQ(outcome.viewed, ViewedFile::gone);
  EXPECT_EQ(list.viewed_index, -1);
  EXPECT_EQ(on_disk("a", "3"), "3");
}

TEST_F(FileBatchTest, ARenameChangesItsRecordOnlyWhenItCameAbout) {
  add("a", "old.txt", "1");
  add("a", "other.txt", "2");
  list.viewed_index = 0;
  EXPECT_EQ(faults(rename_file(list, 0, "OTHER.txt", disk)), path("a", "old.txt") + ": exists\n");
  EXPECT_EQ(list.record(0).filename, "old.txt");
  const BatchOutcome outcome = rename_file(list, 0, "OLD.txt", disk);
  EXPECT_EQ(list.record(0).filename, "OLD.txt");
  EXPECT_TRUE(outcome.records_changed);
  EXPECT_EQ(outcome.viewed, ViewedFile::moved);
}

TEST(RowAfterRemoval, StaysOrTakesThePlace) {
  const auto row_after = [](std::size_t row, std::vector<std::size_t> removed, std::size_t count) {
    return row_after_removal(row, removed, count);
  };
  EXPECT_EQ(row_after(1, {1, 3}, 5), 1);
  EXPECT_EQ(row_after(4, {0, 3}, 5), 2);
  EXPECT_EQ(row_after(3, {3, 4}, 5), 2);
  EXPECT_EQ(row_after(0, {0, 1}, 2), -1);
}

TEST(FileNames, WhatCannotBeAName) {
  const std::string emoji = "\xF0\x9F\x98\x80";  // two units each
  std::string longest;
  for (int i = 0; i < 127; ++i) longest += emoji;
  for (const std::string& good :
       {std::string("a"), std::string(".profile"), std::string("read me.txt"),
        std::string("console.txt"), std::string("com0"), std::string("com12.txt"),
        std::string("r\xC3\xA9sum\xC3\xA9 & 100% #1;.txt"), longest + "x"}) {
    EXPECT_EQ(name_fault(good), "") << good;
  }
  const std::pair<std::string, std::string> bad[] = {{"", "Type a name"},
                                                     {"a/b", "any of the characters"},
                                                     {"what?", "any of the char"},
                                                     {"a\tb", "control"},
                                                     {"a.txt.", "end with"},
                                                     {"a ", "end with"},
                                                     {"..", "end with"},
                                                     {"Con", "\"Con\" for a device"},
                                                     {"nul .tar.gz", "device"},
                                                     {"LPT9", "device"},
                                                     {"com\xC2\xB2.txt", "device"},
                                                     {longest + "xy", "longer"},
                                                     {std::string(300, 'n'), "longer than 255"}};
  for (const auto& [name, fault] : bad) {
    EXPECT_NE(name_fault(name).find(fault), std::string::npos) << name << ": " << name_fault(name);
  }
}

TEST(FileNames, TypedFolders) {
  const std::tuple<const char*, const char*, const char*> folders[] = {
      {"C:\\docs", "", "C:\\docs\\"},
      {"C:\\", " new folder ", "C:\\new folder\\"},
      {"C:\\docs\\", "a/b\\\\c\\", "C:\\docs\\a\\b\\c\\"},
      {"C:\\docs", "d:\\x", "d:\\x\\"},
      {"C:\\docs", "D:", "D:\\"},
      {"C:\\docs", "\\x", "C:\\x\\"},
      {"\\\\server\\share\\docs", "\\x", "\\\\server\\share\\x\\"},
      {"C:\\docs", "//server/share/x", "\\\\server\\share\\x\\"}};
  for (const auto& [open, text, path] : folders) {
    const TypedFolder folder = typed_folder(open, text, '\\');
    EXPECT_EQ(folder.path, path) << text;
    EXPECT_EQ(folder.fault, "") << text;
  }
  for (const char* text : {"..\\x", "a\\con", "D:x", "a\\b*", "x.\\y"}) {
    EXPECT_NE(typed_folder("C:\\docs", text, '\\').fault, "") << text;
  }
  for (const char* text : {"", "x", "\\x"})
    EXPECT_NE(typed_folder("", text, '\\').fault, "") << text;
}

TEST(FileCommandTexts, Failures) {
  BatchOutcome outcome;
  outcome.selected = 40;
  EXPECT_EQ(failure_text(FileCommand::copy, outcome), "");
  outcome.faults.push_back({"C:\\a", "Access denied"});
  EXPECT_EQ(failure_text(FileCommand::rename, outcome),
            "Access denied - encountered while trying to RENAME C:\\a");
  outcome.faults.push_back({"C:\\b", "Not found"});
  EXPECT_EQ(failure_text(FileCommand::move, outcome),
            "2 of 40 files could not be moved:\n\nC:\\a: Access denied\nC:\\b: Not found");
  outcome.faults.resize(12, {"C:\\c", "Not found"});
  EXPECT_TRUE(failure_text(FileCommand::erase, outcome).ends_with("C:\\c: Not found\nand 2 more"));
  EXPECT_EQ(failure_title(FileCommand::erase), "Cannot Delete File");
}

TEST(FileCommandTexts, DeletingNamesTheFilesAndWhereTheyGo) {
  const SelectedFiles one{"a.txt", "C:\\docs\\", 1};
  const SelectedFiles many{"a.txt", "C:\\docs\\", 12};
  EXPECT_EQ(delete_question(one, 0),
            "Delete \"C:\\docs\\a.txt\" from Disk?\n\nIt goes to the Recycle Bin.");
  EXPECT_NE(delete_question(one, 1).find("gone for good"), std::string::npos);
  EXPECT_EQ(delete_question(many, 1),
            "Delete 12 files from Disk?\n\nThere is no Recycle Bin for 1 of them: it will be gone "
            "for good.");
  EXPECT_NE(delete_question(many, 12).find("for them: they will"), std::string::npos);
  EXPECT_EQ(remove_question(many), "Remove 12 files from the List?\n\nThe files stay on the Disk.");
}

}  // namespace
}  // namespace tallowmere
