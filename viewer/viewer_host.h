#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tallowmere {

struct TextSelection {
  int start = 0;   ///< 0-based; with an empty selection the caret
  int length = 0;  ///< in characters
  bool operator==(const TextSelection&) const = default;
};

/// The text box that shows a chunk. Each of its characters is one byte or one UTF-16 unit of the
/// text set, so positions in both are equal; they count from 0. Lines are those displayed: a long
/// line of the text takes several.
class TextFace {
 public:
  virtual ~TextFace() = default;

  /// Replaces the text, which holds no NUL; the caret goes to its start, as does the view.
  virtual void set_text(std::string_view bytes) = 0;
  virtual void set_text(std::u16string_view units) = 0;
  virtual TextSelection selection() const = 0;
  /// Selects without scrolling.
  virtual void select(int start, int length) = 0;

  virtual int line_count() const = 0;  ///< at least 1
  virtual int line_from_char(int position) const = 0;
  /// Returns the first character of a line.
  virtual int line_index(int line) const = 0;
  /// Counts the whole lines that show at once; at least 1.
  virtual int visible_lines() const = 0;
  virtual int first_visible_line() const = 0;
  /// Scrolls so that this line is the first visible one, as far as the text goes.
  virtual void set_first_visible_line(int line) = 0;

  /// Stops painting (off) while the text is replaced and scrolled; calls come in pairs, off first.
  virtual void set_redraw(bool on) = 0;
  virtual void enable(bool on) = 0;  ///< the box and its scroll bar
  virtual bool enabled() const = 0;

  /// Sets the scroll bar's thumb, 0 to scroll_maximum.
  virtual void set_scroll_value(int value) = 0;
};

/// The range of the viewer's scroll bar.
inline constexpr int scroll_maximum = 100000;

/// What the viewer reports to the main window around it, and asks it. All calls come on the
/// window's thread, inside calls of the viewer.
class ViewerHost {
 public:
  virtual ~ViewerHost() = default;

  /// Serves pending events; false when the step under way is to be given up. Called before every
  /// chunk after the first.
  virtual bool go_on() = 0;

  /// Shows a box with an OK button and waits until it is closed.
  virtual void message(std::string_view prompt, std::string_view title, bool exclamation) = 0;
  virtual void beep() = 0;

  /// Shows the name and the facts of the file of this row, which has been opened.
  virtual void file_opened(std::size_t row) = 0;
  /// Shows that no file is in the viewer any more.
  virtual void viewer_cleared() = 0;
  /// Shows the corrected facts of the viewed row, and sorts the list again when its key is the date
  /// or the size. ResultList::viewed_index follows its file.
  virtual void row_corrected() = 0;
  /// Makes this row the selected one.
  virtual void select_row(std::size_t row) = 0;
};

}  // namespace tallowmere
