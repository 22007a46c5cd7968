#pragma once

#include <string>
#include <vector>

namespace tallowmere {

/// The usual size one visible step above or below `points`, which may be any number; at the end of
/// the range, the last one.
double larger_size(double points);
double smaller_size(double points);

/// The usual sizes and, in its place among them, `points` where it is another size.
std::vector<double> offered_sizes(double points);

/// A size as users read it: "10", "9.75".
std::string size_text(double points);

}  // namespace tallowmere
