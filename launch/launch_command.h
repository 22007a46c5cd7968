#pragma once

#include <string>
#include <string_view>

namespace tallowmere {

/// What follows the last "\\" of a path.
std::string file_name(std::string_view path);

/// What follows the last "." of the file's name, as it is written; empty without one.
std::string file_extension(std::string_view path);

/// A program is run itself, any other file is opened in its application. Only "exe" in lower case
/// makes a program: REPORT.EXE is a data file.
bool is_program(std::string_view extension);

/// True for a file that does something itself when the system opens it: programs, scripts,
/// installers, and what leads to any of these.
bool runs_when_opened(std::string_view extension);

/// The program in an association's command: without its leading double quote, its extension and its
/// arguments. The command is cut before the first ".exe", else before the first ".EXE". A command
/// with neither is cut before any other spelling of it, else at its next double quote; so what it
/// names is still one program.
std::string program_path(std::string_view command);

/// The text after the last "\", in lower case: the name by which the key scripts know a program.
std::string app_base_name(std::string_view command);

/// The file that the system is told to start, apart from the command line: otherwise a blank in the
/// name of a folder would let it try, for "C:\Program Files\x", "C:\Program.exe" first.
std::string program_file(std::string_view program);

/// The command line for a data file: program, blank, path in double quotes.
std::string data_command_line(std::string_view program, std::string_view path);

/// The command line for a program: its own path.
std::string program_command_line(std::string_view path);

}  // namespace tallowmere
