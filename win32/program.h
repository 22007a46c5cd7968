#pragma once

#include <string>

namespace tallowmere::win32 {

/// The folder of the running program, with its final separator.
std::string program_folder();

/// Makes the system's folder the only one that libraries come from: what is planted beside a
/// portable program is not run. To be called before any other function that may load one.
void load_libraries_from_system();

}  // namespace tallowmere::win32
