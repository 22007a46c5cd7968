#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "engine/file_system.h"
#include "files/folder_tree.h"
#include "win32/controls.h"

namespace tallowmere {

/// `Dir1`: a list box of the ancestors of one open folder, the folder itself and its subfolders,
/// indented. A double click reaches the form as LBN_DBLCLK, and Enter does the same.
class FolderListBox : public win32::ListBox {
 public:
  FolderListBox() = default;
  ~FolderListBox();
  FolderListBox(const FolderListBox&) = delete;
  FolderListBox& operator=(const FolderListBox&) = delete;
  /// `list` is owner-drawn, with strings.
  void attach(HWND list, const FileSystem& files);

  /// The open folder, without a final separator except for a root; empty before the first open().
  std::string path() const;
  /// On failure the list stays as it was.
  std::optional<SystemError> open(const std::string& path);
  /// Opens the folder of the selected row.
  std::optional<SystemError> open_selected();

  /// The form hands on WM_DRAWITEM.
  void draw(const DRAWITEMSTRUCT& item) const;

 private:
  static LRESULT CALLBACK list_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                    UINT_PTR id, DWORD_PTR box);
  void show_rows() const;
  /// Rows as high as the font asks for.
  void fit_rows() const;

  const FileSystem* files_ = nullptr;
  FolderTree tree_;
};

}  // namespace tallowmere
