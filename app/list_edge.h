#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>

#include "app/result_view.h"
#include "shell/layout.h"
#include "win32/controls.h"

namespace tallowmere {

/// The lower edge of the list, which the user drags to another height. A double click on it brings
/// back the height and the columns of the design.
class ListEdge {
 public:
  /// `below` is under the list; `lay_out` is called after each change of the share. The form owns
  /// all three windows.
  ListEdge(HWND form, ResultView& list, const win32::Control& below, ListShare& share,
           std::function<void()> lay_out);
  ~ListEdge();
  ListEdge(const ListEdge&) = delete;
  ListEdge& operator=(const ListEdge&) = delete;

 private:
  static LRESULT CALLBACK subclass_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                        UINT_PTR id, DWORD_PTR edge);
  bool handle_message(HWND window, UINT message, LPARAM lparam, LRESULT& result);
  bool covers(POINT on_screen) const;
  void grasp(POINT on_screen);
  void drag(POINT on_screen);
  void go_back();

  HWND form_;
  ResultView& list_;
  const win32::Control& below_;
  ListShare& share_;
  std::function<void()> lay_out_;
  bool dragging_ = false;
  LONG mouse_ = 0;   ///< its height on the screen, as followed so far
  LONG height_ = 0;  ///< of the list, less the mouse's
};

}  // namespace tallowmere
