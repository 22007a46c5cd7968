#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "engine/date_time.h"
#include "engine/file_system.h"
#include "engine/search_criteria.h"
#include "shell/recent_folders.h"

namespace tallowmere {

/// What the dialogs share with the main window, which owns all of it and outlives them.
struct DialogContext {
  SearchCriteria& search;
  const FileSystem& files;
  const Clock& clock;
  /// A day in the user's short date form.
  std::function<std::string(const Date&)> short_date;
  /// What the system calls files with this extension; empty when it knows none.
  std::function<std::string(std::string_view)> type_description;
  /// Its drive is the one to fall back to when a saved folder has vanished.
  std::string program_folder;
  /// The one cancel flag: the outcome of the dialog closed last.
  bool& cancelled;
  const RecentFolders& recent_folders;
};

}  // namespace tallowmere
