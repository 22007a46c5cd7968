#include "shell/folder_text.h"

#include <algorithm>

#include "shell/start_folder.h"

namespace tallowmere {
namespace {

constexpr std::string_view blanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace

std::string path_from_text(std::string_view text, const PathPorts& ports) {
  std::string path(text);
  std::erase(path, '"');
  path = start_folder(ports.expand_variables(std::string(trimmed(path))));
  std::ranges::replace(path, '/', '\\');
  const bool small_drive = path.size() >= 2 && path[1] == ':' && path[0] >= 'a' && path[0] <= 'z';
  if (small_drive) path[0] = static_cast<char>(path[0] - 'a' + 'A');
  return is_whole_path(path) ? start_folder(ports.full_path(path)) : path;
}

bool is_whole_path(std::string_view path) {
  return path.starts_with("\\\\") || (path.size() >= 3 && path.substr(1, 2) == ":\\");
}

std::string folder_refused_message(const std::string& path, const SystemError& error) {
  return path + "\n\n" + error.text + ".\n\nCorrect the path, or choose a folder from the lists.";
}

std::string no_whole_path_message(const std::string& path) {
  return path +
         "\n\nType the whole path of a folder, such as C:\\Documents or \\\\server\\share, or "
         "choose one from the lists.";
}

}  // namespace tallowmere
