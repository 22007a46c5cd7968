#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "viewer/viewer_host.h"

namespace tallowmere {

/// A text box of fixed width characters. Lines end at CR LF and wrap after `columns` characters.
class FakeFace : public TextFace {
 public:
  int columns = 40;
  int page = 10;
  bool wrap_at_blanks = false;  ///< after the last space of a line too long, when it has one

  std::string text;      ///< of UTF-16 one byte a unit: 128 to 255 beyond ASCII
  std::u16string units;  ///< set last; empty after bytes
  TextSelection selected;
  bool caret_first = false;  ///< the caret is at the selection's start
  bool is_enabled = false;
  int redraw_held = 0;  ///< set_redraw(false) calls not taken back
  int texts_set = 0;
  int scroll_value = 0;

  void set_text(std::string_view bytes) override {
    text.assign(bytes);
    units.clear();
    show();
  }
  void set_text(std::u16string_view set) override {
    units.assign(set);
    text.clear();
    for (const char16_t unit : units) text += static_cast<char>(unit < 128 ? unit : unit | 128);
    show();
  }
  void show() {
    select(0, 0);
    first_line_ = 0;
    ++texts_set;
    wrap();
  }
  TextSelection selection() const override { return selected; }
  /// A negative length puts the caret before the anchor `start`.
  void select(int start, int length) override {
    const auto fit = [this](int at) { return std::clamp(at, 0, static_cast<int>(text.size())); };
    const int anchor = fit(start), caret = fit(start + length);
    selected = {std::min(anchor, caret), std::abs(caret - anchor)};
    caret_first = caret < anchor;
  }

  int line_count() const override { return static_cast<int>(starts_.size()); }
  int line_from_char(int position) const override {
    const auto after = std::upper_bound(starts_.begin(), starts_.end(), position);
    return static_cast<int>(after - starts_.begin()) - 1;
  }
  int line_index(int line) const override { return starts_.at(static_cast<std::size_t>(line)); }
  int visible_lines() const override { return page; }
  int first_visible_line() const override { return first_line_; }
  void set_first_visible_line(int line) override {
    first_line_ = std::clamp(line, 0, std::max(line_count() - page, 0));
  }

  void set_redraw(bool on) override { redraw_held += on ? -1 : 1; }
  void enable(bool on) override { is_enabled = on; }
  bool enabled() const override { return is_enabled; }
  void set_scroll_value(int value) override { scroll_value = value; }

  /// The lines on view with their line breaks.
  std::vector<std::string> lines_on_view() const {
    std::vector<std::string> lines;
    for (int line = first_line_; line < std::min(first_line_ + page, line_count()); ++line) {
      const auto start = text.begin() + line_index(line);
      lines.emplace_back(
          start, line + 1 < line_count() ? text.begin() + line_index(line + 1) : text.end());
    }
    return lines;
  }

 private:
  void wrap() {
    const auto width = static_cast<std::size_t>(columns);
    starts_.assign(1, 0);
    for (std::size_t start = 0; start < text.size(); starts_.push_back(static_cast<int>(start))) {
      const std::size_t line_break = text.find("\r\n", start);
      if (std::min(line_break, text.size()) - start > width) {
        const std::size_t blank = std::string_view(text).substr(start, width).rfind(' ');
        start += wrap_at_blanks && blank != std::string_view::npos ? blank + 1 : width;
      } else if (line_break == std::string::npos) {
        return;
      } else {
        start = line_break + 2;
      }
    }
  }

  std::vector<int> starts_{0};
  int first_line_ = 0;
};

/// Records what the viewer reports.
class FakeHost : public ViewerHost {
 public:
  int steps_allowed = 1 << 30;  ///< the calls of go_on that are answered with true
  std::function<void()> on_go_on = [] {};
  int steps_asked = 0;
  std::vector<std::string> messages;  ///< "! title: prompt" with the exclamation icon
  int beeps = 0, cleared = 0;
  int corrected = 0, rows_selected = 0;

  bool go_on() override {
    ++steps_asked;
    on_go_on();
    return steps_asked <= steps_allowed;
  }
  void message(std::string_view prompt, std::string_view title, bool exclamation) override {
    messages.push_back((exclamation ? "! " : "") + std::string(title) + ": " + std::string(prompt));
  }
  void beep() override { ++beeps; }
  void file_opened(std::size_t) override {}
  void viewer_cleared() override { ++cleared; }
  void row_corrected() override { ++corrected; }
  void select_row(std::size_t) override { ++rows_selected; }
};

}  // namespace tallowmere
