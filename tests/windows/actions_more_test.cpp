#include "actions/more_commands.h"

#include "shell/list_export.h"
#include "tests/windows/actions_support.h"
#include "tests/windows/dialogs_support.h"
#include "tests/windows/temp_folder.h"
#include "win32/win_file_system.h"

namespace tallowmere {
namespace {

/// Notes what it is asked; every answer is the same.
class RecordingShell : public SystemShell {
 public:
  std::string asked;
  std::optional<SystemError> answer;
  std::optional<SavedFile> chosen;

  std::optional<SystemError> show_in_folder(const std::string& path) override {
    asked += "folder " + path;
    return answer;
  }
  std::optional<SystemError> execute(std::string_view verb, const std::string& path) override {
    asked += std::string(verb) + " " + path;
    return answer;
  }
  std::optional<SavedFile> ask_where_to_save(const std::string& name,
                                             const std::vector<FileType>& types) override {
    asked += name;
    for (const FileType& type : types) asked += "|*." + type.extension;
    return chosen;
  }
};

class NoListChanges : public FileCommandHost {
 public:
  void rows_removed(std::ptrdiff_t) override {}
  void rows_refreshed() override {}
  void viewed_file_changed(ViewedFile) override {}
  void records_changed() override {}
};

class MoreCommandsTest : public testing::Test {
 protected:
  TempFolder folder;
  ResultList list;
  SearchCriteria search;
  win32::WinFileSystem files;
  FixedClock clock;
  bool cancelled = false;
  RecentFolders recent_folders;
  RecordingHost host;
  NoListChanges no_changes;
  FileCommands file_commands{
      host.window(),
      list,
      {search, files, clock, iso_date, {}, "C:\\", cancelled, recent_folders},
      no_changes};
  RecordingShell shell;
  MoreCommands commands{host, file_commands, shell, list, clock};
};

TEST_F(MoreCommandsTest, TheDesktopIsAskedForFilesThatAreThere) {
  struct Case {
    void (MoreCommands::*run)(const std::string&);
    std::string asked, title, doing;
  };
  const std::string path = folder.write("a, b.txt", "");
  const std::string gone = folder.path("gone");
  for (const auto& [run, asked, title, doing] :
       {Case{&MoreCommands::mnuOpenFolder_Click, "folder ", "Folder", "SHOW THE FOLDER OF"},
        Case{&MoreCommands::mnuOpenWith_Click, "openas ", "File", "OPEN"},
        Case{&MoreCommands::mnuProperties_Click, "properties ", "Properties",
             "SHOW THE PROPERTIES OF"}}) {
    for (const int code : {0, int{ERROR_CANCELLED}, int{ERROR_NO_ASSOCIATION}}) {
      if (code != 0) shell.answer = SystemError{code, "Because"};
      (commands.*run)(path);
      EXPECT_EQ(std::exchange(shell.asked, {}), asked + path);
      EXPECT_EQ(host.messages.size(), code == ERROR_NO_ASSOCIATION);
    }
    ASSERT_FALSE(host.messages.empty());
    EXPECT_TRUE(host.messages[0].ends_with(title + ": Because - encountered while trying to " +
                                           doing + " " + path))
        << host.messages[0];
    (commands.*run)(gone);
    EXPECT_EQ(shell.asked, "");
    EXPECT_NE(host.messages.back().find("FIND " + gone + "\n\n"), std::string::npos);
    host.messages.clear();
    shell.answer.reset();
  }
}

TEST_F(MoreCommandsTest, TheListTakesTheFilesPlaceWhenAllOfItIsThere) {
  list.add_file_row({"=b", 0, "C:\\", 1});
  list.add_file_row({"a", 0, "C:\\", 2});
  commands.mnuSaveList_Click();
  EXPECT_EQ(std::exchange(shell.asked, {}), "Files Found.txt|*.txt|*.csv");
  EXPECT_TRUE(host.messages.empty()) << "given up";

  shell.chosen = {folder.write("list", "before"), 1};
  commands.mnuSaveList_Click();
  EXPECT_EQ(folder.read("list"), exported_list(list, ListFormat::csv, clock));
  shell.chosen->path = folder.write("list.txt", "before");
  for (const bool locked : {true, false}) {
    const auto lock = locked ? std::make_unique<FileLock>(folder, "list.txt") : nullptr;
    commands.mnuSaveList_Click();
    if (locked) continue;
    EXPECT_EQ(folder.read("list.txt"), exported_list(list, ListFormat::text, clock));
  }
  ASSERT_EQ(host.messages.size(), 1u);
  EXPECT_TRUE(host.messages[0].starts_with("Cannot Save List: "));
  EXPECT_NE(host.messages[0].find("SAVE " + folder.path("list.txt") + "\n\nSave the list under"),
            std::string::npos);
  EXPECT_EQ(folder.names(), "list|list.txt|");
}

}  // namespace
}  // namespace tallowmere
