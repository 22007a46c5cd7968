#pragma once

#include <string>

namespace tallowmere {

enum class SpinKey { up, down, page_up, page_down, home, end };

struct SpinSteps {
  int arrow_key = 1;
  int page_key = 10;
  int mouse_arrow = 1;
};

/// The value of a spin field: a number in a box, changed by arrows, keys and typed digits.
class SpinField {
 public:
  SpinField(int min, int max, int value, SpinSteps steps = {});

  /// Always within the range, also while digits are being typed.
  int value() const;
  int min() const { return min_; }
  int max() const { return max_; }

  /// The text of the box: the digits being typed, which may still be below the range, or the value.
  std::string text() const;

  void set_range(int min, int max);
  void set_value(int value);

  void key(SpinKey key);
  /// Takes one click on the upper (+1) or lower (-1) arrow.
  void arrow_click(int direction);
  /// Takes one typed digit, 0 to 9. A number as wide as the maximum is complete: it is fitted into
  /// the range and the next digit starts a new one.
  void digit(int digit);
  void backspace();
  /// The focus leaves: what was typed is fitted into the range; a field left empty takes back the
  /// value it had.
  void leave();

 private:
  void change_by(int step);

  int min_;
  int max_;
  int value_;
  SpinSteps steps_;
  bool typing_ = false;
  std::string typed_;  ///< digits only, shorter than the maximum
};

}  // namespace tallowmere
