#include "dialogs/frmPath.h"

#include <commctrl.h>

#include <utility>

#include "dialogs/focus_check_box.h"
#include "dialogs/resource.h"
#include "engine/file_type_rule.h"
#include "shell/folder_text.h"
#include "win32/clipboard.h"
#include "win32/dropped_files.h"
#include "win32/guarded.h"
#include "win32/message_box.h"
#include "win32/typed_path.h"

namespace tallowmere {
namespace {

/// A box was left with an invalid type or a folder that is not there: asks to say so as soon as the
/// focus has settled, because a message box amid a change of focus would confuse it.
constexpr UINT refuse_message = WM_APP + 1;
/// A folder was chosen in the field's list: asks to open it when the field has its text.
constexpr UINT open_message = WM_APP + 2;

/// A caption that shows `text` as it is, without access keys.
std::string literal_caption(const std::string& text) {
  std::string caption;
  for (const char character : text) {
    if (character == '&') caption += '&';
    caption += character;
  }
  return caption;
}

/// What screen readers call a check box: its caption does not say what it is, and may be empty.
std::string tick_name(int index, const std::string& description) {
  const std::string name = "search type " + std::to_string(index + 1);
  return description.empty() ? name : name + ", " + description;
}

win32::Check check_of(Tick tick) {
  switch (tick) {
    case Tick::ticked:
      return win32::Check::on;
    case Tick::greyed:
      return win32::Check::grayed;
    case Tick::unticked:
      break;
  }
  return win32::Check::off;
}

/// Pastes a file type; returns false when the clipboard's text is to arrive as it is.
bool paste_type(HWND box) {
  const auto type = pasted_file_type(win32::clipboard_text(box).value_or(""));
  if (type) win32::TextBox(box).replace_selection(*type);
  return type.has_value();
}

}  // namespace

frmPath::frmPath(HWND owner, const DialogContext& context, Handler display_panel_date)
    : FolderChooser(IDD_PATH, owner, context.files, IDC_PATH_DRIVE1, IDC_PATH_DIR1),
      context_(context),
      display_panel_date_(std::move(display_panel_date)) {
  find_controls();
  txtLeaveOut.set_limit(leave_out_limit);
  set_tips();
  wire();
}

void frmPath::find_controls() {
  cboFolder.attach(item(IDC_PATH_FOLDER));
  chkSearchSub = win32::CheckBox(item(IDC_PATH_SUBFOLDERS));
  chkHidden = win32::CheckBox(item(IDC_PATH_HIDDEN));
  chkOnline = win32::CheckBox(item(IDC_PATH_ONLINE));
  Label1 = win32::Label(item(IDC_PATH_LABEL1));
  chkFileType = win32::CheckBox(item(IDC_PATH_ALL_FILES));
  const auto self = reinterpret_cast<DWORD_PTR>(this);
  for (int i = 0; i < user_type_boxes; ++i) {
    txtUserFileType[i] = win32::TextBox(item(IDC_PATH_USER_TYPE + i));
    chkUserFileType[i] = win32::CheckBox(item(IDC_PATH_USER_CHECK + i));
    SetWindowSubclass(txtUserFileType[i].handle(), &frmPath::type_box_proc, 0, self);
  }
  txtLeaveOut = win32::TextBox(item(IDC_PATH_LEAVE_OUT));
  Command1 = win32::Button(item(IDOK));
  Command2 = win32::Button(item(IDCANCEL));
  SetWindowSubclass(Command2.handle(), &frmPath::cancel_proc, 0, self);
}

frmPath::~frmPath() {
  for (const win32::TextBox& box : txtUserFileType) {
    RemoveWindowSubclass(box.handle(), &frmPath::type_box_proc, 0);
  }
  RemoveWindowSubclass(Command2.handle(), &frmPath::cancel_proc, 0);
}

void frmPath::wire() {
  command(IDC_PATH_FOLDER, CBN_SETFOCUS, [this] { cboFolder.box().select_all(); });
  command(IDC_PATH_FOLDER, CBN_KILLFOCUS, [this] { cboFolder_LostFocus(); });
  command(IDC_PATH_FOLDER, CBN_SELENDOK, [this] {
    if (cboFolder.open()) PostMessageW(handle(), open_message, 0, 0);
  });
  clicked(IDC_PATH_ALL_FILES, [this] { chkFileType_Click(); });
  for (const int id : {IDC_PATH_SUBFOLDERS, IDC_PATH_HIDDEN, IDC_PATH_ONLINE, IDC_PATH_ALL_FILES}) {
    wire_check_box(id);
  }
  for (int i = 0; i < user_type_boxes; ++i) {
    command(IDC_PATH_USER_TYPE + i, EN_CHANGE, [this, i] { txtUserFileType_Change(i); });
    command(IDC_PATH_USER_TYPE + i, EN_KILLFOCUS, [this, i] { txtUserFileType_LostFocus(i); });
    clicked(IDC_PATH_USER_CHECK + i, [this, i] { chkUserFileType_Click(i); });
    wire_check_box(IDC_PATH_USER_CHECK + i);
  }
  clicked(IDOK, [this] { Command1_Click(); });
  clicked(IDCANCEL, [this] { Command2_Click(); });
}

void frmPath::wire_check_box(int id) {
  const auto repaint = [this, id] { InvalidateRect(item(id), nullptr, TRUE); };
  command(id, BN_SETFOCUS, repaint);
  command(id, BN_KILLFOCUS, repaint);
  notify(id, static_cast<UINT>(NM_CUSTOMDRAW), [](NMHDR& header) {
    return draw_check_box(reinterpret_cast<const NMCUSTOMDRAW&>(header));
  });
}

void frmPath::set_tips() {
  tips_.set(chkHidden.handle(), "Searches hidden and system files and folders, too.");
  tips_.set(
      chkOnline.handle(),
      "Fetches files that are only in the cloud and searches them. When this is not ticked, they "
      "count as not read.");
  tips_.set(txtLeaveOut.handle(),
            "Leaves out files and folders with these names, separated by \";\", such as .git; "
            "node_modules; *.bak. * stands for any characters, ? for one.");
}

void frmPath::show(HWND owner, HWND main_window) {
  Form_Load();
  show_modal(owner, main_window);
}

bool frmPath::on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  switch (message) {
    case WM_CTLCOLORSTATIC: {
      const HWND control = reinterpret_cast<HWND>(lparam);
      if (control != GetFocus()) return false;
      const auto canvas = reinterpret_cast<HDC>(wparam);
      SetTextColor(canvas, focus_text_color());
      SetBkColor(canvas, GetSysColor(COLOR_BTNFACE));
      result = reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
      return true;
    }
    case refuse_message:
      // Not when the user is in another program: the box has the focus again on return.
      if (GetActiveWindow() != handle()) return true;
      if (to_refuse_) refuse(*to_refuse_);
      if (!folder_refusal_.empty()) tell_refusal();
      return true;
    case WM_DROPFILES:
      open_dropped(win32::take_first_dropped(wparam));
      return true;
    case open_message:
      open_typed();
      return true;
    default:
      return FolderChooser::on_message(message, wparam, lparam, result);
  }
}

