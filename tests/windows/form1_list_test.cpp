#include <tuple>

#include "dialogs/frmCopyMove.h"
#include "tests/windows/form1_fixture.h"
#include "tests/windows/temp_folder.h"

namespace tallowmere {
namespace {

class Form1ListTest : public Form1Test {
 protected:
  void add_three() {
    files.add("C:\\docs\\b.txt", "x needle", 30 * minute);
    files.add("C:\\docs\\C.txt", "needle", 10 * minute);
    files.add("C:\\docs\\a.log", "xxxx needle", 20 * minute);
  }

  static void hold(int key, bool down) {
    BYTE keys[256] = {};
    keys[key] = down ? 0x80 : 0;
    SetKeyboardState(keys);
  }
  static void press(WPARAM key) {
    MSG message{GetFocus(), WM_KEYDOWN, key, 1, 0, {}};
    win32::dispatch_message(message);
    win32::pump_pending();
  }

  void open_with_list() {
    add_three();
    open();
    run(SearchKind::new_search, "needle");
    ASSERT_EQ(names(), "a.log b.txt C.txt ");
  }

  /// '^' ascending, 'v' descending, a space for none, for each header.
  std::string arrows() const {
    std::string text;
    for (int i = 0; i < result_columns; ++i) {
      HDITEMW entry{};
      entry.mask = HDI_FORMAT;
      SendMessageW(form->ListView2.header(), HDM_GETITEMW, static_cast<WPARAM>(i),
                   reinterpret_cast<LPARAM>(&entry));
      text += entry.fmt & HDF_SORTUP ? '^' : entry.fmt & HDF_SORTDOWN ? 'v' : ' ';
    }
    return text;
  }
};

TEST_F(Form1ListTest, HeadersAndMenuShowTheOrderAndKeepTheSelection) {
  open_with_list();
  form->ListView2.select_only(0);
  const std::tuple<bool, int, std::string, std::string> steps[] = {
      {true, 0, "a.log b.txt C.txt ", "^   "},  // sorts: only the next time it reverses
      {true, 0, "C.txt b.txt a.log ", "v   "},  {true, 2, "a.log b.txt C.txt ", "  v "},
      {false, 2, "C.txt b.txt a.log ", "  ^ "}, {true, 1, "b.txt a.log C.txt ", " v  "},
      {false, 3, "a.log b.txt C.txt ", "   ^"}, {false, 4, "a.log b.txt C.txt ", "    "}};
  for (const auto& [header, key, order, arrow] : steps) {
    header ? click_column(key) : choose(ID_MNUSORT + key);
    EXPECT_EQ(names() + arrows(), order + arrow);
    EXPECT_EQ(form->ListView2.selected_rows(), std::vector{order.find("a.log") / 6});
    for (int i = 0; i < 5; ++i) EXPECT_EQ(entry_checked(ID_MNUSORT + i), i == key);
  }
}

// The box that reports the other file serves events, too.
TEST_F(Form1ListTest, MovedFilesAreSortedWhenTheirCommandIsOver) {
  const TempFolder folder;
  for (const char* name : {"a", "b", "c"}) files.add(folder.write(name, "needle"), "needle");
  open();
  search.path = folder.path();
  choose(ID_MNUSORT + 3);
  run(SearchKind::new_search, "needle");
  form->ListView2.select_all();
  win32::pump_pending();  // the first one shows
  {
    const FileLock lock(folder, "b");
    const User dialog("Move Files", [](HWND window) {
      static_cast<frmCopyMove&>(*win32::Form::from(window)).txtNewFolder.set_text("to");
      PostMessageW(window, WM_COMMAND, IDOK, 0);
    });
    const User box("Cannot Move File", press_button(IDOK));
    choose(ID_MNUMOVE);
  }
  EXPECT_EQ(cell(0, 3), folder.path("to\\"));
  EXPECT_EQ(names(), "a b c ");
  win32::pump_pending();
  EXPECT_EQ(names(), "b a c ");
  EXPECT_EQ(folder.read("to\\a") + folder.read("b"), "needleneedle");
}

TEST_F(Form1ListTest, TheKeyboardGoesFromTheButtonsIntoTheList) {
  add_three();
  open();
  form->show(SW_SHOW);
  for (const WPARAM key : {VK_UP, VK_LEFT, VK_DOWN}) press(key);
  EXPECT_TRUE(form->cmdSearch.has_focus()) << "the list is empty, and the row does not wrap";
  for (int i = 0; i < 2; ++i) press(VK_RIGHT);
  EXPECT_TRUE(form->cmdExit.has_focus());
  {
    const User dialog("Search Criteria - New Search", press_button(IDCANCEL));
    hold(VK_CONTROL, true);
    press('F');
    hold(VK_CONTROL, false);
  }
  run(SearchKind::new_search, "needle");
  EXPECT_TRUE(form->ListView2.has_focus());
  EXPECT_EQ(form->ListView2.focused(), 0);
  EXPECT_EQ(form->ListView2.selected_count(), 0);
  for (int row = 0; row < 2; ++row) {
    press(VK_DOWN);
    EXPECT_EQ(form->ListView2.selected(), row);
    EXPECT_EQ(form->results().viewed_index, row);
  }
  form->cmdSearch.focus();
  press(VK_DOWN);
  EXPECT_TRUE(form->ListView2.has_focus());
}

TEST_F(Form1ListTest, MoreOpensOnlyWithAList) {
  open();
  EXPECT_FALSE(entry_enabled(ID_MNUMORE));
  files.add("C:\\docs\\gone.txt", "needle");
  run(SearchKind::new_search, "needle");
  EXPECT_TRUE(entry_enabled(ID_MNUMORE));
  std::string text;
  for (const int command : {ID_MNUOPENFOLDER, ID_MNUOPENWITH, ID_MNUPROPERTIES}) {
    const User none("No File Selected", press_button(IDOK));
    choose(command);
  }
  click_row(0);
  {
    const User box("Cannot Open Folder", press_button(IDOK, &text));
    choose(ID_MNUOPENFOLDER);
  }
  EXPECT_NE(text.find("FIND C:\\docs\\gone.txt"), std::string::npos) << text;
}

TEST_F(Form1ListTest, ARowsTipTellsTheWholePathAndTheFirstHit) {
  open_with_list();
  form->show(SW_SHOW);
  files.add("C:\\docs\\b.txt", "hay\nsome needle\nneedle", 30 * minute);
  const HWND list = form->ListView2.handle();
  const auto tip_window = [list] {
    HWND tip = nullptr;
    while ((tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) != nullptr) {
      TOOLINFOW area{};
      area.cbSize = TTTOOLINFOW_V2_SIZE;
      area.hwnd = list;
      area.uId = 1;
      if (SendMessageW(tip, TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&area))) break;
    }
    return tip;
  };
  // Its text; "-" when there is none.
  const auto tip_over = [&](int x, int y) {
    SendMessageW(list, WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
    const HWND tip = tip_window();
    if (tip == nullptr) return std::string("-");
    NMTTDISPINFOW request{};
    request.hdr = {tip, 1, static_cast<UINT>(TTN_GETDISPINFOW)};
    SendMessageW(list, WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&request));
    return win32::narrow(request.lpszText);
  };
  const RECT row = form->ListView2.row_area(1);
  const std::string facts = "C:\\docs\\b.txt\r\n8 bytes  1/1/1601 12:30:00 AM";
  // Slow machines read the line later.
  std::string text;
  while ((text = tip_over(row.right - 5, row.top + 2)) == facts) tip_over(1, row.bottom + 500);
  EXPECT_EQ(text, facts + "\r\nsome needle");
  EXPECT_EQ(tip_over(1, row.bottom + 500), "-");
  EXPECT_TRUE(tip_over(1, row.bottom + 2).starts_with("C:\\docs\\C.txt\r\n"));
  choose(ID_MNUSORT);
  EXPECT_EQ(tip_window(), nullptr) << "another row is there now";
}

TEST_F(Form1ListTest, ANameIsEditedWithoutItsExtension) {
  for (const char* name : {".bashrc", "a.tar.gz", "b", "c😀.txt"}) {
    files.add(std::string("C:\\docs\\") + name, "needle");
  }
  open();
  run(SearchKind::new_search, "needle");
  form->show(SW_SHOW);
  const std::pair<int, std::string> cases[] = {
      {0, "7 of .bashrc"}, {1, "5 of a.tar.gz"}, {2, "1 of b"}, {3, "3 of c😀.txt"}};
  for (const auto& [row, expected] : cases) {
    click_row(row);
    form->ListView2.focus();
    press(VK_F2);
    const win32::TextBox box(ListView_GetEditControl(form->ListView2.handle()));
    EXPECT_EQ(box.selection_start(), 0);
    EXPECT_EQ(std::to_string(box.selection_length()) + " of " + box.text(), expected);
    form->cmdSearch.focus();
  }
}

TEST_F(Form1ListTest, TypingAheadWithShiftSelectsOneRow) {
  open_with_list();
  form->show(SW_SHOW);
  form->ListView2.select_only(0);
  form->ListView2.focus();
  hold(VK_SHIFT, true);
  SendMessageW(form->ListView2.handle(), WM_CHAR, 'C', 1);
  EXPECT_EQ(form->ListView2.selected_rows(), std::vector<std::size_t>{2});
  EXPECT_LT(GetKeyState(VK_SHIFT), 0);
  hold(VK_SHIFT, false);
}

TEST_F(Form1ListTest, TypingAheadFindsNamesOfAnyScriptAndLength) {
  const std::string long_name = std::string(250, 'n') + ".txt";
  for (const std::string name : {"Äpfel", "Birnen", long_name.c_str(), "birne", "中😀"})
    files.add("C:\\docs\\" + name, "needle");
  open();
  run(SearchKind::new_search, "needle");
  EXPECT_EQ(names(), "birne Birnen " + long_name + " Äpfel 中😀 ");
  constexpr UINT beginning = LVFI_STRING | LVFI_PARTIAL;
  constexpr UINT substring = 0x0004;  // LVFI_SUBSTRING, as keys come on Windows
  const std::tuple<UINT, const wchar_t*, int, int> cases[] = {
      {beginning | LVFI_WRAP, L"birn", 2, 0},
      {LVFI_STRING | substring, L"birn", 1, 1},
      {beginning, L"birn", 2, -1},
      {LVFI_STRING, L"birnen", 0, 1},
      {beginning, L"äp", 99, -1},
      {LVFI_PARAM, L"birne", 0, -1}};
  for (const auto& [flags, text, start, row] : cases) {
    NMLVFINDITEMW request{};
    request.hdr = {form->ListView2.handle(), IDC_LISTVIEW2, LVN_ODFINDITEMW};
    request.iStart = start;
    request.lvfi.flags = flags;
    request.lvfi.psz = text;
    const auto event = reinterpret_cast<LPARAM>(&request);
    EXPECT_EQ(SendMessageW(form->handle(), WM_NOTIFY, IDC_LISTVIEW2, event), row) << flags << start;
  }
}

}  // namespace
}  // namespace tallowmere
