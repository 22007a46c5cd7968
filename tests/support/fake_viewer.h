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
  /// Wrap behind the last blank of a line that is too long, when it has one.
  bool wrap_at_blanks = false;

  void set_text(std::string_view bytes) override {
    text.assign(bytes);
    selected = {};
    caret_first = false;
    first_line_ = 0;
    ++texts_set;
    wrap();
  }
  TextSelection selection() const override { return selected; }
  /// A negative length puts the caret before the anchor `start`.
  void select(int start, int length) override {
    const int size = static_cast<int>(text.size());
    const int anchor = std::clamp(start, 0, size);
    const int caret = std::clamp(start + length, 0, size);
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
  void focus() override { ++focused; }
  void set_scroll_value(int value) override { scroll_value = value; }

  /// A line as it shows.
  std::string line_text(int line) const {
    const int start = line_index(line);
    const int end = line + 1 < line_count() ? line_index(line + 1) : static_cast<int>(text.size());
    std::string shown =
        text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start));
    if (shown.ends_with("\r\n")) shown.resize(shown.size() - 2);
    return shown;
  }
  /// The whole lines on view.
  std::vector<std::string> lines_on_view() const {
    std::vector<std::string> lines;
    for (int line = first_line_; line < std::min(first_line_ + page, line_count()); ++line)
      lines.push_back(line_text(line));
    return lines;
  }
  std::string selected_text() const {
    return text.substr(static_cast<std::size_t>(selected.start),
                       static_cast<std::size_t>(selected.length));
  }

  std::string text;
  TextSelection selected;
  bool caret_first = false;  ///< the caret stands at the selection's start
  bool is_enabled = false;
  int redraw_held = 0;  ///< set_redraw(false) calls not taken back
  int focused = 0;
  int texts_set = 0;
  int scroll_value = 0;

 private:
  void wrap() {
    starts_.assign(1, 0);
    std::size_t start = 0;
    while (start < text.size()) {
      const std::size_t line_break = text.find("\r\n", start);
      const std::size_t end = std::min(line_break, text.size());
      if (end - start <= static_cast<std::size_t>(columns)) {
        if (line_break == std::string::npos) return;
        start = line_break + 2;
      } else {
        start += soft_length(start);
      }
      starts_.push_back(static_cast<int>(start));
    }
  }
  std::size_t soft_length(std::size_t start) const {
    const auto width = static_cast<std::size_t>(columns);
    if (!wrap_at_blanks) return width;
    const std::size_t blank = std::string_view(text).substr(start, width).rfind(' ');
    return blank == std::string_view::npos ? width : blank + 1;
  }

  std::vector<int> starts_{0};
  int first_line_ = 0;
};

/// Writes down what it is told.
class FakeHost : public ViewerHost {
 public:
  /// The calls of go_on that are answered with true.
  int steps_allowed = 1 << 30;
  /// Runs when a message has been written down.
  std::function<void()> on_message;

  bool go_on() override {
    ++steps_asked;
    return steps_asked <= steps_allowed;
  }
  void message(std::string_view prompt, std::string_view title, bool exclamation) override {
    messages.push_back((exclamation ? "! " : "") + std::string(title) + ": " + std::string(prompt));
    if (on_message) on_message();
  }
  void beep() override { ++beeps; }
  void file_opened(std::size_t row) override { opened.push_back(row); }
  void viewer_cleared() override { ++cleared; }
  void row_corrected(std::size_t row) override { corrected.push_back(row); }
  void select_row(std::size_t row) override { selected_rows.push_back(row); }

  int steps_asked = 0;
  std::vector<std::string> messages;  ///< "! title: prompt" with the exclamation icon
  int beeps = 0;
  int cleared = 0;
  std::vector<std::size_t> opened;
  std::vector<std::size_t> corrected;
  std::vector<std::size_t> selected_rows;
};

}  // namespace tallowmere
