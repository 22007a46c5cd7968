#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tallowmere::win32 {

/// What the system's registry associates with an extension (without its dot): the class of such
/// files or, when wanted, the command that opens one of them. Empty when there is none.
std::string association_command(std::string_view ext, bool want_command);

/// The program that the system itself would open a file of this extension with (without its dot),
/// whatever way that is registered: a command, its path alone, or no text when the system names
/// none, as of a program from its store. Nothing when it has no program for such files.
std::optional<std::string> system_association(std::string_view ext);

}  // namespace tallowmere::win32
