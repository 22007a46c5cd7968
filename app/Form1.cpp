#include "app/Form1.h"

#include "app/command_controls.h"
#include "app/resource.h"
#include "dialogs/frmFonts.h"
#include "dialogs/frmNarrow.h"
#include "dialogs/frmSearchFor.h"
#include "win32/dpi.h"
#include "win32/registry.h"
#include "win32/user_locale.h"

namespace tallowmere {

namespace {

constexpr wchar_t class_name[] = L"Tallowmere32";

HICON load_icon(int width_metric, int height_metric) {
  const HANDLE icon =
      LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_TALLOWMERE), IMAGE_ICON,
                 GetSystemMetrics(width_metric), GetSystemMetrics(height_metric), LR_SHARED);
  return static_cast<HICON>(icon);
}

/// Registers the class that the template names and returns the template's number. A second
/// registration fails and does no harm.
int form_template() {
  WNDCLASSEXW window_class{};
  window_class.cbSize = sizeof window_class;
  window_class.lpfnWndProc = DefDlgProcW;
  window_class.cbWndExtra = DLGWINDOWEXTRA;
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.hIcon = load_icon(SM_CXICON, SM_CYICON);
  window_class.hIconSm = load_icon(SM_CXSMICON, SM_CYSMICON);
  window_class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  window_class.lpszClassName = class_name;
  RegisterClassExW(&window_class);
  return IDD_FORM1;
}

DateFormat date_format(const Clock& clock) {
  return {clock, win32::short_date};
}

}  // namespace

Form1::Form1(const Services& services)
    : Form(form_template(), nullptr),
      ListView2(item(IDC_LISTVIEW2), results_, date_format(services.clock)),
      Text1(item(IDC_TEXT1), item(IDC_VSCROLL1), services.page),
      services_(services),
      search_(services.search),
      clock_(services.clock),
      dialog_context_{services.search,   services.files,          services.clock,
                      win32::short_date, win32::type_description, services.program_folder,
                      dialog_cancelled_},
      quick_menu_(IDR_QUICK),
      tips_(handle()),
      viewer_(Text1, results_, services.files, services.search, services.page, viewer_window()),
      hyper_caption_(hyper_.caption(false)) {
  find_controls();
  wire_buttons();
  wire_menus();
  wire_list();
  wire_viewer();
  set_tool_tips();
  Form_Load();
}

Form1::~Form1() = default;

void Form1::show(int show_command) {
  ShowWindow(handle(), show_command);
  UpdateWindow(handle());
  move_focus(cmdSearch.handle());
}

void Form1::find_controls() {
  cmdSearch = win32::Button(item(IDC_CMDSEARCH));
  cmdView = win32::Button(item(IDC_CMDVIEW));
  cmdFindNext = win32::Button(item(IDC_CMDFINDNEXT));
  cmdFindPrev = win32::Button(item(IDC_CMDFINDPREV));
  cmdLaunch = win32::Button(item(IDC_CMDLAUNCH));
  cmdHyper = win32::Button(item(IDC_CMDHYPER));
  cmdRestore = win32::Button(item(IDC_CMDRESTORE));
  cmdExit = win32::Button(item(IDC_CMDEXIT));
  Label1 = win32::Label(item(IDC_LABEL1));
  Label2 = win32::Label(item(IDC_LABEL2));
  lblFileInfo = win32::Label(item(IDC_LBLFILEINFO));
  Line1 = win32::Control(item(IDC_LINE1));
  Line2 = win32::Control(item(IDC_LINE2));
}

void Form1::command_clicked(int id, Handler handler) {
  clicked(id, [this, id, handler = std::move(handler)] {
    if (command_enabled(id, state_)) handler();
  });
}

void Form1::wire_buttons() {
  command_clicked(IDC_CMDSEARCH, [this] { cmdSearch_Click(); });
  command_clicked(IDC_CMDVIEW, [this] { cmdView_Click(); });
  command_clicked(IDC_CMDFINDNEXT, [this] { cmdFindNext_Click(); });
  command_clicked(IDC_CMDFINDPREV, [this] { cmdFindPrev_Click(); });
  command_clicked(IDC_CMDHYPER, [this] { cmdHyper_Click(); });
  command_clicked(IDC_CMDRESTORE, [this] { cmdRestore_Click(); });
  command_clicked(IDC_CMDEXIT, [this] { cmdExit_Click(); });
}

