#include "app/folder_drop.h"

#include <utility>

#include "shell/folder_text.h"
#include "shell/start_folder.h"
#include "win32/dropped_files.h"

namespace tallowmere {

FolderDrop::FolderDrop(ActionHost& host, const FileSystem& files, SearchCriteria& search,
                       WindowNote& note, Window window)
    : host_(host),
      search_(search),
      note_(note),
      window_(std::move(window)),
      finder_(host.window(), files) {}

void FolderDrop::dropped(WPARAM drop) {
  const std::string path = win32::take_first_dropped(drop);
  if (path.empty() || !idle()) return;
  finder_.find([path](const FileSystem& files,
                      const auto& go_on) { return look_up_typed(files, path, go_on); },
               [this, path](FolderLookup&& lookup) { found(path, lookup); });
}

/// A search or a dialog that has begun meanwhile keeps its folder.
void FolderDrop::found(const std::string& path, const FolderLookup& lookup) {
  if (!idle()) return;
  if (lookup.error) {
    host_.message(path + "\n\n" + lookup.error->text + ".", folder_refused_title);
    return;
  }
  const std::string folder = start_folder(lookup.tree.path());
  set_search_folder(search_, folder);
  note_.folder_taken(folder);
  window_.note_changed();
}

}  // namespace tallowmere
