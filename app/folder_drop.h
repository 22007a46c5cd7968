#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "actions/action_host.h"
#include "dialogs/folder_finder.h"
#include "engine/file_system.h"
#include "engine/search_criteria.h"
#include "shell/window_note.h"

namespace tallowmere {

/// Takes what is dropped on the main window while it is idle: a folder, or a file's folder, becomes
/// the one to search. No dialog opens.
class FolderDrop {
 public:
  struct Window {
    std::function<bool()> idle;  ///< no search is under way
    std::function<void()> note_changed;
  };

  /// `files` lives until the program ends, the others outlive this. A disk that does not answer is
  /// not waited for.
  FolderDrop(ActionHost& host, const FileSystem& files, SearchCriteria& search, WindowNote& note,
             Window window);

  /// WM_DROPFILES has come with this wParam.
  void dropped(WPARAM drop);

 private:
  bool idle() const { return IsWindowEnabled(host_.window()) && window_.idle(); }
  void found(const std::string& path, const FolderLookup& lookup);

  ActionHost& host_;
  SearchCriteria& search_;
  WindowNote& note_;
  const Window window_;
  FolderFinder finder_;
};

}  // namespace tallowmere
