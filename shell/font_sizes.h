#pragma once

#include <array>
#include <string>
#include <vector>

namespace tallowmere {

/// The sizes of text, in points, that users choose from and step through.
inline constexpr std::array<double, 18> usual_font_sizes{6,  7,  8,  9,  10, 11, 12, 14, 16,
                                                         18, 20, 22, 24, 26, 28, 36, 48, 72};

/// The usual size one visible step above or below `points`, which may be any number; at the end of
/// the range, the last one.
double larger_size(double points);
double smaller_size(double points);

/// The usual sizes and, in its place among them, `points` where it is another size.
std::vector<double> offered_sizes(double points);

/// A size as users read it: "10", "9.75".
std::string size_text(double points);

}  // namespace tallowmere
