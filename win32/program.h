#pragma once

#include <string>

namespace tallowmere::win32 {

/// Returns the folder of the running program, with its final separator.
std::string program_folder();

/// Makes the system's folder the only one from which libraries come, so that nothing planted beside
/// a portable program is run. Must be called before any other function that may load a library.
void load_libraries_from_system();

}  // namespace tallowmere::win32
