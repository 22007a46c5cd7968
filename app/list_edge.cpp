#include "app/list_edge.h"

#include <utility>

#include "app/window_placement.h"
#include "win32/controls.h"
#include "win32/dpi.h"

namespace tallowmere {

namespace {

constexpr UINT_PTR subclass_id = 2;
constexpr int reach =
    2;  ///< pixels at 96 dots per inch of the window below that belong to the edge

RECT place_of(HWND window) {
  RECT place;
  GetWindowRect(window, &place);
  return place;
}

POINT pointer() {
  POINT at;
  GetCursorPos(&at);
  return at;
}

POINT on_screen(HWND window, LPARAM position) {
  POINT at = win32::point_of(position);
  ClientToScreen(window, &at);
  return at;
}

}  // namespace

ListEdge::ListEdge(HWND form, ResultView& list, const win32::Control& below, ListShare& share,
                   std::function<void()> lay_out)
    : form_(form), list_(list), below_(below), share_(share), lay_out_(std::move(lay_out)) {
  for (const HWND window : {form_, list_.handle(), below_.handle()}) {
    SetWindowSubclass(window, subclass_proc, subclass_id, reinterpret_cast<DWORD_PTR>(this));
  }
}

ListEdge::~ListEdge() {
  for (const HWND window : {form_, list_.handle(), below_.handle()}) {
    RemoveWindowSubclass(window, subclass_proc, subclass_id);
  }
}

LRESULT CALLBACK ListEdge::subclass_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                         UINT_PTR id, DWORD_PTR edge) {
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, subclass_proc, id);
  LRESULT result = 0;
  const bool done =
      reinterpret_cast<ListEdge*>(edge)->handle_message(window, message, lparam, result);
  return done ? result : DefSubclassProc(window, message, wparam, lparam);
}

/// The list's frame and the window below let the mouse through to the form, where the gap between
/// them is too narrow to be hit.
bool ListEdge::handle_message(HWND window, UINT message, LPARAM lparam, LRESULT& result) {
  if (window != form_) {
    result = HTTRANSPARENT;
    return message == WM_NCHITTEST && covers(win32::point_of(lparam));
  }
  switch (message) {
    case WM_SETCURSOR:
      if (LOWORD(lparam) != HTCLIENT || !covers(pointer())) return false;
      SetCursor(LoadCursorW(nullptr, IDC_SIZENS));
      result = TRUE;
      return true;
    case WM_LBUTTONDOWN:
      grasp(on_screen(window, lparam));
      return dragging_;
    case WM_MOUSEMOVE:
      if (dragging_) drag(on_screen(window, lparam));
      return dragging_;
    case WM_LBUTTONUP:
      if (dragging_) ReleaseCapture();
      return false;
    case WM_CAPTURECHANGED:
      dragging_ = false;
      return false;
    case WM_LBUTTONDBLCLK:
      if (!covers(on_screen(window, lparam))) return false;
      go_back();
      return true;
  }
  return false;
}

bool ListEdge::covers(POINT at) const {
  const int dpi = win32::window_dpi(form_);
  RECT strip = place_of(list_.handle());
  strip.top = strip.bottom - win32::metrics(SM_CYEDGE, dpi);
  strip.bottom = place_of(below_.handle()).top + win32::scale(reach, dpi);
  return PtInRect(&strip, at) != FALSE;
}

void ListEdge::grasp(POINT at) {
  if (!covers(at)) return;
  const RECT list = place_of(list_.handle());
  mouse_ = at.y;
  height_ = list.bottom - list.top - at.y;
  dragging_ = true;
  SetCapture(form_);
}

/// Moves the edge with the mouse; a click alone changes nothing.
void ListEdge::drag(POINT at) {
  if (at.y == mouse_) return;
  mouse_ = at.y;
  const TwipRect outer = window_rect(form_);
  const Twips height = to_twips(height_ + at.y, win32::window_dpi(form_));
  share_ = list_share({outer.width, outer.height}, height);
  // The text of the viewer takes a while to be laid out. Nothing shows half of it, and all of it
  // shows now: otherwise painting would wait for the mouse, which leaves it no time.
  SendMessageW(form_, WM_SETREDRAW, FALSE, 0);
  lay_out_();
  SendMessageW(form_, WM_SETREDRAW, TRUE, 0);
  RedrawWindow(form_, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void ListEdge::go_back() {
  share_ = 0;
  list_.set_column_widths({}, win32::window_dpi(form_));
  lay_out_();
}

}  // namespace tallowmere