// Filling the dialog.

void frmPath::Form_Load() {
  const SearchCriteria& search = context_.search;
  load_drives(search.path);
  const std::string path = search.path;
  cboFolder.clear();
  for (const std::string& folder : context_.recent_folders.folders()) cboFolder.add(folder);
  show_folder(path);  // also while it is awaited
  const std::string program_drive = context_.program_folder.substr(0, 3);
  open_first([path, program_drive](const FileSystem& files, const auto& go_on) {
    return look_up_saved(files, path, program_drive, go_on);
  });
  chkSearchSub.set_checked(search.search_subfolders);
  chkHidden.set_checked(search.hidden_files);
  chkOnline.set_checked(search.online_files);
  txtLeaveOut.set_text(search.leave_out);
  choice_.load(search);
  show_file_types();
}

void frmPath::show_file_types() {
  showing_ = true;
  chkFileType.set_checked(choice_.all_files());
  for (int i = 0; i < user_type_boxes; ++i) {
    txtUserFileType[i].set_text(choice_.user_type(i).text);
    show_user_type(i);
  }
  showing_ = false;
}

void frmPath::show_user_type(int index) {
  const FileTypeChoice::UserType& type = choice_.user_type(index);
  const win32::CheckBox& box = chkUserFileType[index];
  box.set_text(literal_caption(type.description));
  names_.set(box.handle(), tick_name(index, type.description));
  box.enable(type.enabled);
  box.set_state(check_of(type.tick));
}

void frmPath::Form_Activate() {
  context_.cancelled = false;
  to_refuse_.reset();
  folder_refusal_.clear();
  Dir1.focus();
}

// The folder.

void frmPath::show_folder(const std::string& path) {
  folder_ = path;
  cboFolder.show(path);
}

void frmPath::cboFolder_LostFocus() {
  cboFolder.box().select(0, 0);  // the selection would go on showing
  if (!context_.cancelled && cboFolder.changed()) open_typed();
}

void frmPath::open_typed() {
  const std::string text = cboFolder.text();
  if (waiting() && text == looked_for_) return;
  looked_for_ = text;
  const std::string path = path_from_text(text, {win32::expand_variables, win32::full_path});
  if (path.empty()) return show_folder(folder_);
  if (!is_whole_path(path)) return refuse_folder(no_whole_path_message(path));
  open_path(path);
}

void frmPath::open_dropped(const std::string& path) {
  if (path.empty() || !IsWindowEnabled(handle())) return;
  cboFolder.set_text(path);
  looked_for_ = path;
  open_path(path);
}

void frmPath::open_path(const std::string& path) {
  open([path](const FileSystem& files,
              const auto& go_on) { return look_up_typed(files, path, go_on); },
       [this, path](const SystemError& error) {
         refuse_folder(folder_refused_message(path, error));
       });
}

