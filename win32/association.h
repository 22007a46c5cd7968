#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tallowmere::win32 {

/// Returns what the system's registry associates with an extension (without its dot): the class of
/// such files or, with `want_command`, the command that opens one. Empty when there is none.
std::string association_command(std::string_view ext, bool want_command);

/// Returns the program with which the system itself would open a file of this extension (without
/// its dot), however it is registered: a command, a path alone, or an empty text when the system
/// does not name it, as for a program from its store. Nothing when there is no such program.
std::optional<std::string> system_association(std::string_view ext);

}  // namespace tallowmere::win32
