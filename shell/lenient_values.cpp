#include "shell/lenient_values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tallowmere {
namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

bool is_blank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool is_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Reads a number piece by piece. Digits beyond those a double holds only count as places.
class NumberReader {
 public:
  explicit NumberReader(std::string_view text) : text_(text) {}

  double read() {
    while (at_ < text_.size() && is_blank(text_[at_])) ++at_;
    const bool negative = take_sign();
    read_digits(0);
    if (take('.')) read_digits(-1);
    if (any_digits_) read_exponent();
    const double value = scaled();
    return negative ? -value : value;
  }

 private:
  bool take(char c) {
    const bool there = at_ < text_.size() && text_[at_] == c;
    if (there) ++at_;
    return there;
  }

  /// True for a minus sign.
  bool take_sign() {
    const bool negative = take('-');
    if (!negative) take('+');
    return negative;
  }

  void read_digits(int places_per_digit) {
    for (; at_ < text_.size() && is_digit(text_[at_]); ++at_) {
      any_digits_ = true;
      if (mantissa_ < 1e15) {
        mantissa_ = mantissa_ * 10 + (text_[at_] - '0');
        exponent_ += places_per_digit;
      } else {
        exponent_ += places_per_digit + 1;
      }
    }
  }

  void read_exponent() {
    if (at_ == text_.size() || (text_[at_] != 'e' && text_[at_] != 'E')) return;
    ++at_;
    const bool negative = take_sign();
    std::int64_t exponent = 0;
    for (; at_ < text_.size() && is_digit(text_[at_]); ++at_) {
      exponent = std::min<std::int64_t>(exponent * 10 + (text_[at_] - '0'), 1'000'000'000);
    }
    exponent_ += negative ? -exponent : exponent;
  }

  double scaled() const {
    if (mantissa_ == 0) return 0;
    if (exponent_ < 0) return mantissa_ / std::pow(10.0, static_cast<double>(-exponent_));
    const double value = mantissa_ * std::pow(10.0, static_cast<double>(exponent_));
    return std::min(value, std::numeric_limits<double>::max());
  }

  std::string_view text_;
  std::size_t at_ = 0;
  double mantissa_ = 0;
  std::int64_t exponent_ = 0;
  bool any_digits_ = false;
};

double rounded_half_to_even(double number) {
  const double below = std::floor(number);
  const double part = number - below;
  if (part != 0.5) return part < 0.5 ? below : below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

/// A run of digits in a date.
struct DatePart {
  int value = 0;
  int digits = 0;
};

constexpr int most_digits = 4;

/// Takes the next run of digits; false when letters come before it, or it is missing or too long.
bool take_date_part(std::string_view text, std::size_t& at, DatePart& part) {
  while (at < text.size() && !is_digit(text[at])) {
    if (is_letter(text[at])) return false;
    ++at;
  }
  for (; at < text.size() && is_digit(text[at]) && part.digits <= most_digits; ++at) {
    part.value = part.value * 10 + (text[at] - '0');
    ++part.digits;
  }
  return part.digits > 0 && part.digits <= most_digits;
}

int full_year(const DatePart& year) {
  if (year.digits > 2) return year.value;
  return year.value < 30 ? 2000 + year.value : 1900 + year.value;
}

Date date_of(const std::array<DatePart, 3>& parts, DateOrder order) {
  if (parts[0].digits > 2) order = DateOrder::year_month_day;
  switch (order) {
    case DateOrder::month_day_year:
      return {full_year(parts[2]), parts[0].value, parts[1].value};
    case DateOrder::day_month_year:
      return {full_year(parts[2]), parts[1].value, parts[0].value};
    case DateOrder::year_month_day:
      break;
  }
  return {full_year(parts[0]), parts[1].value, parts[2].value};
}

std::string padded(int number, std::size_t width) {
  std::string digits = std::to_string(number);
  return std::string(width - std::min(width, digits.size()), '0') + digits;
}

}  // namespace

double lenient_number(std::string_view text) {
  return NumberReader(text).read();
}

int lenient_integer(std::string_view text) {
  constexpr double lowest = std::numeric_limits<int>::min();
  constexpr double highest = std::numeric_limits<int>::max();
  return static_cast<int>(rounded_half_to_even(std::clamp(lenient_number(text), lowest, highest)));
}

bool lenient_date(std::string_view text, DateOrder order, Date& date) {
  std::array<DatePart, 3> parts;
  std::size_t at = 0;
  for (DatePart& part : parts) {
    if (!take_date_part(text, at, part)) return false;
  }
  const Date read = date_of(parts, order);
  if (read.year < 100 || !is_valid(read)) return false;
  date = read;
  return true;
}

std::string iso_date(const Date& date) {
  return padded(date.year, 4) + '-' + padded(date.month, 2) + '-' + padded(date.day, 2);
}

}  // namespace tallowmere
