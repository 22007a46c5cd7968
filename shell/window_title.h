#pragma once

#include <string_view>

namespace tallowmere {

/// How well a window's title fits the wanted one, the worst first.
enum class TitleMatch { none, ends_with, begins_with, exact };

/// Without regard to case.
TitleMatch match_title(std::string_view title, std::string_view wanted);

}  // namespace tallowmere
