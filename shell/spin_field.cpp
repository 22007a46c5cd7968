#include "shell/spin_field.h"

#include <algorithm>
#include <cassert>

namespace tallowmere {

SpinField::SpinField(int min, int max, int value, SpinSteps steps)
    : min_(min), max_(max), value_(std::clamp(value, min, max)), steps_(steps) {}

int SpinField::value() const {
  return typing_ && !typed_.empty() ? std::clamp(std::stoi(typed_), min_, max_) : value_;
}

std::string SpinField::text() const {
  return typing_ ? typed_ : std::to_string(value_);
}

void SpinField::set_range(int min, int max) {
  const int kept = value();
  min_ = min;
  max_ = max;
  set_value(kept);
}

void SpinField::set_value(int value) {
  typing_ = false;
  typed_.clear();
  value_ = std::clamp(value, min_, max_);
}

void SpinField::key(SpinKey key) {
  switch (key) {
    case SpinKey::up:
      return change_by(steps_.arrow_key);
    case SpinKey::down:
      return change_by(-steps_.arrow_key);
    case SpinKey::page_up:
      return change_by(steps_.page_key);
    case SpinKey::page_down:
      return change_by(-steps_.page_key);
    case SpinKey::home:
      return set_value(min_);
    case SpinKey::end:
      return set_value(max_);
  }
}

void SpinField::arrow_click(int direction) {
  change_by(direction * steps_.mouse_arrow);
}

void SpinField::digit(int digit) {
  assert(digit >= 0 && digit <= 9);
  typing_ = true;
  typed_ += static_cast<char>('0' + digit);
  if (typed_.size() >= std::to_string(max_).size()) leave();
}

void SpinField::backspace() {
  if (!typing_) typed_ = std::to_string(value_);
  typing_ = true;
  if (!typed_.empty()) typed_.pop_back();
}

void SpinField::leave() {
  set_value(value());
}

void SpinField::change_by(int step) {
  set_value(value() + step);
}

}  // namespace tallowmere
