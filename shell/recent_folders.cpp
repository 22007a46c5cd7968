#include "shell/recent_folders.h"

#include "engine/file_system.h"
#include "engine/letter_case.h"
#include "engine/unicode.h"

namespace tallowmere {
namespace {

constexpr std::size_t longest_path = 32767;  ///< in UTF-16, what a path may be on Windows

std::string key(std::size_t place) {
  return "recent_folder" + std::to_string(place + 1);
}

}  // namespace

void RecentFolders::add(const std::string& folder) {
  if (folder.empty() || to_utf16(folder).size() > longest_path) return;
  const auto name = [](const std::string& path) { return name_key(with_separator(path)); };
  std::erase_if(folders_, [&](const std::string& other) { return name(other) == name(folder); });
  folders_.insert(folders_.begin(), folder);
  if (folders_.size() > most) folders_.pop_back();
}

void RecentFolders::load(SettingsStore& store) {
  for (std::size_t place = most; place > 0; --place) add(store.get_setting(key(place - 1)));
}

void RecentFolders::save(SettingsStore& store) const {
  for (std::size_t place = 0; place < most; ++place) {
    store.save_setting(key(place), place < folders_.size() ? folders_[place] : "");
  }
}

}  // namespace tallowmere
