#include "actions/file_commands.h"

#include "actions/background_operations.h"
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

constexpr char16_t wide_name[] = u"\u4e2d\u00e9.txt";

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
  /// Answers a message box and hands its text out.
  static std::function<void(HWND)> answer(int id, std::string& text) {
    return [id, &text](HWND box) {
      text = message_box_text(box);
      PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(id), 0);
    };
  }
  /// Takes the folder shown, which is that of the files, with this one below it.
  static std::function<void(HWND)> choose(const std::string& new_folder) {
    return [new_folder](HWND window) {
      auto& form = static_cast<frmCopyMove&>(*win32::Form::from(window));
      SendMessageW(form.txtNewFolder.handle(), WM_SETTEXT, 0,
                   reinterpret_cast<LPARAM>(win32::wide(new_folder).c_str()));
      PostMessageW(window, WM_COMMAND, IDOK, 0);
    };
  }
  DialogContext context() { return {search, files, clock, iso_date, {}, "C:\\", cancelled}; }

  TempFolder folder;
  ResultList list;
  RecordingHost host;
  Hand hand;
  SearchCriteria search;
  win32::WinFileSystem files;
  FixedClock clock;
  bool cancelled = false;
  FileCommands commands{hand.window(), list, context(), host};
};

TEST_F(FileCommandsTest, MovesToAFolderThatIsMade) {
  const std::string name = to_utf8(wide_name);
  add("a.txt");
  add(name);
  list.viewed_index = 1;
  const User user("Move Files", choose("deep\\new"));
  commands.move_copy_dialog(FileCommand::move, paths({0, 1}));
  EXPECT_EQ(listed(), "deep\\new\\a.txt|deep\\new\\" + name + "|");
  EXPECT_EQ(folder.names(), "deep|");
  EXPECT_EQ(folder.read("deep\\new\\" + name), name);
  EXPECT_EQ(take_calls(), "viewed1 sort ");
  EXPECT_TRUE(IsWindowEnabled(hand.window()));
}

TEST_F(FileCommandsTest, AsksBeforeItReplacesAndTellsWhatFailed) {
  for (const char* name : {"1", "2", "3", "4"}) add(name);
  folder.make_folder("to");
  for (const char* name : {"1", "2"}) folder.write("to\\" + std::string(name), "old");
  const FileLock lock3(folder, "3");
  std::string text;
  {
    const FileLock lock4(folder, "4");
    const User dialog("Copy Files", choose("to"));
    const User question("Confirm Replacement", [](HWND window) {
      const auto& form = static_cast<frmReplace&>(*win32::Form::from(window));
      PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(form.cmdYesToAll.id()), 0);
    });
    const User box("Cannot Copy File", answer(IDOK, text));
    commands.move_copy_dialog(FileCommand::copy, paths({0, 1, 2, 3}));
  }
  EXPECT_TRUE(text.starts_with("2 of 4 files could not be copied:\n\n" + folder.path("3") + ": "))
      << text;
  EXPECT_EQ(folder.names("to\\"), "1|2|");
  EXPECT_EQ(folder.read("to\\1") + folder.read("to\\2"), "12");
  EXPECT_EQ(take_calls(), "") << "a copy leaves the rows alone";
}

