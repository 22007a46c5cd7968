#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "shell/settings_store.h"

namespace tallowmere {

/// The folders that were searched last, the latest first, each once.
class RecentFolders {
 public:
  static constexpr std::size_t most = 10;

  /// Puts the folder that a search begins in first.
  void add(const std::string& folder);
  const std::vector<std::string>& folders() const { return folders_; }

  void load(SettingsStore& store);
  void save(SettingsStore& store) const;

 private:
  std::vector<std::string> folders_;
};

}  // namespace tallowmere
