#pragma once

#include <string>
#include <string_view>

namespace tallowmere {

/// Returns what follows the last "\\" of a path.
std::string file_name(std::string_view path);

/// Returns what follows the last "." of the file's name, as it is written; empty without one.
std::string file_extension(std::string_view path);

/// True for a program, which is run itself; any other file is opened in its application. Only "exe"
/// in lower case makes a program: REPORT.EXE is a data file.
bool is_program(std::string_view extension);

/// True for a file that does something itself when the system opens it: programs, scripts,
/// installers, and files that lead to any of these.
bool runs_when_opened(std::string_view extension);

/// Returns the program in an association's command, without its leading double quote, its extension
/// and its arguments. The command is cut before the first ".exe", else before the first ".EXE". A
/// command with neither is cut before any other spelling of it, else at its next double quote, so
/// that it still names one program.
std::string program_path(std::string_view command);

/// Returns the text after the last "\" in lower case, by which the key scripts know a program.
std::string app_base_name(std::string_view command);

/// Returns the file for the system to start. It is given apart from the command line: otherwise,
/// for "C:\Program Files\x", the space would make the system try "C:\Program.exe" first.
std::string program_file(std::string_view program);

/// Returns the command line for a data file: program, space, path in double quotes.
std::string data_command_line(std::string_view program, std::string_view path);

/// Returns the command line for a program: its own path.
std::string program_command_line(std::string_view path);

}  // namespace tallowmere
