#include "shell/clipboard_text.h"

#include <cstddef>

#include "engine/unicode.h"

namespace tallowmere {
namespace {

/// Characters (UTF-16 units, as the viewer counts) that an appended clipboard text stays below.
constexpr std::size_t append_limit = 65000;

}  // namespace

std::optional<std::string> appended_text(std::string_view clipboard, std::string_view selected) {
  const std::size_t length = to_utf16(clipboard).size() + to_utf16(selected).size();
  if (length >= append_limit) return std::nullopt;
  return std::string(clipboard).append(selected);
}

std::string copied_names_text(const std::vector<std::string>& paths) {
  if (paths.size() == 1) return paths.front();
  std::string text;
  for (const std::string& path : paths) text.append(path).append("\r\n");
  return text;
}

}  // namespace tallowmere