void Form1::wire_menus() {
  command_clicked(ID_MNUVIEW, [this] { mnuView_Click(); });
  command_clicked(ID_MNUFINDNEXT, [this] { mnuFindNext_Click(); });
  command_clicked(ID_MNUFINDPREV, [this] { mnuFindPrev_Click(); });
  command_clicked(ID_MNUHYPER, [this] { mnuHyper_Click(); });
  command_clicked(ID_MNUQHYPER, [this] { mnuQHyper_Click(); });
  command_clicked(ID_MNURESTORE, [this] { mnuRestore_Click(); });
  command_clicked(ID_MNUFONTSTYLE, [this] { mnuFontStyle_Click(); });
  command_clicked(ID_MNULARGERFONT, [this] { mnuLargerFont_Click(); });
  command_clicked(ID_MNUSMALLERFONT, [this] { mnuSmallerFont_Click(); });
  command_clicked(ID_MNUSELECTALL, [this] { mnuSelectAll_Click(); });
  command_clicked(ID_MNUEXIT, [this] { mnuExit_Click(); });
  command_clicked(ID_MNUSTART, [this] { mnuStart_Click(); });
  command_clicked(ID_MNUSTOP, [this] { mnuStop_Click(); });
  command_clicked(ID_MNUSOUNDON, [this] { mnuSoundOn_Click(); });
  command_clicked(ID_MNUMINIMIZEON, [this] { mnuMinimizeOn_Click(); });
  command_clicked(ID_MNUFINDONLAUNCH, [this] { mnuFindOnLaunch_Click(); });
  for (int i = 0; i < sort_key_count; ++i) {
    command_clicked(ID_MNUSORT + i, [this, i] { mnuSort_Click(i); });
  }
  command_clicked(ID_MNUSEARCHNEW, [this] { mnuSearchNew_Click(); });
  command_clicked(ID_MNUSEARCHLIST, [this] { mnuSearchList_Click(); });
  command_clicked(ID_MNUSEARCHFILE, [this] { mnuSearchFile_Click(); });
}

void Form1::wire_list() {
  notify(IDC_LISTVIEW2, LVN_GETDISPINFOW, [this](NMHDR& header) -> LRESULT {
    ListView2.LVN_GetDispInfo(reinterpret_cast<NMLVDISPINFOW&>(header));
    return 0;
  });
  notify(IDC_LISTVIEW2, LVN_ODFINDITEMW, [this](NMHDR& header) -> LRESULT {
    return ListView2.LVN_ODFindItem(reinterpret_cast<NMLVFINDITEMW&>(header));
  });
  notify(IDC_LISTVIEW2, LVN_COLUMNCLICK, [this](NMHDR& header) -> LRESULT {
    ListView2_ColumnClick(reinterpret_cast<NMLISTVIEW&>(header).iSubItem);
    return 0;
  });
  notify(IDC_LISTVIEW2, NM_DBLCLK, [this](NMHDR&) -> LRESULT {
    ListView2_DblClick();
    return 0;
  });
  notify(IDC_LISTVIEW2, NM_SETFOCUS, [this](NMHDR&) -> LRESULT {
    ListView2_GotFocus();
    return 0;
  });
  notify(IDC_LISTVIEW2, NM_KILLFOCUS, [this](NMHDR&) -> LRESULT {
    focus_marker_.list_lost_focus();
    return 0;
  });
  notify(IDC_LISTVIEW2, LVN_ITEMCHANGED, [this](NMHDR& header) -> LRESULT {
    ListView2_ItemClick(reinterpret_cast<NMLISTVIEW&>(header));
    return 0;
  });
  notify(IDC_LISTVIEW2, LVN_ODSTATECHANGED, [this](NMHDR&) -> LRESULT {
    refresh_commands();
    return 0;
  });
}

void Form1::set_tool_tips() {
  tips_.set(cmdSearch.handle(), "Input Search Criteria");
  tips_.set(cmdView.handle(), "Display File Contents");
  tips_.set(cmdFindNext.handle(), "Show Next Word/Phrase");
  tips_.set(cmdFindPrev.handle(), "Show Previous Word/Phrase");
  tips_.set(cmdLaunch.handle(), "Edit File");
  tips_.set(cmdHyper.handle(), "Find Selected Text");
  tips_.set(cmdRestore.handle(), "Find Original Criteria");
  tips_.set(cmdExit.handle(), "Exit Tallowmere");
}

