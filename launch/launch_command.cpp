#include "launch/launch_command.h"

#include <algorithm>

#include "engine/letter_case.h"

namespace tallowmere {
namespace {

constexpr std::string_view program_extension = ".exe";

bool same_ascii_letter(char a, char b) {
  return to_lower(static_cast<unsigned char>(a)) == to_lower(static_cast<unsigned char>(b));
}

/// Returns where the program's extension begins, or the arguments of a command without one.
std::size_t program_end(std::string_view command) {
  for (const std::string_view spelling : {program_extension, std::string_view(".EXE")}) {
    const std::size_t found = command.find(spelling);
    if (found != std::string_view::npos) return found;
  }
  const auto* any_case = std::search(command.begin(), command.end(), program_extension.begin(),
                                     program_extension.end(), same_ascii_letter);
  if (any_case != command.end()) return static_cast<std::size_t>(any_case - command.begin());
  return std::min(command.find('"', 1), command.size());
}

/// Quotes a program with a space in its path, as the system itself does: otherwise the program
/// would take the rest of its own path for an argument.
std::string as_first_word(std::string_view program) {
  if (program.find(' ') == std::string_view::npos) return std::string(program);
  return "\"" + std::string(program) + "\"";
}

}  // namespace

std::string file_name(std::string_view path) {
  return std::string(path.substr(path.rfind('\\') + 1));
}

std::string file_extension(std::string_view path) {
  const std::string name = file_name(path);
  const std::size_t dot = name.rfind('.');
  return dot == std::string::npos ? "" : name.substr(dot + 1);
}

bool is_program(std::string_view extension) {
  return extension == "exe";
}

bool runs_when_opened(std::string_view extension) {
  constexpr std::string_view types[] = {"exe", "bat", "cmd", "com", "js",  "jse", "vbs",
                                        "vbe", "wsf", "wsh", "hta", "ps1", "scr", "pif",
                                        "msi", "lnk", "url", "reg", "cpl"};
  return std::ranges::any_of(types, [extension](std::string_view type) {
    return std::ranges::equal(type, extension, same_ascii_letter);
  });
}

std::string program_path(std::string_view command) {
  std::string_view program = command.substr(0, program_end(command));
  if (program.starts_with('"')) program.remove_prefix(1);
  while (program.ends_with(' ')) program.remove_suffix(1);
  return std::string(program);
}

std::string app_base_name(std::string_view command) {
  return lower_case(file_name(command));
}

std::string program_file(std::string_view program) {
  return std::string(program).append(program_extension);
}

std::string data_command_line(std::string_view program, std::string_view path) {
  return as_first_word(program).append(" \"").append(path).append("\"");
}

std::string program_command_line(std::string_view path) {
  return as_first_word(path);
}

}  // namespace tallowmere
