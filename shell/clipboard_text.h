#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallowmere {

/// The clipboard's text with the selected text directly after it; nothing when both together have
/// 65000 characters (UTF-16 units) or more.
std::optional<std::string> appended_text(std::string_view clipboard, std::string_view selected);

/// One path as it is; several with a line break after each.
std::string copied_names_text(const std::vector<std::string>& paths);

}  // namespace tallowmere
