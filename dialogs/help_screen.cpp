#include "dialogs/help_screen.h"

#include <algorithm>

#include "dialogs/resource.h"
#include "win32/text.h"

namespace tallowmere {
namespace {

// In dialog units.
constexpr int form_margin = 9;
constexpr int column_width = 170;
constexpr int answer_width = 200;
constexpr int topic_gap = 4;
constexpr int paragraph_gap = 8;
constexpr int answer_margin = 5;

/// Between a link's text and the rectangle that shows its focus, in pixels.
constexpr int link_margin = 2;

HWND create_child(HWND form, const wchar_t* window_class, const HelpItem& item, DWORD style,
                  int id) {
  const HWND control = CreateWindowExW(
      0, window_class, win32::wide(item.text).c_str(), WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0,
      form, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
  SendMessageW(control, WM_SETFONT, static_cast<WPARAM>(SendMessageW(form, WM_GETFONT, 0, 0)), 0);
  return control;
}

void move(HWND control, int left, int top, SIZE size) {
  SetWindowPos(control, nullptr, left, top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT place_in(HWND form, HWND control) {
  RECT place;
  GetWindowRect(control, &place);
  MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

void set_client_size(HWND form, SIZE size) {
  RECT window;
  RECT client;
  GetWindowRect(form, &window);
  GetClientRect(form, &client);
  SetWindowPos(form, nullptr, 0, 0, size.cx + window.right - window.left - client.right,
               size.cy + window.bottom - window.top - client.bottom,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

HelpScreen::HelpScreen(HWND owner, const HelpPage& page)
    : Form(IDD_HELP, owner),
      lblPopup(item(IDC_HELP_POPUP)),
      Command1(item(IDC_HELP_EXIT)),
      page_(page) {
  SetWindowTextW(handle(), win32::wide(page_.title).c_str());
  create_items();
  command(IDC_HELP_POPUP, STN_CLICKED, [this] { lblPopup_Click(); });
  clicked(IDC_HELP_EXIT, [this] { Command1_Click(); });
  clicked(IDCANCEL, [this] { Escape_KeyDown(); });
}

void HelpScreen::create_items() {
  int id = IDC_HELP_ITEM;
  DWORD group = WS_GROUP;  // arrow keys stay among the topics
  for (const HelpItem& entry : page_.items) {
    if (entry.kind == HelpItemKind::paragraph) {
      controls_.push_back(create_child(handle(), L"Static", entry, SS_NOPREFIX, id++));
      paragraphs_.emplace_back(controls_.back());
      continue;
    }
    controls_.push_back(
        create_child(handle(), L"Button", entry, BS_OWNERDRAW | WS_TABSTOP | group, id));
    group = 0;
    clicked(id++, [this, topic = topics_.size()] { topic_Click(topic); });
    topics_.emplace_back(controls_.back());
    topic_items_.push_back(&entry);
    visited_.push_back(false);
  }
  // Last in the order of the Tab key.
  SetWindowPos(Command1.handle(), HWND_BOTTOM, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void HelpScreen::show(HWND owner, HWND main_window) {
  arrange();
  show_modal(owner, main_window);
}

SIZE HelpScreen::pixels(int horizontal_units, int vertical_units) const {
  RECT area{0, 0, horizontal_units, vertical_units};
  MapDialogRect(handle(), &area);
  return {area.right, area.bottom};
}

void HelpScreen::arrange() {
  lblPopup.show(false);
  link_font_ = underlined_font(handle());
  const MeasuringCanvas canvas(handle());
  const SIZE margin = pixels(form_margin, form_margin);
  const SIZE answer = pixels(answer_width, 0);
  const SIZE button = pixels(57, 14);
  const int items_bottom = place_items(canvas);
  answer_area_.left = margin.cx + pixels(column_width + form_margin, 0).cx;
  answer_area_.right = answer_area_.left + answer.cx;
  answer_area_.top = margin.cy;
  answer_area_.bottom = std::max<LONG>(items_bottom, answer_area_.top + tallest_answer(canvas));
  const SIZE client{answer_area_.right + margin.cx,
                    answer_area_.bottom + margin.cy + button.cy + margin.cy};
  move(Command1.handle(), client.cx - margin.cx - button.cx, client.cy - margin.cy - button.cy,
       button);
  set_client_size(handle(), client);
}

/// Places the items; returns the lower edge of the last one.
int HelpScreen::place_items(const MeasuringCanvas& canvas) {
  const SIZE margin = pixels(form_margin, form_margin);
  const int width = pixels(column_width, 0).cx;
  const int blank = canvas.text_size(" ", width).cx;
  RECT last{margin.cx, 0, margin.cx, margin.cy};
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    const HelpItem& entry = page_.items[i];
    const bool paragraph = entry.kind == HelpItemKind::paragraph;
    const SIZE size =
        paragraph ? canvas.text_size(entry.text, width) : canvas.link_size(entry.text, width);
    const int left = last.right + blank;
    const bool follows = entry.same_line && left + size.cx <= margin.cx + width;
    RECT place;
    place.left = follows ? left : margin.cx;
    place.top = follows  ? last.top
                : i == 0 ? margin.cy
                         : last.bottom + pixels(0, paragraph ? paragraph_gap : topic_gap).cy;
    place.right = place.left + size.cx;
    place.bottom = place.top + size.cy;
    last = place;
    if (!paragraph) InflateRect(&place, link_margin, link_margin);
    move(controls_[i], place.left, place.top, {place.right - place.left, place.bottom - place.top});
  }
  return last.bottom;
}

SIZE HelpScreen::answer_size(const MeasuringCanvas& canvas, const HelpItem& entry) const {
  const SIZE margin = pixels(answer_margin, answer_margin);
  const SIZE text = canvas.text_size(entry.answer, pixels(answer_width, 0).cx - 2 * margin.cx);
  return {text.cx + 2 * margin.cx, text.cy + 2 * margin.cy};
}

int HelpScreen::tallest_answer(const MeasuringCanvas& canvas) const {
  LONG tallest = 0;
  for (const HelpItem* entry : topic_items_) {
    tallest = std::max(tallest, answer_size(canvas, *entry).cy);
  }
  return static_cast<int>(tallest);
}

void HelpScreen::show_answer(std::size_t topic) {
  const SIZE size = answer_size(MeasuringCanvas(handle()), *topic_items_[topic]);
  const LONG beside = place_in(handle(), topics_[topic].handle()).top;
  lblPopup.set_text(topic_items_[topic]->answer);
  move(lblPopup.handle(), answer_area_.left,
       std::max(answer_area_.top, std::min(beside, answer_area_.bottom - size.cy)), size);
  lblPopup.show(true);
  // Screen readers read it out, though the focus stays on the topic.
  NotifyWinEvent(EVENT_SYSTEM_ALERT, lblPopup.handle(), OBJID_CLIENT, CHILDID_SELF);
}

bool HelpScreen::pre_translate(MSG& message) {
  if (message.message != WM_KEYDOWN || message.wParam != VK_RETURN) return false;
  const std::size_t topic = topic_of(message.hwnd);
  if (topic == topics_.size()) return false;
  topic_Click(topic);
  return true;
}

bool HelpScreen::on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  switch (message) {
    case WM_DRAWITEM:
      result = TRUE;
      return draw_item(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
    case WM_SETCURSOR:
      if (topic_of(reinterpret_cast<HWND>(wparam)) == topics_.size()) return false;
      SetCursor(LoadCursorW(nullptr, IDC_UPARROW));
      result = TRUE;
      return true;
    case WM_LBUTTONDOWN:
      form_click();
      return false;
    case WM_CLOSE:
      Command1_Click();
      return true;
  }
  return false;
}

bool HelpScreen::draw_item(const DRAWITEMSTRUCT& draw) const {
  if (draw.hwndItem == lblPopup.handle()) {
    draw_note(draw, pixels(answer_margin, answer_margin));
    return true;
  }
  const std::size_t topic = topic_of(draw.hwndItem);
  if (topic == topics_.size()) return false;
  draw_link(draw, link_font_.handle(), visited_[topic], link_margin);
  return true;
}

std::size_t HelpScreen::topic_of(HWND control) const {
  std::size_t topic = 0;
  while (topic < topics_.size() && topics_[topic].handle() != control) ++topic;
  return topic;
}

void HelpScreen::topic_Click(std::size_t topic) {
  form_click();
  visited_[topic] = true;
  topics_[topic].repaint();
  if (topic_items_[topic]->kind == HelpItemKind::link) {
    link_Click();
  } else {
    show_answer(topic);
  }
}

void HelpScreen::form_click() {
  lblPopup.show(false);
}

void HelpScreen::lblPopup_Click() {
  form_click();
}

void HelpScreen::Command1_Click() {
  form_click();
  hide_from(topics_.front().handle());
}

void HelpScreen::Escape_KeyDown() {
  if (lblPopup.visible()) {
    form_click();
  } else {
    Command1_Click();
  }
}

}  // namespace tallowmere
