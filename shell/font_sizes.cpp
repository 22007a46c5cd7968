#include "shell/font_sizes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tallowmere {
namespace {

/// In points, what users choose from and step through.
constexpr std::array<double, 18> usual_sizes{6,  7,  8,  9,  10, 11, 12, 14, 16,
                                             18, 20, 22, 24, 26, 28, 36, 48, 72};

/// One pixel on a screen of 96 dots per inch: from 9.75 points, 10 would look the same.
constexpr double visible_step = 0.75;

}  // namespace

double larger_size(double points) {
  if (points < usual_sizes.front()) return usual_sizes.front();
  for (const double size : usual_sizes) {
    if (size >= points + visible_step) return size;
  }
  return usual_sizes.back();
}

double smaller_size(double points) {
  if (points > usual_sizes.back()) return usual_sizes.back();
  for (auto size = usual_sizes.rbegin(); size != usual_sizes.rend(); ++size) {
    if (*size <= points - visible_step) return *size;
  }
  return usual_sizes.front();
}

std::vector<double> offered_sizes(double points) {
  std::vector<double> sizes(usual_sizes.begin(), usual_sizes.end());
  if (!std::isfinite(points) || points <= 0) return sizes;
  const auto place = std::lower_bound(sizes.begin(), sizes.end(), points);
  if (place == sizes.end() || *place != points) sizes.insert(place, points);
  return sizes;
}

std::string size_text(double points) {
  char text[32];  // six digits, a point, a sign and an exponent at most
  const auto end = std::to_chars(text, text + sizeof text, points, std::chars_format::general, 6);
  return std::string(text, end.ptr);
}

}  // namespace tallowmere
