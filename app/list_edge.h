#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>

#include "shell/layout.h"

namespace tallowmere {

/// The lower edge of the list, which the user drags to another height; a double click on it goes
/// back to the design's.
class ListEdge {
 public:
  /// `below` is the window under the list, `share_changed` lays the form out anew. The form owns
  /// all three windows.
  ListEdge(HWND form, HWND list, HWND below, std::function<void(ListShare)> share_changed);
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

  HWND form_;
  HWND list_;
  HWND below_;
  std::function<void(ListShare)> share_changed_;
  bool dragging_ = false;
  LONG mouse_ = 0;   ///< its height on the screen, as followed so far
  LONG height_ = 0;  ///< of the list, less the mouse's
};

}  // namespace tallowmere