void frmPath::refuse_folder(const std::string& message) {
  folder_refusal_ = message;
  PostMessageW(handle(), refuse_message, 0, 0);
}

void frmPath::tell_refusal() {
  win32::message_box(handle(), std::exchange(folder_refusal_, {}), folder_refused_title,
                     win32::BoxIcon::exclamation);
  cboFolder.box().focus();
}

// File types.

void frmPath::chkFileType_Click() {
  choice_.chkFileType_Click(chkFileType.checked());
  show_file_types();
}

void frmPath::chkUserFileType_Click(int index) {
  choice_.set_ticked(index, choice_.user_type(index).tick == Tick::unticked);
  show_user_type(index);
}

void frmPath::txtUserFileType_Change(int index) {
  if (showing_) return;
  choice_.txtUserFileType_Change(index, txtUserFileType[index].text());
  show_user_type(index);
}

LRESULT CALLBACK frmPath::type_box_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                        UINT_PTR, DWORD_PTR form) {
  if (message == WM_CHAR) {
    if (wparam == VK_RETURN) {
      auto* self = reinterpret_cast<frmPath*>(form);
      self->txtUserFileType_Enter(self->type_box_at(window));
      return 0;
    }
    if (is_swallowed_type_key(static_cast<char32_t>(wparam))) return 0;
  }
  if (message == WM_PASTE && win32::guarded(false, [=] { return paste_type(window); })) return 0;
  return DefSubclassProc(window, message, wparam, lparam);
}

int frmPath::type_box_at(HWND window) const {
  return GetDlgCtrlID(window) - IDC_PATH_USER_TYPE;
}

bool frmPath::pre_translate(MSG& message) {
  if (message.message != WM_KEYDOWN || message.wParam != VK_RETURN) return false;
  const int index = type_box_at(message.hwnd);
  if (index < 0 || index >= user_type_boxes || GetParent(message.hwnd) != handle()) return false;
  // The default button is not to see this Enter.
  txtUserFileType_Enter(index);
  return true;
}

void frmPath::txtUserFileType_Enter(int index) {
  if (!validate(index)) {
    refuse(index);
    return;
  }
  if (txtUserFileType[index].selection_length() == 0) Command1_Click();
}

void frmPath::txtUserFileType_LostFocus(int index) {
  if (context_.cancelled || validate(index)) return;
  to_refuse_ = index;
  PostMessageW(handle(), refuse_message, 0, 0);
}

bool frmPath::validate(int index) {
  const win32::TextBox& box = txtUserFileType[index];
  const std::string text = box.text();
  if (!is_valid_file_type(text)) return false;
  const std::string type = settled_file_type(text);
  box.set_text(type);
  choice_.set_description(index, type.empty() ? std::string() : context_.type_description(type));
  show_user_type(index);
  const int end = box.selection_start() + box.selection_length();
  box.select(end, end);
  return true;
}

void frmPath::refuse(int index) {
  to_refuse_.reset();
  win32::message_box(handle(), invalid_file_type_message(), invalid_file_type_title,
                     win32::BoxIcon::none);
  txtUserFileType[index].focus();
  txtUserFileType[index].select_all();
}

// Leaving.

LRESULT CALLBACK frmPath::cancel_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                      UINT_PTR, DWORD_PTR form) {
  bool& cancelled = reinterpret_cast<frmPath*>(form)->context_.cancelled;
  // Before the button takes the focus from a text box, which then is not validated. Without a
  // click in the end (the mouse moved away) the dialog goes on.
  if (message == WM_LBUTTONDOWN) cancelled = true;
  if (message == WM_CAPTURECHANGED) cancelled = false;
  return DefSubclassProc(window, message, wparam, lparam);
}

void frmPath::Command1_Click() {
  for (int i = 0; i < user_type_boxes; ++i) {
    if (validate(i)) continue;
    refuse(i);
    return;
  }
  if (cboFolder.changed()) {
    // Enter in the field first shows the folder; pressed again, it is OK.
    open_typed();
    if (cboFolder.box().has_focus()) return;
  }
  if (asked()) return when_found([this] { accept(); });
  if (!cboFolder.changed()) accept();
}

void frmPath::accept() {
  context_.cancelled = false;
  hide_from(Command1.handle());
  SearchCriteria& search = context_.search;
  search.drive = drive();
  search.path = folder_;
  give_up();
  choice_.accept(search);
  search.search_subfolders = chkSearchSub.checked();
  search.hidden_files = chkHidden.checked();
  search.online_files = chkOnline.checked();
  search.leave_out = txtLeaveOut.text();
  display_panel_date_();
}

void frmPath::Command2_Click() {
  // A text box that loses the focus now is not to be validated. What it shows is loaded with the
  // rest when the dialog is shown again.
  context_.cancelled = true;
  hide_from(Command1.handle());
  give_up();
}

}  // namespace tallowmere
