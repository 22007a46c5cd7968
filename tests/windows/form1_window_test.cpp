#include "shell/geometry.h"
#include "tests/windows/accessible_name.h"
#include "tests/windows/form1_fixture.h"
#include "win32/dpi.h"

namespace tallowmere {
namespace {

class Form1WindowTest : public Form1Test {};

/// A menu as text: captions in order, "-" for a line, submenus in brackets.
std::string menu_text(HMENU menu) {
  std::string text;
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    wchar_t caption[100] = L"";
    GetMenuStringW(menu, static_cast<UINT>(i), caption, 100, MF_BYPOSITION);
    text += *caption == 0 ? "-" : win32::narrow(caption);
    if (const HMENU submenu = GetSubMenu(menu, i)) {
      text.append("[").append(menu_text(submenu)).append("]");
    }
    text += "|";
  }
  return text;
}

TEST_F(Form1WindowTest, HasItsMenusTipsAndNames) {
  open();
  EXPECT_EQ(menu_text(GetMenu(form->handle())),
            "&File[&View|&Launch|-|&Move|&Copy|Re&name|&Delete|&Remove|-|&Select All|-|E&xit|]|"
            "&Edit[&Copy Text|&Append Text|C&opy File Name|-|Find &Next|Find Pre&v|-|&HyperFind|"
            "&Restore Find|]|"
            "&Search[&Start|Sto&p|-|Sound &On|&Minimize On|&Find On Launch|]|"
            "&Display[Change &Font...|&Larger Font|&Smaller Font|-|"
            "Sort Files &By[&Name|&Date/Time|&Size|&Folder|&Type|]|]|"
            "&Help[&Quick Answers...|&Searching Hints...|-|&About Tallowmere...|]|");
  const win32::PopupMenu quick(IDR_QUICK);
  EXPECT_EQ(menu_text(quick.handle()),
            "Copy|Append|-|HyperFind|-|New Search|List Search|File Search|");
  EXPECT_EQ(form->tool_tip(form->cmdExit), "Exit Tallowmere");
  EXPECT_EQ(accessible_name(form->ListView2.handle()), "Files found");
  EXPECT_EQ(accessible_name(form->Text1.handle()), "Text of the file");
}

TEST_F(Form1WindowTest, AnEmptyListLeavesOnlySearchToggleAndExit) {
  open();
  EXPECT_FALSE(form->cmdView.enabled() || form->cmdHyper.enabled() || form->cmdRestore.enabled());
  EXPECT_FALSE(form->Text1.enabled() || form->Text1.VScroll1.enabled());
  for (int id = ID_MNUVIEW; id <= ID_MNUSELECTALL; ++id) EXPECT_FALSE(entry_enabled(id)) << id;
  for (const int id : {ID_MNUEXIT, ID_MNUSTART}) EXPECT_TRUE(entry_enabled(id)) << id;
}

TEST_F(Form1WindowTest, OpensInItsDesignSizeAndIsNeverSmallerThanItsControls) {
  open();
  const int dpi = win32::window_dpi(form->handle());
  RECT rect;
  GetWindowRect(form->handle(), &rect);
  EXPECT_EQ(rect.right - rect.left, to_pixels(main_window_design.width, dpi));
  EXPECT_EQ(rect.bottom - rect.top, to_pixels(main_window_design.height, dpi));

  int columns = 0;
  for (int i = 0; i < result_columns; ++i) columns += form->ListView2.column_width(i);
  RECT list;
  GetWindowRect(form->ListView2.handle(), &list);
  EXPECT_LT(columns, list.right - list.left) << "a sideways scroll bar";
  EXPECT_GT(columns, list.right - list.left - 50);

  SetWindowPos(form->handle(), nullptr, 0, 0, 10, 10, SWP_NOZORDER | SWP_NOACTIVATE);
  RECT client;
  GetClientRect(form->handle(), &client);
  EXPECT_GT(client.right, 500);
  for (HWND child = GetWindow(form->handle(), GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    if (!(GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE)) continue;
    RECT place;
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, form->handle(), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_LE(place.right, client.right) << GetDlgCtrlID(child);
    EXPECT_LE(place.bottom, client.bottom) << GetDlgCtrlID(child);
  }
}

TEST_F(Form1WindowTest, ColumnsKeepTheUsersWidthsOnAnotherScreen) {
  open();
  form->ListView2.set_column_width(0, 100);
  form->ListView2.set_column_width(2, 40);
  RECT proposed{0, 0, 900, 600};
  SendMessageW(form->handle(), WM_DPICHANGED, MAKEWPARAM(144, 144),
               reinterpret_cast<LPARAM>(&proposed));
  win32::pump_pending();
  EXPECT_EQ(form->ListView2.column_width(0), 100 * 144 / win32::window_dpi(form->handle()));
  EXPECT_EQ(form->ListView2.column_width(2), 40 * 144 / win32::window_dpi(form->handle()));
}

TEST_F(Form1WindowTest, NothingRunsBehindADialog) {
  open();
  EnableWindow(form->handle(), FALSE);
  const bool before = entry_checked(ID_MNUSOUNDON);
  choose(ID_MNUSOUNDON);
  SendMessageW(form->handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(entry_checked(ID_MNUSOUNDON), before);
  EXPECT_NE(form->handle(), nullptr);
}

}  // namespace
}  // namespace tallowmere