TEST_F(FileCommandsTest, RenamesOnlyToWhatCanBe) {
  add("old.txt");
  add("other.txt");
  const auto refused = [&](const std::string& name) {
    std::string text;
    const User box("Cannot Rename File", answer(IDOK, text));
    EXPECT_FALSE(commands.rename_file(folder.path("old.txt"), name)) << name;
    return text;
  };
  EXPECT_NE(
      refused("OTHER.txt").find("encountered while trying to RENAME " + folder.path("old.txt")),
      std::string::npos);
  EXPECT_EQ(refused(""), "Type a name.");
  EXPECT_TRUE(commands.rename_file(folder.path("old.txt"), "old.txt"));
  EXPECT_EQ(take_calls(), "");
  EXPECT_EQ(folder.names(), "old.txt|other.txt|");

  list.viewed_index = 0;
  EXPECT_TRUE(commands.rename_file(folder.path("old.txt"), to_utf8(wide_name)));
  EXPECT_EQ(listed(), to_utf8(wide_name) + "|other.txt|");
  EXPECT_EQ(folder.read(to_utf8(wide_name)), "old.txt");
  EXPECT_EQ(take_calls(), "viewed1 sort ");

  const User dialog("Rename File", [](HWND window) {
    const auto& form = static_cast<frmRename&>(*win32::Form::from(window));
    SendMessageW(form.txtNewName.handle(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"new.txt"));
    PostMessageW(window, WM_COMMAND, IDOK, 0);
  });
  commands.rename_dialog(folder.path("other.txt"));
  EXPECT_EQ(listed(), to_utf8(wide_name) + "|new.txt|");
}

TEST_F(FileCommandsTest, DeletesWhatIsConfirmed) {
  // Too long a path for the bin, so that the test leaves nothing in the user's.
  const std::string deep = std::string(150, 'd') + "\\" + std::string(150, 'e') + "\\";
  folder.make_folder(deep.substr(0, 150));
  folder.make_folder(deep.substr(0, 301));
  for (const char* name : {"1", "2", "gone", "4"}) add(deep + name);
  std::string text;
  {
    const User box("Delete Files", [&](HWND window) {
      text = message_box_text(window);
      PostMessageW(window, WM_COMMAND, IDNO, 0);
    });
    commands.delete_files(paths({0}));
  }
  EXPECT_EQ(text, "Delete \"" + folder.path(deep + "1") +
                      "\" from Disk?\n\nThere is no Recycle Bin for it: it will be gone for good.");
  EXPECT_EQ(folder.read(deep + "1"), deep + "1");
  EXPECT_EQ(take_calls(), "");

  DeleteFileW(folder.native(deep + "gone").c_str());
  list.viewed_index = 1;
  std::string failure;
  const User box("Delete Files", answer(IDYES, text));
  const User message("Cannot Delete File", answer(IDOK, failure));
  commands.delete_files(paths({1, 2, 3}));
  EXPECT_TRUE(text.starts_with("Delete 3 files from Disk?")) << text;
  EXPECT_TRUE(
      failure.ends_with(" - encountered while trying to DELETE " + folder.path(deep + "gone")))
      << failure;
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
  std::uint64_t shown = 0;
  std::string text;
  const User user("Copying Files", [&](HWND window) {
    shown = GetTickCount64();
    text = form.Label1.text();
    EXPECT_FALSE(IsWindowEnabled(hand.window()));
    PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
  });
  std::optional<SystemError> error;
  {
    const frmProgress::Work work(form, "Copying Files");
    error = background.copy("a", "b", {}, [&](std::int64_t done, std::int64_t total) {
      return form.update("a",
                         total > 0 ? static_cast<double>(done) / static_cast<double>(total) : 0);
    });
  }
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, ERROR_REQUEST_ABORTED);
  EXPECT_GE(shown - started, 500u);
  EXPECT_EQ(text, "a");
  EXPECT_FALSE(IsWindowVisible(form.handle()));
  EXPECT_TRUE(IsWindowEnabled(hand.window()));
}

TEST_F(FileCommandsTest, WhatIsThrownInTheBackgroundIsTold) {
  EndlessCopy endless;
  BackgroundOperations background(endless, [] { win32::pump_pending(); });
  const auto error = background.remove("a", false);
  ASSERT_TRUE(error);
  EXPECT_EQ(error->text, "Out of memory");

  // What the caller throws ends the operation and goes on to who called it.
  EXPECT_THROW(background.copy("a", "b", {}, [](std::int64_t, std::int64_t) -> bool { throw 1; }),
               int);
}

}  // namespace
}  // namespace tallowmere
