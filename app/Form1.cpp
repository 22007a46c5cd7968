#include "app/Form1.h"

#include <functional>
#include <optional>
#include <utility>

#include "app/button_tips.h"
#include "app/main_class.h"
#include "app/resource.h"
#include "app/window_placement.h"
#include "dialogs/frmAbout.h"
#include "dialogs/frmFonts.h"
#include "dialogs/frmHints.h"
#include "dialogs/frmNarrow.h"
#include "dialogs/frmQTips.h"
#include "dialogs/frmSearchFor.h"
#include "win32/registry.h"
#include "win32/user_locale.h"

namespace tallowmere {

Form1::Form1(const Services& services)
    : Form(main_window_template(), nullptr),
      ListView2(item(IDC_LISTVIEW2), results_, {services.clock, win32::short_date}),
      Text1(item(IDC_TEXT1), item(IDC_VSCROLL1), services.page),
      services_(services),
      search_(services.search),
      clock_(services.clock),
      dialog_context_{services.search,   services.files,          services.clock,
                      win32::short_date, win32::type_description, services.program_folder,
                      dialog_cancelled_, shell_.recent_folders},
      quick_menu_(IDR_QUICK),
      tips_(handle()),
      sounds_(services.program_folder),
      viewer_(Text1, results_, services.files, services.search, services.page, viewer_window()),
      run_(run_window(), run_services()),
      keys_(key_window()),
      hyper_caption_(hyper_.caption(false)),
      launcher_(*this, services.page),
      clipboard_(*this),
      file_commands_(handle(), results_, dialog_context_, *this),
      folder_drop_(*this, services.files, search_, note_,
                   {[this] { return can_use(ID_MNUSTART); }, [this] { show_note(); }}) {
  wire_commands();
  wire_list();
  wire_viewer();
  wire_note();
  set_button_tips(tips_, handle());
  Form_Load();
}

Form1::~Form1() = default;

void Form1::show(int show_command) {
  ShowWindow(handle(), show_command);
  UpdateWindow(handle());
  move_focus(cmdSearch.handle());
}

void Form1::wire_commands() {
  for (const Command& command : commands()) {
    clicked(command.id, [this, &command] { run_command(command); });
  }
}

/// Posts what a link does: the run that it begins must not go on inside the control's handler.
void Form1::wire_note() {
  for (const UINT code : {NM_CLICK, NM_RETURN}) {
    notify(IDC_LBLNOTE, code, [this](NMHDR& header) -> LRESULT {
      const std::optional<NoteLink> link = lblNote.link_of(header);
      if (link) PostMessageW(handle(), WM_COMMAND, ID_NOTELINK + static_cast<WPARAM>(*link), 0);
      return 0;
    });
  }
}

void Form1::wire_list() {
  const auto on = [this](UINT code, std::function<void(NMHDR&)> handler) {
    notify(IDC_LISTVIEW2, code, [handler = std::move(handler)](NMHDR& header) -> LRESULT {
      handler(header);
      return 0;
    });
  };
  on(LVN_GETDISPINFOW, [this](NMHDR& header) {
    ListView2.LVN_GetDispInfo(reinterpret_cast<NMLVDISPINFOW&>(header));
  });
  on(LVN_COLUMNCLICK, [this](NMHDR& header) {
    ListView2_ColumnClick(reinterpret_cast<NMLISTVIEW&>(header).iSubItem);
  });
  on(LVN_ITEMCHANGED,
     [this](NMHDR& header) { ListView2_ItemClick(reinterpret_cast<NMLISTVIEW&>(header)); });
  on(LVN_ODSTATECHANGED, [this](NMHDR&) { refresh_commands(); });
  on(NM_DBLCLK, [this](NMHDR&) { ListView2_DblClick(); });
  on(NM_SETFOCUS, [this](NMHDR&) { ListView2_GotFocus(); });
  on(NM_KILLFOCUS, [this](NMHDR&) { focus_marker_.list_lost_focus(); });
  notify(IDC_LISTVIEW2, LVN_ODFINDITEMW, [this](NMHDR& header) -> LRESULT {
    return ListView2.LVN_ODFindItem(reinterpret_cast<NMLVFINDITEMW&>(header));
  });
  notify(IDC_LISTVIEW2, LVN_BEGINLABELEDITW, [this](NMHDR& header) -> LRESULT {
    return !ListView2_BeforeLabelEdit(reinterpret_cast<NMLVDISPINFOW&>(header).item.iItem);
  });
  notify(IDC_LISTVIEW2, LVN_ENDLABELEDITW, [this](NMHDR& header) -> LRESULT {
    // What has waited for the end of the edit has its turn when the view is done with it.
    PostMessageW(handle(), message_pending, 0, 0);
    return ListView2_AfterLabelEdit(reinterpret_cast<NMLVDISPINFOW&>(header).item.pszText);
  });
}

MainKeys::Window Form1::key_window() {
  return {*this,
          ListView2,
          Text1,
          lblNote,
          {&cmdSearch, &cmdView, &cmdFindNext, &cmdFindPrev, &cmdLaunch, &cmdHyper, &cmdRestore,
           &cmdExit},
          [this] { return busy(); },
          [this] { return focus_target() == ListView2.handle(); },
          [this](int id) { return run_command(id); },
          [this] { ListView2_DblClick(); }};
}

bool Form1::on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  result = 0;
  switch (message) {
    case WM_SIZE:
      if (wparam != SIZE_MINIMIZED) Form_Resize();
      return true;
    case WM_GETMINMAXINFO:
      limit_size(handle(), *reinterpret_cast<MINMAXINFO*>(lparam));
      return true;
    case message_pending:
      serve_pending();
      if (handle() != nullptr) keep_focus();
      return true;
    case WM_INITMENUPOPUP:
      mnuEdit_Click();
      return false;
    case WM_ENABLE:
      if (wparam != FALSE) PostMessageW(handle(), message_pending, 0, 0);
      return false;
    case WM_ACTIVATE:
      Form_Activate(LOWORD(wparam) != WA_INACTIVE);
      return false;
    case WM_VSCROLL:
      if (reinterpret_cast<HWND>(lparam) == Text1.VScroll1.handle()) {
        viewer_.VScroll1_Change(LOWORD(wparam));
      }
      return true;
    case WM_MOUSEWHEEL:
      // Over the scroll bar or a button that has the focus: the text box passes nothing on.
      SendMessageW(Text1.handle(), message, wparam, lparam);
      return true;
    case WM_CTLCOLORSTATIC:
      return Text1.choose_colors(reinterpret_cast<HWND>(lparam), wparam, result);
    case WM_SETCURSOR:
      result = TRUE;
      return set_pointer(lparam);
    case WM_CONTEXTMENU:
      show_context_menu(reinterpret_cast<HWND>(wparam), lparam);
      return true;
    case WM_DROPFILES:
      folder_drop_.dropped(wparam);
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
  return message.message == WM_KEYDOWN && IsWindowEnabled(handle()) &&
         keys_.key_down(message.wParam);
}

void Form1::Form_Activate(bool active) {
  if (!active) return;
  if (!busy()) SetCursor(LoadCursorW(nullptr, IDC_ARROW));
  PostMessageW(handle(), message_pending, 0, 0);  // when the system has put the focus back
}

/// Shows the pointer of a busy program inside the window while it searches.
bool Form1::set_pointer(LPARAM lparam) const {
  if (!busy() || LOWORD(lparam) != HTCLIENT) return false;
  SetCursor(LoadCursorW(nullptr, IDC_APPSTARTING));
  return true;
}

}  // namespace tallowmere
