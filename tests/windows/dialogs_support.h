#pragma once

#include <windows.h>

#include <shlobj.h>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "dialogs/dialog_context.h"
#include "shell/lenient_values.h"
#include "tests/support/hanging_files.h"
#include "win32/controls.h"
#include "win32/text.h"

namespace tallowmere {

/// The window that owns the dialogs, and a hand that works them while they are shown: one step
/// every few milliseconds, also while a message box is open. Ends what is still open afterwards.
class Hand {
 public:
  using Step = std::function<void()>;

  Hand()
      : window_(CreateWindowW(L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 200, 100, 800,
                              600, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr)) {
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }
  ~Hand() { DestroyWindow(window_); }
  Hand(const Hand&) = delete;
  Hand& operator=(const Hand&) = delete;

  HWND window() const { return window_; }

  /// Runs `show`, which returns when its dialog closes, and the steps meanwhile.
  void work(const Step& show, std::initializer_list<Step> steps) {
    steps_.assign(steps);
    idle_ticks_ = 0;
    SetTimer(window_, 1, 15, &Hand::next);
    show();
    KillTimer(window_, 1);
    EXPECT_TRUE(steps_.empty()) << "the dialog closed before the last step";
    EXPECT_TRUE(IsWindowEnabled(window_));
  }
  template <typename Dialog>
  void show(Dialog& dialog, std::initializer_list<Step> steps) {
    work([&] { dialog.show(window_, window_); }, steps);
  }

 private:
  static void CALLBACK next(HWND window, UINT, UINT_PTR, DWORD) {
    auto& hand = *reinterpret_cast<Hand*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!hand.steps_.empty()) {
      const Step step = std::move(hand.steps_.front());
      hand.steps_.pop_front();
      step();
    } else if (++hand.idle_ticks_ % 100 == 0) {
      ADD_FAILURE() << "a dialog stayed open after the last step";
      EnumThreadWindows(GetCurrentThreadId(), &Hand::cancel, 0);
    }
  }

  static BOOL CALLBACK cancel(HWND window, LPARAM) {
    if (IsWindowVisible(window)) PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    return TRUE;
  }

  HWND window_ = nullptr;
  std::deque<Step> steps_;
  int idle_ticks_ = 0;
};

/// Everything a dialog needs, with a search to change.
struct DialogWorld {
  DialogWorld() { clock.day = {2024, 2, 29}; }

  Hand hand;
  SearchCriteria search;
  HangingFiles files;
  FixedClock clock;
  bool cancelled = false;
  RecentFolders recent_folders;
  std::map<std::string, std::string> descriptions{{"txt", "Text Document"}};

  DialogContext context() {
    return {search,
            files,
            clock,
            iso_date,
            [this](std::string_view extension) { return descriptions[std::string(extension)]; },
            "C:\\Programs\\",
            cancelled,
            recent_folders};
  }
};

/// Acts as if the key went down and up while `control` has the focus.
inline void press(const win32::Control& control, WPARAM key) {
  PostMessageW(control.handle(), WM_KEYDOWN, key, 1);
  PostMessageW(control.handle(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

inline void press_mouse(const win32::Control& control) {
  SendMessageW(control.handle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
}

inline void type(const win32::Control& control, std::string_view text) {
  for (const wchar_t unit : win32::wide(text)) SendMessageW(control.handle(), WM_CHAR, unit, 1);
}

/// Closes the open message box by OK and returns its text; empty when there is none of this title.
inline std::string answer_box(const wchar_t* title) {
  const HWND box = FindWindowW(L"#32770", title);
  if (box == nullptr) return {};
  constexpr int text_id = 0xFFFF;
  const std::string text = win32::Control(GetDlgItem(box, text_id)).text();
  PostMessageW(box, WM_COMMAND, IDOK, 0);
  return text;
}

/// Acts as if these files, each with a final NUL, were dropped on the window.
inline void drop_on(HWND window, std::wstring_view paths) {
  const SIZE_T bytes = sizeof(DROPFILES) + (paths.size() + 1) * sizeof(wchar_t);
  auto* files = static_cast<DROPFILES*>(GlobalAlloc(GPTR, bytes));
  files->pFiles = sizeof(DROPFILES);
  files->fWide = TRUE;
  paths.copy(reinterpret_cast<wchar_t*>(files + 1), paths.size());
  SendMessageW(window, WM_DROPFILES, reinterpret_cast<WPARAM>(files), 0);
}

/// What screen readers call a text box: the text of the label before it.
inline std::string label_of(const win32::Control& control) {
  return win32::Control(GetWindow(control.handle(), GW_HWNDPREV)).text();
}

/// The font that a control has.
inline LOGFONTW font_of(const win32::Control& control) {
  LOGFONTW font{};
  const LRESULT handle = SendMessageW(control.handle(), WM_GETFONT, 0, 0);
  GetObjectW(reinterpret_cast<HFONT>(handle), sizeof font, &font);
  return font;
}

}  // namespace tallowmere
