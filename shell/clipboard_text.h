#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallowmere {

/// The clipboard's text with the selected text directly behind it; nothing when that would be too
/// long.
std::optional<std::string> appended_text(std::string_view clipboard, std::string_view selected);

/// One path as it is; several with a line break behind each.
std::string copied_names_text(const std::vector<std::string>& paths);

}  // namespace tallowmere
