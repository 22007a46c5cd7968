#include "dialogs/frmUnread.h"

#include "dialogs/resource.h"
#include "tests/windows/dialogs_support.h"
#include "tests/windows/temp_folder.h"
#include "win32/clipboard.h"

namespace tallowmere {
namespace {

class UnreadTest : public testing::Test {
 protected:
  static std::vector<UnreadFile> many() {
    std::vector<UnreadFile> files;
    for (int i = 0; i < 20'000; ++i) files.push_back({"C:\\" + std::to_string(i), "Denied"});
    return files;
  }
  void work(std::initializer_list<Hand::Step> steps) {
    hand.work([this] { form.show(); }, steps);
  }
  /// Presses a key with the Ctrl key down.
  void press_with_control(WPARAM key) {
    BYTE keys[256] = {};
    keys[VK_CONTROL] = 0x80;
    SetKeyboardState(keys);
    MSG message{form.ListView1.handle(), WM_KEYDOWN, key, 1, 0, {}};
    EXPECT_TRUE(form.pre_translate(message));
    keys[VK_CONTROL] = 0;
    SetKeyboardState(keys);
  }
  std::string copied() { return win32::clipboard_text(nullptr).value_or("(no text)"); }
  std::string cell(int row, int column) {
    wchar_t text[100] = L"";
    ListView_GetItemText(form.ListView1.handle(), row, column, text, 100);
    return win32::narrow(text);
  }

  Hand hand;
  std::vector<UnreadFile> unread = many();
  frmUnread form{hand.window(), unread};
};

TEST_F(UnreadTest, ShowsAndCopiesAnyNumberOfFiles) {
  work({[&] {
    EXPECT_EQ(label_of(form.ListView1), "20000 files were not read:");
    EXPECT_TRUE(form.ListView1.has_focus());
    EXPECT_EQ(cell(19'999, 0) + ", " + cell(19'999, 1), "C:\\19999, Denied");
    press_with_control('C');
    EXPECT_TRUE(copied().starts_with("C:\\0\tDenied\r\n"));
    EXPECT_TRUE(copied().ends_with("C:\\19999\tDenied\r\n"));
    form.ListView1.select_only(7);
    form.cmdCopy.click();
    EXPECT_TRUE(copied() == "C:\\7\tDenied\r\n");
    press_with_control('A');
    EXPECT_EQ(form.ListView1.selected_count(), 20'000);
    press(form.ListView1, VK_ESCAPE);
  }});
}

TEST_F(UnreadTest, TheListFollowsTheWindowsSize) {
  work({[&] {
    for (const int width : {1, 900}) {
      SetWindowPos(form.handle(), nullptr, 0, 0, width, width, SWP_NOZORDER);
      RECT client, list, button;
      GetClientRect(form.handle(), &client);
      GetWindowRect(form.ListView1.handle(), &list);
      GetWindowRect(form.cmdClose.handle(), &button);
      MapWindowPoints(nullptr, form.handle(), reinterpret_cast<POINT*>(&list), 2);
      MapWindowPoints(nullptr, form.handle(), reinterpret_cast<POINT*>(&button), 2);
      EXPECT_GT(list.bottom - list.top, 50) << "the smallest window has room for rows";
      EXPECT_LT(list.bottom, button.top);
      EXPECT_LT(button.bottom, client.bottom);
      EXPECT_EQ(button.right, list.right);
      EXPECT_EQ(client.right - list.right, list.left);
    }
    form.cmdClose.click();
  }});
}

TEST_F(UnreadTest, IsSavedWhereTheSystemsDialogSays) {
  TempFolder folder;
  folder.write("locked.txt", "kept");
  unread.resize(1);
  const auto save_as = [&](const std::string& name) {
    // The file name has the focus.
    SetWindowTextW(GetFocus(), win32::wide(folder.path(name)).c_str());
    SendMessageW(FindWindowW(nullptr, L"Save As"), WM_COMMAND, IDOK, 0);
  };
  std::string fault;
  {
    const FileLock lock(folder, "locked.txt");
    work({[&] { form.cmdSave.click(); }, [&] { save_as("list"); }, [&] { form.cmdClose.click(); }});
  }
  EXPECT_EQ(folder.read("list.txt"),
            "\xEF\xBB\xBF"
            "C:\\0\tDenied\r\n");
}

}  // namespace
}  // namespace tallowmere
