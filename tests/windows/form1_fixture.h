#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>

#include "app/Form1.h"
#include "app/resource.h"
#include "tests/support/hanging_files.h"
#include "tests/support/memory_settings.h"
#include "win32/message_loop.h"
#include "win32/text.h"

namespace tallowmere {

/// Another thread that plays the user: waits for a window of this process to be visible and acts on
/// it. When the destructor is reached, the window must have come.
class User {
 public:
  User(std::string caption, std::function<void(HWND)> act)
      : thread_([this, caption = win32::wide(caption), act = std::move(act)] {
          for (; !over_; Sleep(10)) {
            const HWND window = FindWindowW(nullptr, caption.c_str());
            if (window == nullptr || !IsWindowVisible(window)) continue;
            act(window);
            found_ = true;
            return;
          }
        }) {}
  ~User() {
    over_ = true;
    thread_.join();
    EXPECT_TRUE(found_) << "the window has never come";
  }

 private:
  std::atomic<bool> over_ = false;
  bool found_ = false;
  std::thread thread_;
};

inline std::string message_box_text(HWND box) {
  return win32::Control(GetDlgItem(box, 0xFFFF)).text();
}

/// Presses a button of a dialog or of a message box, whose text it hands out first.
inline std::function<void(HWND)> press_button(int id, std::string* text = nullptr) {
  return [=](HWND box) {
    if (text != nullptr) *text = message_box_text(box);
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(id), 0);
  };
}

/// The real main window, hidden, over files in memory.
class Form1Test : public testing::Test {
 protected:
  static constexpr Ticks minute = 60 * ticks_per_second;

  void open() {
    settings.save_setting("path", "C:\\docs\\");
    settings.save_setting("checked", "YNNNNNNYNNYNNNNNYYN");  // all files, by name, no sound
    start(settings);
  }

  void start(SettingsStore& store) {
    form.reset();
    form = std::make_unique<Form1>(
        Form1::Services{search, store, files, clock, page, "C:\\program\\"});
  }

  ~Form1Test() override {
    form.reset();
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    }
  }

  void run(SearchKind kind, const std::string& criteria) {
    CriteriaInput input;
    input.criteria = criteria;
    form->run_search(kind, input);
    files.wait_for_threads(1);  // the viewer's may be kept
  }

  /// Acts as if the user chose the command, which is served at once.
  void choose(int command) { SendMessageW(form->handle(), WM_COMMAND, MAKEWPARAM(command, 0), 0); }

  /// Acts as if the user did something to the list, or to one of its headers.
  void notify_list(UINT code, int column = 0) {
    NMLISTVIEW event{};
    event.hdr = {form->ListView2.handle(), IDC_LISTVIEW2, code};
    event.iSubItem = column;
    SendMessageW(form->handle(), WM_NOTIFY, IDC_LISTVIEW2, reinterpret_cast<LPARAM>(&event));
  }
  void click_column(int column) { notify_list(static_cast<UINT>(LVN_COLUMNCLICK), column); }

  /// Selects as the user does, and lets the viewer follow.
  void click_row(int row) {
    form->ListView2.select_only(row);
    win32::pump_pending();
  }

  std::string cell(int row, int column) const {
    wchar_t text[300] = L"";
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = 300;
    SendMessageW(form->ListView2.handle(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
    return win32::narrow(text);
  }

  /// The list's first column, one name after the other.
  std::string names() const {
    std::string all;
    for (int row = 0; row < form->ListView2.row_count(); ++row) all += cell(row, 0) + " ";
    return all;
  }

  /// The viewer's text and the window's caption.
  std::string text_and_caption() const {
    return form->Text1.text() + "," + win32::Control(form->handle()).text();
  }

  UINT entry_state(int id) const {
    return GetMenuState(GetMenu(form->handle()), static_cast<UINT>(id), MF_BYCOMMAND);
  }
  bool entry_enabled(int id) const { return (entry_state(id) & (MF_GRAYED | MF_DISABLED)) == 0; }
  bool entry_checked(int id) const { return (entry_state(id) & MF_CHECKED) != 0; }

  CodePage page = CodePage::windows_1252();
  HangingFiles files;  ///< outlives the threads of a run that was stopped
  FixedClock clock;
  MemorySettings settings;
  SearchCriteria search;
  std::unique_ptr<Form1> form;
};

}  // namespace tallowmere
