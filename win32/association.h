#pragma once

#include <string>
#include <string_view>

namespace tallowmere::win32 {

/// What the system's registry associates with an extension (without its dot): the class of such
/// files or, when wanted, the command that opens one of them. Empty when there is none.
std::string association_command(std::string_view ext, bool want_command);

}  // namespace tallowmere::win32
