#pragma once

#include <windows.h>

#include <string>

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
  void attach(HWND list);

  /// The open folder, without a final separator except for a root; empty before the first open().
  std::string path() const;
  /// The folder of the selected row; empty without one.
  std::string selected_path() const;
  void show(FolderTree tree);
  /// Shows a single row, which says that a folder is awaited; show_rows() brings the others back.
  void show_waiting();
  void show_rows();

  /// The form hands on WM_DRAWITEM.
  void draw(const DRAWITEMSTRUCT& item) const;

 private:
  static LRESULT CALLBACK list_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                    UINT_PTR id, DWORD_PTR box);
  /// Rows as high as the font asks for.
  void fit_rows() const;

  FolderTree tree_;
  bool waiting_ = false;
};

}  // namespace tallowmere
