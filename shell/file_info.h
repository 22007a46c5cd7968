#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tallowmere {

/// The main window's caption, with the name of the viewed file or, for an empty name, without.
std::string window_caption(std::string_view filename);

/// What the label under the viewer says of its file: "1,234 bytes  5/20/2001 9:15:00 AM".
/// `separator` separates thousands, `moment` is the date and time as the user writes them.
std::string file_info_text(std::int64_t size, std::string_view separator, std::string_view moment);

}  // namespace tallowmere
