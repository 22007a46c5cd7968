#pragma once

#include <windows.h>

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "actions/action_host.h"
#include "actions/clipboard_commands.h"
#include "actions/file_commands.h"
#include "actions/launcher.h"
#include "actions/more_commands.h"
#include "app/folder_drop.h"
#include "app/list_edge.h"
#include "app/main_keys.h"
#include "app/note_label.h"
#include "app/resource.h"
#include "app/result_view.h"
#include "app/row_tips.h"
#include "app/search_run.h"
#include "app/viewer_box.h"
#include "app/viewer_font.h"
#include "app/viewer_pane.h"
#include "app/window_sounds.h"
#include "dialogs/dialog_context.h"
#include "engine/code_page.h"
#include "engine/date_time.h"
#include "engine/file_system.h"
#include "engine/search_criteria.h"
#include "results/result_list.h"
#include "results/sort_command.h"
#include "shell/command_rules.h"
#include "shell/focus_marker.h"
#include "shell/layout.h"
#include "shell/search_kind.h"
#include "shell/settings.h"
#include "shell/window_note.h"
#include "win32/controls.h"
#include "win32/form.h"
#include "win32/menu.h"
#include "win32/tooltip.h"
#include "win32/win_shell.h"

namespace tallowmere {

class frmAbout;
class frmFonts;
class frmHints;
class frmNarrow;
class frmQTips;
class frmSearchFor;

/// The main window. Its constructor loads the settings and leaves the window hidden; the program
/// ends when the window unloads.
class Form1 : public win32::Form, private ActionHost, private FileCommandHost {
  ResultList results_;  // before ListView2, which shows it

 public:
  /// What the program's entry point owns and the window works with; all of it outlives the window.
  struct Services {
    SearchCriteria& search;
    SettingsStore& settings;
    const FileSystem& files;
    const Clock& clock;
    const CodePage& page;
    std::string program_folder;  ///< with its final separator
  };

  explicit Form1(const Services& services);
  ~Form1() override;

  /// `show_command` is one of SW_*.
  void show(int show_command);

  /// Makes this the folder to search, as the program's argument says.
  void set_start_folder(const std::string& folder);

  /// One search without the dialogs: the values they would hand over are given. Serves events
  /// until the run has ended. A file search tests the selected row and needs one.
  void run_search(SearchKind kind, const CriteriaInput& input);

  bool searching() const { return run_.running(); }
  bool finding() const { return viewer_.finding(); }
  const ResultList& results() const { return results_; }
  SortKey sort_type() const { return sort_menu_.sort_type(); }
  std::string tool_tip(const win32::Control& control) const { return tips_.text(control.handle()); }

  bool pre_translate(MSG& message) override;

  void cmdSearch_Click();
  void cmdView_Click();
  void cmdFindNext_Click();
  void cmdFindPrev_Click();
  void cmdLaunch_Click();
  void cmdHyper_Click();
  void cmdRestore_Click();
  void cmdExit_Click();
  void mnuMove_Click();
  void mnuCopy_Click();
  void mnuRename_Click();
  void mnuDelete_Click();
  void mnuRemove_Click();
  void mnuCopyToClipboard_Click();
  void mnuAppendToClipboard_Click();
  void mnuCopyFilename_Click();
  void mnuStop_Click();
  void mnuSearchNew_Click();
  void mnuSearchList_Click();
  void mnuSearchFile_Click();
  void mnuSelectAll_Click();
  void mnuSaveList_Click() { more_commands_.mnuSaveList_Click(); }
  void mnuExit_Click();
  void mnuSort_Click(int index);
  void mnuFontStyle_Click();
  void mnuLargerFont_Click() { viewer_font_.make_larger(); }
  void mnuSmallerFont_Click() { viewer_font_.make_smaller(); }
  void mnuQTips_Click();
  void mnuHints_Click();
  void show_about_form();
  void mnuUnicode_Click();
  void lblNote_Click(NoteLink link);

  ResultView ListView2;
  win32::Button cmdSearch{item(IDC_CMDSEARCH)};
  win32::Button cmdView{item(IDC_CMDVIEW)};
  win32::Button cmdFindNext{item(IDC_CMDFINDNEXT)};
  win32::Button cmdFindPrev{item(IDC_CMDFINDPREV)};
  win32::Button cmdLaunch{item(IDC_CMDLAUNCH)};
  win32::Button cmdHyper{item(IDC_CMDHYPER)};
  win32::Button cmdRestore{item(IDC_CMDRESTORE)};
  win32::Button cmdExit{item(IDC_CMDEXIT)};
  ViewerBox Text1;  ///< with its `VScroll1`
  win32::Label Label1{item(IDC_LABEL1)};
  win32::Label Label2{item(IDC_LABEL2)};
  win32::Label lblFileInfo{item(IDC_LBLFILEINFO)};
  NoteLabel lblNote{item(IDC_LBLNOTE), lblFileInfo, tips_};
  win32::Control Line1{item(IDC_LINE1)};
  win32::Control Line2{item(IDC_LINE2)};

 protected:
  bool on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void on_dpi_changed(int before, int now) override;

 private:
  static constexpr UINT message_pending = WM_APP;  ///< something of Pending may have its turn

  /// What events have asked for that has to wait until the window is enabled and idle.
  struct Pending {
    bool close = false;  ///< the window was closed
    bool sort = false;   ///< files have got other names or folders
    bool view = false;   ///< the user has selected a row
    bool any() const { return close || sort || view; }
  };

