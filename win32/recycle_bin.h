#pragma once

#include <windows.h>

#include <shellapi.h>

#include <map>
#include <optional>
#include <string>

#include "engine/file_system.h"

namespace tallowmere::win32 {

/// Recycles silently unless a file is too big for the bin. FOF_NO_CONNECTED_ELEMENTS: a folder that
/// belongs to a page by its name, as "page_files" to "page.htm", stays.
inline constexpr FILEOP_FLAGS recycling_flags = FOF_ALLOWUNDO | FOF_NOCONFIRMATION |
                                                FOF_WANTNUKEWARNING | FOF_SILENT | FOF_NOERRORUI |
                                                FOF_NO_CONNECTED_ELEMENTS;

/// The Recycle Bins of the volumes. Asks about each volume once, so an object is for one command.
class RecycleBin {
 public:
  /// The system's question, when a file is too big for its bin, appears over `owner`.
  explicit RecycleBin(HWND owner) : owner_(owner) {}

  /// True when the volume has a bin, the user has not turned it off, and the shell, which knows no
  /// long paths and trims names, can find the file.
  bool takes(const std::string& path);

  /// Moves a file that the bin takes into it. Nothing is deleted for good unless the user agrees to
  /// it when the system asks.
  std::optional<SystemError> put(const std::string& path);

 private:
  HWND owner_;
  std::map<std::wstring, bool> volumes_;  ///< whether they have a bin, by root
};

}  // namespace tallowmere::win32
