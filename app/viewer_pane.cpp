#include "app/viewer_pane.h"

#include <algorithm>
#include <utility>

#include "engine/unicode.h"
#include "viewer/character_text.h"
#include "viewer/chunk_hits.h"
#include "viewer/view_anchor.h"
#include "win32/hourglass.h"
#include "win32/message_box.h"
#include "win32/sound.h"

namespace tallowmere {

namespace {

constexpr std::uint64_t quick_step_ms =
    200;  ///< a step that takes longer shows that it can be stopped

/// The selected part of a text; empty when the selection begins beyond its end.
template <class Text>
Text selected_of(const Text& text, const TextSelection& selection) {
  if (selection.start > std::ssize(text)) return {};
  return text.substr(static_cast<std::size_t>(selection.start),
                     static_cast<std::size_t>(selection.length));
}

}  // namespace

ViewerPane::ViewerPane(ViewerBox& box, ResultList& results, const FileSystem& files,
                       const SearchCriteria& search, const CodePage& page, Window window)
    : face_(box),
      box_(box),
      results_(results),
      search_(search),
      page_(page),
      window_(std::move(window)),
      files_(files, [this] { return keep_waiting(); }),
      viewer_(results, files_, box, *this),
      navigation_(viewer_, box, *this),
      scroll_(viewer_, box),
      finder_(make_finder()),
      idle_(box.handle(), viewer_, files_, page,
            {[this] { return step_ == Step::none && !window_.searching(); },
             [this] { hits_counted(); }}) {
  wire();
}

void ViewerPane::wire() {
  box_.wheel = [this](int lines) {
    scroll([lines](ViewScroll& view) { view.scroll_lines(lines); });
  };
  box_.before_key = [this](bool down, bool caret_first) {
    scroll([=](ViewScroll& view) { view.make_room(down, caret_first); });
  };
  box_.before_jump = [this](bool to_end, bool extend) {
    scroll([=](ViewScroll& view) { to_end ? view.go_to_end(extend) : view.go_to_start(extend); });
  };
  box_.view_moved = [this] { scroll([](ViewScroll& view) { view.show_position(); }); };
  box_.selection_changed = [this] { check_selection(); };
  box_.marks = [this](int from, int to) { return marks_.between(viewer_, *finder_, from, to); };
}

void ViewerPane::VScroll1_Change(int code) {
  const bool pressed = GetKeyState(VK_LBUTTON) < 0;
  scroll([&](ViewScroll& view) {
    switch (code) {
      case SB_LINEUP:
      case SB_LINEDOWN:
        return view.scroll_lines(code == SB_LINEDOWN ? 1 : -1);
      case SB_PAGEUP:
      case SB_PAGEDOWN:
        return view.scroll_pages(code == SB_PAGEDOWN ? 1 : -1);
      case SB_TOP:
      case SB_BOTTOM:
        return view.scroll_to(code == SB_BOTTOM ? scroll_maximum : 0);
      case SB_THUMBTRACK:
      case SB_THUMBPOSITION:
        return view.scroll_to(box_.VScroll1.track_position());
    }
  });
  if (pressed && GetKeyState(VK_LBUTTON) >= 0) tell_button_up();
}

/// Ends the system's own loop, which follows the mouse on the scroll bar. It misses a button that
/// came up while a step served events, and the thumb would go on moving with the mouse.
void ViewerPane::tell_button_up() const {
  const HWND bar = box_.VScroll1.handle();
  if (GetCapture() != bar) return;
  POINT at;
  GetCursorPos(&at);
  ScreenToClient(bar, &at);
  PostMessageW(bar, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
}

/// Makes the finder of the criteria. A Unicode file on view stays one until another one is opened.
HitFinder ViewerPane::make_finder() {
  viewer_.read_unicode_text(search_.unicode_text, page_);
  SearchCriteria search = search_;
  search.unicode_text = search.unicode_text || encoding() != TextEncoding::code_page;
  HitFinder finder(search, page_);
  viewer_.read_beside(bytes_beside(finder));
  return finder;
}

void ViewerPane::criteria_loaded() {
  idle_.forget();
  hit_.forget();
  finder_.emplace(make_finder());
  marks_.forget();
  box_.repaint_marks();
}

bool ViewerPane::make_step(const std::function<void()>& work) {
  if (step_ != Step::none) return false;
  struct End {
    Step& step;
    ~End() { step = Step::none; }
  } const end{step_};
  step_ = Step::quick;
  stop_ = false;
  busy_shown_ = false;
  started_ = GetTickCount64();
  try {
    work();
  } catch (const GivenUp&) {
    viewer_.step_given_up();
  } catch (...) {
    step_ = Step::none;
    window_.state_changed();  // what waits for the step's end may have its turn
    throw;
  }
  return true;
}

bool ViewerPane::open(std::size_t row) {
  bool opened = false;
  make_step([&] { opened = viewer_.viewfile(row); });
  return opened;
}

void ViewerPane::show_first_hit(std::size_t row) {
  const bool made = make_step([&] {
    if (viewer_.viewfile(row)) find_hit(true);
  });
  if (made) forget_selection();
}

void ViewerPane::show_if_pending() {
  const bool made = make_step([this] {
    if (viewer_.chunk_pending()) navigation_.show_first_chunk();
  });
  if (made) forget_selection();
}

void ViewerPane::find(bool forward) {
  if (!viewing()) return;
  const bool made = make_step([this, forward] {
    if (text_selected_) face_.select(face_.selection().start, 0);
    continue_from_view(forward);
    find_hit(forward);
  });
  if (made) forget_selection();
}

/// Makes the part of a step that can take long and be stopped.
void ViewerPane::find_hit(bool forward) {
  step_ = Step::finding;
  const win32::Hourglass hourglass;
  const bool from_last = hit_.at(selected_place());
  const FindResult result =
      forward ? navigation_.find_next(*finder_) : navigation_.find_prev(*finder_);
  if (result != FindResult::found) return;
  hit_.met(selected_place(), navigation_.last_step(), from_last, idle_.counter());
}

HitOrdinal::Place ViewerPane::selected_place() const {
  if (!viewer_.shows_chunk()) return {};
  const auto [start, length] = face_.selection();
  const Chunk& chunk = viewer_.shown_chunk();
  return {chunk.file_position(start), chunk.file_position(start + length)};
}

/// Follows the selection: what is said of a hit holds, and hits are counted, while it is selected.
void ViewerPane::follow_hit() {
  hit_.selection_moved(selected_place());
  if (hit_.met()) {
    idle_.go_on(*finder_);
  } else {
    idle_.pause();
  }
}

void ViewerPane::hits_counted() {
  const std::string before = hit_.text();
  hit_.counted(*idle_.counter());
  if (hit_.text() != before) window_.note_changed();
}

/// Notes that the program has made the selection, such as a hit, and not the user.
void ViewerPane::forget_selection() {
  text_selected_ = false;
  follow_hit();
  window_.state_changed();
}

/// Goes on from what is on view when the user has scrolled away from the selection.
void ViewerPane::continue_from_view(bool forward) {
  if (viewer_.chunk_pending()) return;
  const int line = face_.line_from_char(face_.selection().start);
  const int top = face_.first_visible_line();
  if (line >= top && line <= top + face_.visible_lines()) return;
  const int first = face_.line_index(top);
  face_.select(forward ? std::max(first - 1, 0) : first, 0);
}

void ViewerPane::scroll(const std::function<void(ViewScroll&)>& move) {
  if (!viewer_.shows_chunk()) return;
  if (make_step([&] { move(scroll_); })) check_selection();
}

/// Empties the viewer; no step goes on with what it has read of the file.
void ViewerPane::clear() {
  stop_ = true;
  viewer_.clear_textbox();
}

std::string ViewerPane::selected_text() const {
  const Chunk& chunk = viewer_.shown_chunk();
  const TextSelection selection = face_.selection();
  if (!chunk.is_unicode()) {
    return from_page_bytes(selected_of(chunk.chunk_text, selection), page_);
  }
  return to_utf8(without_lone_halves(selected_of(chunk.units, selection)));
}

bool ViewerPane::selection_repeats_criteria() const {
  const Chunk& chunk = viewer_.shown_chunk();
  const TextSelection selection = face_.selection();
  return chunk.is_unicode() ? finder_->repeats_criteria(selected_of(chunk.units, selection))
                            : finder_->repeats_criteria(selected_of(chunk.chunk_text, selection));
}

void ViewerPane::deselect() {
  face_.select(face_.selection().start, 0);
  check_selection();
}

void ViewerPane::check_selection() {
  if (step_ != Step::none) return;
  text_selected_ = !selected_text().empty() && !selection_repeats_criteria();
  follow_hit();
  window_.state_changed();
}

void ViewerPane::keep_view(const std::function<void()>& change) {
  if (!viewing()) {
    change();
    return;
  }
  const ViewAnchor anchor(face_);
  change();
  anchor.restore(face_, navigation_);
  scroll([](ViewScroll& view) { view.show_position(); });
}

/// Called while a step waits for a disk: from here on it can be stopped.
bool ViewerPane::keep_waiting() {
  step_ = Step::finding;
  return go_on();
}

bool ViewerPane::go_on() {
  if (!busy_shown_ && GetTickCount64() - started_ >= quick_step_ms) {
    busy_shown_ = true;
    window_.state_changed();
  }
  if (events_.serve() && events_.quitting()) stop_ = true;
  return !stop_;
}

void ViewerPane::message(std::string_view prompt, std::string_view title, bool exclamation) {
  win32::message_box(window_.handle, prompt, title,
                     exclamation ? win32::BoxIcon::exclamation : win32::BoxIcon::none);
}

void ViewerPane::beep() {
  win32::beep();
}

void ViewerPane::file_opened(std::size_t row) {
  idle_.forget();
  hit_.forget();
  window_.file_shown(&results_.record(row));
}

void ViewerPane::viewer_cleared() {
  idle_.forget();
  hit_.forget();
  text_selected_ = false;
  window_.file_shown(nullptr);
}

}  // namespace tallowmere
