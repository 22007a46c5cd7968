#include "actions/file_commands.h"

#include "actions/background_operations.h"
#include "dialogs/resource.h"
#include "tests/windows/dialogs_support.h"
#include "tests/windows/form1_fixture.h"
#include "tests/windows/temp_folder.h"
#include "win32/win_file_system.h"

namespace tallowmere {
namespace {

class RecordingHost : public FileCommandHost {
 public:
  std::string calls;
  void rows_removed(std::ptrdiff_t row) override { calls += "removed" + std::to_string(row) + " "; }
  void rows_refreshed() override { calls += "refreshed "; }
  void viewed_file_changed(ViewedFile what) override {
    calls += "viewed" + std::to_string(static_cast<int>(what)) + " ";
  }
  void records_changed() override { calls += "sort "; }
};

class FileCommandsTest : public testing::Test {
 protected:
  void add(const std::string& name) {
    list.add_file_row(folder.write(name, name), FileFacts{ticks_per_second, 1});
    list.matched_count = static_cast<std::int64_t>(list.file_count());
  }
  std::string listed() {
    std::string names;
    for (std::size_t i = 0; i < list.file_count(); ++i) {
      names += list.indexed_filename(i).substr(folder.path().size()) + "|";
    }
    return names;
  }
  std::vector<std::string> paths(const std::vector<std::size_t>& rows) {
    return paths_of(list, rows);
  }
  std::string take_calls() { return std::exchange(host.calls, {}); }
  DialogContext context() {
    return {search, files, clock, iso_date, {}, "C:\\", cancelled, recent};
  }

  TempFolder folder;
  ResultList list;
  RecordingHost host;
  Hand hand;
  SearchCriteria search;
  win32::WinFileSystem files;
  FixedClock clock;
  bool cancelled = false;
  RecentFolders recent;
  FileCommands commands{hand.window(), list, context(), host};
};

TEST_F(FileCommandsTest, AsksBeforeItReplacesAndTellsWhatFailed) {
  for (const char* name : {"1", "2", "3", "4"}) add(name);
  folder.make_folder("to");
  for (const char* name : {"1", "2"}) folder.write("to\\" + std::string(name), "old");
  const FileLock lock3(folder, "3");
  std::string text;
  {
    const FileLock lock4(folder, "4");
    const User dialog("Copy Files", [](HWND window) {
      static_cast<frmCopyMove&>(*win32::Form::from(window)).txtNewFolder.set_text("to");
      PostMessageW(window, WM_COMMAND, IDOK, 0);
    });
    const User question("Confirm Replacement", press_button(IDC_REPLACE_ALL));
    const User box("Cannot Copy File", press_button(IDOK, &text));
    commands.move_copy_dialog(FileCommand::copy, paths({0, 1, 2, 3}));
  }
  EXPECT_TRUE(text.starts_with("2 of 4 files could not be copied:\n\n" + folder.path("3") + ": "))
      << text;
  EXPECT_EQ(folder.read("to\\1") + folder.read("to\\2"), "12");
  EXPECT_EQ(take_calls(), "") << "a copy leaves the rows alone";
}

TEST_F(FileCommandsTest, ARenameIsNoMove) {
  add("old.txt");
  folder.make_folder("sub");
  const User box("Cannot Rename File", press_button(IDOK));
  EXPECT_FALSE(commands.rename_file(folder.path("old.txt"), "sub\\new.txt"));
  EXPECT_EQ(folder.names(), "old.txt|sub|");
  EXPECT_TRUE(commands.rename_file(folder.path("old.txt"), "old.txt"));
  EXPECT_EQ(take_calls(), "");
}

TEST_F(FileCommandsTest, DeletesWhatIsConfirmed) {
  // Too long a path for the bin, so that the test leaves nothing in the user's.
  const std::string deep = std::string(150, 'd') + "\\" + std::string(150, 'e') + "\\";
  folder.make_folder(deep.substr(0, 150));
  folder.make_folder(deep.substr(0, 301));
  for (const char* name : {"1", "2", "gone", "4"}) add(deep + name);
  DeleteFileW(folder.native(deep + "gone").c_str());
  list.viewed_index = 1;
  std::string text;
  for (const int id : {IDNO, IDYES}) {
    EXPECT_EQ(take_calls() + folder.read(deep + "2"), deep + "2");
    const User box("Delete Files", press_button(id, &text));
    const auto message =
        id == IDYES ? std::make_unique<User>("Cannot Delete File", press_button(IDOK)) : nullptr;
    commands.delete_files(paths({1, 2, 3}));
  }
  EXPECT_TRUE(
      text.ends_with("There is no Recycle Bin for them: they will be deleted permanently."));
  EXPECT_EQ(listed(), deep + "1|" + deep + "gone|");
  EXPECT_EQ(list.matched_count, 2);
  EXPECT_EQ(take_calls(), "removed1 viewed3 ");
}

/// A copy that never ends by itself, and a deletion that lacks memory.
class EndlessCopy : public win32::WinFileOperations {
 public:
  EndlessCopy() : WinFileOperations(nullptr) {}
  Result remove(const std::string&, bool) override { throw std::bad_alloc(); }
  Result copy(const std::string&, const std::string&, const Replace&,
              const Progress& progress) override {
    while (progress(1, 4)) Sleep(1);
    return SystemError{ERROR_REQUEST_ABORTED, "given up"};
  }
};

TEST_F(FileCommandsTest, LongWorkShowsItsProgressAndCanBeCancelled) {
  EndlessCopy endless;
  frmProgress form(hand.window());
  BackgroundOperations background(endless, [] { win32::pump_pending(); });
  const std::uint64_t started = GetTickCount64();
  const User user("Copying Files", [&](HWND window) {
    EXPECT_GE(GetTickCount64() - started, 500u);
    EXPECT_EQ(form.Label1.text(), "a");
    EXPECT_FALSE(IsWindowEnabled(hand.window()));
    PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
  });
  {
    const frmProgress::Work work(form, "Copying Files");
    const auto error = background.copy("a", "b", {}, [&](std::int64_t done, std::int64_t total) {
      return form.update("a", static_cast<double>(done) / static_cast<double>(total + 1));
    });
    EXPECT_EQ(error.value().code, ERROR_REQUEST_ABORTED);
  }
  EXPECT_FALSE(IsWindowVisible(form.handle()));
  EXPECT_TRUE(IsWindowEnabled(hand.window()));

  EXPECT_EQ(background.remove("a", false).value().text, "Out of memory");
  // What the caller throws ends the operation and goes on to who called it.
  EXPECT_THROW(background.copy("a", "b", {}, [](std::int64_t, std::int64_t) -> bool { throw 1; }),
               int);
}

}  // namespace
}  // namespace tallowmere
