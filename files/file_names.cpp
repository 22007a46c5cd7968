#include "files/file_names.h"

#include <algorithm>
#include <cstddef>

#include "engine/letter_case.h"
#include "engine/unicode.h"
#include "files/folder_tree.h"

namespace tallowmere {
namespace {

constexpr std::size_t longest_name = 255;  // in UTF-16 units
constexpr std::string_view slashes = "\\/";
constexpr std::string_view blanks = " \t";

constexpr std::string_view devices[] = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
constexpr std::string_view numbered_devices[] = {"COM", "LPT"};
constexpr std::string_view device_numbers[] = {"1", "2", "3", "4",        "5",        "6",
                                               "7", "8", "9", "\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};

/// True for a device's name, also with an extension: "nul.txt".
bool is_device(std::string_view name) {
  std::string stem = name_key(name.substr(0, name.find('.')));
  stem.erase(stem.find_last_not_of(' ') + 1);
  if (std::ranges::find(devices, stem) != std::end(devices)) return true;
  return std::ranges::any_of(numbered_devices, [&](std::string_view device) {
    return stem.starts_with(device) &&
           std::ranges::find(device_numbers, std::string_view(stem).substr(device.size())) !=
               std::end(device_numbers);
  });
}

bool is_control(char character) {
  return static_cast<unsigned char>(character) < ' ' || character == '\x7F';
}

bool is_slash(std::string_view text, std::size_t position) {
  return position < text.size() && slashes.find(text[position]) != std::string_view::npos;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t start = text.find_first_not_of(blanks);
  if (start == std::string_view::npos) return {};
  return text.substr(start, text.find_last_not_of(blanks) + 1 - start);
}

/// Removes the root from `text` and returns it; without one, the path goes on from `open`.
std::string take_root(const std::string& open, std::string_view& text, char separator) {
  if (text.size() >= 2 && text[1] == ':' && (text.size() == 2 || is_slash(text, 2))) {
    const std::string root{text[0], ':', separator};
    text.remove_prefix(std::min<std::size_t>(text.size(), 3));
    return root;
  }
  if (is_slash(text, 0) && is_slash(text, 1)) {
    text.remove_prefix(2);
    return std::string(2, separator);
  }
  if (is_slash(text, 0)) return folder_ancestry(open, separator).front().path;
  return open;
}

}  // namespace

std::string name_fault(std::string_view name) {
  if (name.empty()) return "Type a name.";
  if (name.find_first_of("<>:\"/\\|?*") != std::string_view::npos) {
    return "A name cannot contain any of the characters \\ / : * ? \" < > |";
  }
  if (std::ranges::any_of(name, is_control)) return "A name cannot contain control characters.";
  if (name.ends_with('.') || name.ends_with(' ')) {
    return "A name cannot end with a period or a space.";
  }
  if (is_device(name)) {
    return "Windows reserves the name \"" + std::string(name) + "\" for a device.";
  }
  if (to_utf16(name).size() > longest_name) {
    return "A name cannot be longer than " + std::to_string(longest_name) + " characters.";
  }
  return {};
}

TypedFolder typed_folder(const std::string& open_folder, std::string_view text, char separator) {
  text = trimmed(text);
  TypedFolder folder;
  folder.path = take_root(open_folder, text, separator);
  if (folder.path.empty()) folder.fault = "Choose a folder.";
  if (!folder.path.ends_with(separator)) folder.path += separator;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(slashes), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (part.empty()) continue;
    if (folder.fault.empty()) folder.fault = name_fault(part);
    folder.path.append(part) += separator;
  }
  return folder;
}

std::string_view name_stem(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? name : name.substr(0, dot);
}

}  // namespace tallowmere
