#pragma once

#include <string>

namespace tallowmere::win32 {

/// The folder of the running program, with its final separator.
std::string program_folder();

}  // namespace tallowmere::win32
