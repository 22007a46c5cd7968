#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace tallowmere::win32 {

/// A window made from a DIALOGEX resource, in the system's message font. It is created hidden and
/// lives as long as this object, so that its controls keep their values between showings.
///
/// Derived classes wire their controls to handlers in their constructors. Handlers run on the
/// thread of the window, inside dispatch_message or SendMessage.
class Form {
 public:
  using Handler = std::function<void()>;
  using NotifyHandler = std::function<LRESULT(NMHDR&)>;

  /// Creates the window, hidden; `owner` may be null (a main window). Throws std::runtime_error
  /// when the system refuses.
  Form(int template_id, HWND owner);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  HWND handle() const { return window_; }
  HWND item(int id) const { return GetDlgItem(window_, id); }

  /// Returns the form of a window, or null.
  static Form* from(HWND window);

  /// Runs `handler` on WM_COMMAND with this control and notification code (EN_CHANGE, ...). A form
  /// that is disabled, or that has an owner and does not show, runs only those that its own texts
  /// cause (EN_*): another click may have been waiting, and any program can send one.
  void command(int id, int code, Handler handler);
  /// Runs `handler` when the button is clicked or the menu entry or its accelerator is chosen.
  void clicked(int id, Handler handler);
  /// Runs `handler` on WM_NOTIFY with this control and code; its result is the answer.
  void notify(int id, UINT code, NotifyHandler handler);

  /// Gives the focus to a control as the Tab key would: Enter then presses a button.
  void move_focus(HWND control) {
    SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
  }

  /// Shows the form over `owner`, which is disabled meanwhile, and serves messages until hide() or
  /// the program's end. The form is centred over `center_on`, or over `owner` without one. Not
  /// re-entrant. The owner's focus returns to where it was.
  void show_modal(HWND owner, HWND center_on = nullptr);
  /// Ends show_modal. Safe when the form is not shown.
  void hide();
  /// Moves the focus to the default button and hides. When shown again, a form first gives the
  /// focus back to the control that had it last: an option button would take that as a click, and
  /// another push button would stay the one that Enter presses.
  void hide_from(HWND default_button) {
    move_focus(default_button);
    hide();
  }

  /// Sees every message of the form and its controls before anything else; true: the message is
  /// handled. Called for forms shown by show_modal and for main windows.
  virtual bool pre_translate(MSG& message);

 protected:
  /// Acts when the window is visible; show_modal calls it before the first message.
  virtual void on_shown() {}
  /// Sees every message before the handlers do. True: `result` is the answer.
  virtual bool on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result);
  /// Fits what the system does not, after the window has come to a screen of another DPI. Called
  /// once, when its controls have new fonts, places and sizes there; for a hidden window, before it
  /// is shown.
  virtual void on_dpi_changed(int /*before*/, int /*now*/) {}
  /// Places the window over the middle of another one, on its screen and in its size there.
  void center_form(HWND main_window);

 private:
  static INT_PTR CALLBACK dialog_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  bool handle_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result);
  bool obeys() const;
  bool run_command(int id, int code);
  void move_over(HWND main_window);
  bool follow_dpi();

  HWND window_ = nullptr;
  HWND modal_owner_ = nullptr;   ///< the window disabled by show_modal
  HWND focus_before_ = nullptr;  ///< what had the focus when show_modal was called
  int dpi_ = 0;                  ///< to which the controls are fitted
  int new_dpi_ = 0;              ///< to be followed; 0 when there is no change
  std::map<std::pair<int, int>, Handler> commands_;
  std::map<std::pair<int, UINT>, NotifyHandler> notifications_;
};

/// Returns a form, made when it is first needed; it keeps its values.
template <typename Made, typename... Arguments>
Made& made(std::unique_ptr<Made>& form, Arguments&&... arguments) {
  if (!form) form = std::make_unique<Made>(std::forward<Arguments>(arguments)...);
  return *form;
}

}  // namespace tallowmere::win32