  // Start and end: Form1_settings.cpp.
  void Form_Load();
  void apply_settings();
  void save();
  void Form_Unload();
  void close();

  // Wiring and messages: Form1.cpp.
  void wire_commands();
  void wire_list();
  void wire_note();
  MainKeys::Window key_window();
  void Form_Activate(bool active);
  bool set_pointer(LPARAM lparam) const;

  // What can be done now: Form1_state.cpp.
  /// A button or a menu entry.
  struct Command {
    int id;
    EnabledRule rule;
    void (Form1::*run)();
  };
  /// Every command of the window, in the order of the buttons, then of the menus.
  static std::span<const Command> commands();
  /// Runs a command if it can be used: other programs can send any.
  void run_command(const Command& command);
  bool run_command(int id);
  void enable(const Command& command, bool on);
  WindowState window_state() const;
  bool busy() const { return searching() || viewer_.finding(); }
  bool can_use(int command) const;
  void refresh_commands();
  OnView on_view() const { return {viewer_.encoding(), viewer_.hit_text()}; }
  void show_note();
  /// Notes something in `pending_` and serves it as soon as it can be.
  void request(bool Pending::*what);
  void serve_pending();
  HWND focus_target() const;
  /// Moves the focus on from a control that is about to be disabled or hidden.
  void leave(HWND control);
  void keep_focus();

  // Commands: Form1_commands.cpp.
  template <bool ShellState::*switched>
  void toggle() {
    shell_.*switched = !(shell_.*switched);
    show_toggles();
  }
  template <int index>
  void mnuSort_Click() {
    mnuSort_Click(index);
  }
  template <NoteLink link>
  void lblNote_Click() {
    lblNote_Click(link);
  }
  void show_toggles();
  void show_sort_order();
  void sort_rows(SortAction action);
  void show_context_menu(HWND over, LPARAM position);
  void pop_up_file_menu(POINT at);

  // The viewer: Form1_viewer.cpp.
  ViewerPane::Window viewer_window();
  void wire_viewer();
  void show_file(const FileRecord* record);
  void row_corrected();
  void ListView2_ItemClick(const NMLISTVIEW& change);
  void view_selected_row();
  void set_list2_index();
  void select_row(int row);
  void show_hyper_captions();
  void do_hyper_search(const CriteriaInput& input);

  // What acts on files and on the clipboard: Form1_actions.cpp.
  HWND window() const override { return handle(); }
  void message(std::string_view prompt, std::string_view title) override;
  void status(std::string_view text) override;
  bool serve_events() override;
  void rows_removed(std::ptrdiff_t row) override;
  void rows_refreshed() override;
  void viewed_file_changed(ViewedFile what) override;
  void records_changed() override;
  std::vector<std::size_t> command_rows();
  std::string command_path();
  template <void (MoreCommands::*run)(const std::string&)>
  void of_file() {
    if (const std::string path = command_path(); !path.empty()) (more_commands_.*run)(path);
  }
  bool ListView2_BeforeLabelEdit(int row);
  bool ListView2_AfterLabelEdit(const wchar_t* text);
  void mnuEdit_Click();

  // List events: Form1_commands.cpp.
  void ListView2_ColumnClick(int column);
  void ListView2_DblClick();
  void ListView2_GotFocus();
  void ListView2_MouseUp(LPARAM position);

  // Layout: Form1_layout.cpp.
  void Form_Resize();
  void lay_out();

  // The search run: Form1_search.cpp.
  bool choose_kind(SearchKind& kind);
  void start_run(SearchKind kind);
  SearchRun::Window run_window();
  SearchRun::Services run_services();

  Services services_;
  SearchCriteria& search_;
  const Clock& clock_;
  bool dialog_cancelled_ = false;  ///< the flag that the dialogs share
  DialogContext dialog_context_;

  win32::PopupMenu quick_menu_;
  win32::ToolTip tips_;
  ShellState shell_;  ///< what the menus show and the settings keep
  LayoutMemory layout_memory_;
  ListEdge list_edge_{handle(), ListView2, Label1, shell_.list_share, [this] { lay_out(); }};
  RowTips row_tips_{{ListView2, results_, search_, clock_, services_.files, services_.page}};
  WindowSounds sounds_;
  WindowNote note_;

  SortMenu sort_menu_;
  ViewerPane viewer_;
  ViewerFont viewer_font_{Text1, viewer_, shell_};
  SearchRun run_;
  MainKeys keys_;
  HyperFind hyper_;
  std::string_view hyper_caption_;  ///< what the button and the menus say now
  FocusMarker focus_marker_;
  Launcher launcher_;
  ClipboardCommands clipboard_;
  FileCommands file_commands_;
  FolderDrop folder_drop_;
  win32::WinShell desktop_{handle()};
  MoreCommands more_commands_{*this, file_commands_, desktop_, results_, clock_};
  std::string edited_path_;  ///< the file whose name is being typed into its row
  Pending pending_;
  bool exit_copies_ = false;  ///< the File menu's last entry reads "C&opy Name" and copies names
  bool selecting_ = false;    ///< the program moves the list's selection, not the user
  SearchKind search_kind_ = SearchKind::new_search;  ///< the narrow prompt's last answer

  std::unique_ptr<frmAbout> frmAbout_;
  std::unique_ptr<frmFonts> frmFonts_;
  std::unique_ptr<frmHints> frmHints_;
  std::unique_ptr<frmNarrow> frmNarrow_;
  std::unique_ptr<frmQTips> frmQTips_;
  std::unique_ptr<frmSearchFor> frmSearchFor_;
};

}  // namespace tallowmere