bool Form1::on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  result = 0;
  switch (message) {
    case WM_COMMAND:
      // Behind a dialog or a message box nothing runs, whoever sends the command.
      return !IsWindowEnabled(handle());
    case WM_SIZE:
      if (wparam != SIZE_MINIMIZED) Form_Resize();
      return true;
    case WM_GETMINMAXINFO:
      limit_size(*reinterpret_cast<MINMAXINFO*>(lparam));
      return true;
    case WM_DPICHANGED:
      PostMessageW(handle(), message_relayout, 0, 0);
      return false;
    case message_relayout:
      dpi_changed();
      return true;
    case message_view:
      view_selected_row();
      return true;
    case WM_ACTIVATE:
      Form_Activate(LOWORD(wparam) != WA_INACTIVE);
      return false;
    case WM_VSCROLL:
      if (reinterpret_cast<HWND>(lparam) == Text1.VScroll1.handle()) {
        VScroll1_Change(LOWORD(wparam));
      }
      return true;
    case WM_MOUSEWHEEL:
      // Over the scroll bar or a button that has the focus: the text box passes nothing on.
      SendMessageW(Text1.handle(), message, wparam, lparam);
      return true;
    case WM_CTLCOLORSTATIC:
      // A text box that cannot be written to is grey otherwise.
      if (reinterpret_cast<HWND>(lparam) != Text1.handle() || !Text1.enabled()) return false;
      SetBkColor(reinterpret_cast<HDC>(wparam), GetSysColor(COLOR_WINDOW));
      SetTextColor(reinterpret_cast<HDC>(wparam), GetSysColor(COLOR_WINDOWTEXT));
      result = reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
      return true;
    case WM_SETCURSOR:
      result = TRUE;
      return set_pointer(lparam);
    case WM_CONTEXTMENU:
      show_context_menu(reinterpret_cast<HWND>(wparam), lparam);
      return true;
    case WM_CLOSE:
      close();
      return true;
    case WM_ENDSESSION:
      if (wparam != FALSE) save();
      return true;
  }
  return false;
}

bool Form1::pre_translate(MSG& message) {
  return message.message == WM_KEYDOWN && Form_KeyDown(message.wParam);
}

// The keys that the window sees before its controls.
bool Form1::Form_KeyDown(WPARAM key) {
  const bool shift = GetKeyState(VK_SHIFT) < 0;
  const bool plain = !shift && GetKeyState(VK_CONTROL) >= 0 && GetKeyState(VK_MENU) >= 0;
  switch (key) {
    case VK_ESCAPE:
      if (state_.searching || viewer_.finding()) {
        mnuStop_Click();
      } else {
        move_focus(ListView2.handle());
      }
      return true;
    case VK_BACK:
      move_focus(ListView2.handle());
      return true;
    case VK_F3:
      return find_by_key(!shift);
    case VK_RETURN:
      if (!plain) return false;
      if (!ListView2.has_focus()) return Text1.has_focus() && find_by_key(true);
      ListView2_DblClick();
      return true;
    case VK_SPACE:
      // A button that has the focus is pressed instead.
      return plain && (Text1.has_focus() || ListView2.has_focus()) && find_by_key(true);
  }
  return false;
}

/// The keys of Find Next and Find Prev; false when no file is viewed.
bool Form1::find_by_key(bool forward) {
  if (!command_enabled(IDC_CMDFINDNEXT, state_)) return false;
  if (forward) {
    cmdFindNext_Click();
  } else {
    cmdFindPrev_Click();
  }
  return true;
}

void Form1::Form_Activate(bool active) {
  if (active && !state_.busy()) SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

/// Shows the pointer of a busy program inside the window while it searches.
bool Form1::set_pointer(LPARAM lparam) const {
  if (!state_.busy() || LOWORD(lparam) != HTCLIENT) return false;
  SetCursor(LoadCursorW(nullptr, IDC_APPSTARTING));
  return true;
}

}  // namespace tallowmere
