#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

#include "dialogs/help_drawing.h"
#include "help/help_pages.h"
#include "win32/controls.h"
#include "win32/form.h"

namespace tallowmere {

/// A screen that shows one help page: a column of paragraphs and topics, the answer of the topic
/// clicked last beside it, and "Exit". Topics are real buttons that look like links.
class HelpScreen : public win32::Form {
 public:
  HelpScreen(HWND owner, const HelpPage& page);

  /// Shows the screen over `owner`, centred over the main window, until the user leaves it.
  void show(HWND owner, HWND main_window);

  bool pre_translate(MSG& message) override;

  /// The topics and links of the page, in its order.
  const std::vector<win32::Button>& topics() const { return topics_; }
  const std::vector<win32::Label>& paragraphs() const { return paragraphs_; }
  /// Whether the topic has been clicked, as its colour shows.
  bool visited(std::size_t topic) const { return visited_[topic]; }

  win32::Label lblPopup;
  win32::Button Command1;

 protected:
  bool on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void on_dpi_changed(int, int) override { arrange(); }
  /// A link to another screen was clicked.
  virtual void link_Click() {}

 private:
  void create_items();
  // Places and sizes, in pixels: these follow the form's font.
  void arrange();
  int place_items(const MeasuringCanvas& canvas);
  int tallest_answer(const MeasuringCanvas& canvas) const;
  SIZE answer_size(const MeasuringCanvas& canvas, const HelpItem& item) const;
  SIZE pixels(int horizontal_units, int vertical_units) const;
  void show_answer(std::size_t topic);
  bool draw_item(const DRAWITEMSTRUCT& draw) const;
  /// The topic that a control is; the number of topics when it is none.
  std::size_t topic_of(HWND control) const;

  void topic_Click(std::size_t topic);
  void form_click();
  void lblPopup_Click();
  void Command1_Click();
  void Escape_KeyDown();

  HelpPage page_;
  win32::Font link_font_;
  std::vector<HWND> controls_;  ///< one for each item of the page
  std::vector<const HelpItem*> topic_items_;
  std::vector<win32::Button> topics_;
  std::vector<win32::Label> paragraphs_;
  std::vector<bool> visited_;
  RECT answer_area_{};
};

}  // namespace tallowmere
