#pragma once

#include <windows.h>

#include <vector>

#include "engine/file_search.h"
#include "win32/controls.h"
#include "win32/form.h"
#include "win32/list_view.h"

namespace tallowmere {

/// Lists what a search could not read, to be copied or saved as text.
class frmUnread : public win32::Form {
 public:
  /// `unread` outlives the window and stays as it is.
  frmUnread(HWND owner, const std::vector<UnreadFile>& unread);

  /// Shows the window; returns when the user has closed it.
  void show() { show_modal(owner_); }

  bool pre_translate(MSG& message) override;

  win32::Label Label1;
  win32::ListView ListView1;
  win32::Button cmdCopy, cmdSave, cmdClose;

 protected:
  void on_shown() override;
  bool on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void on_dpi_changed(int before, int now) override;

 private:
  void place_controls() const;
  void limit_size(MINMAXINFO& limits) const;
  void answer(NMLVDISPINFOW& request) const;
  void cmdCopy_Click();
  void cmdSave_Click();

  HWND owner_;
  const std::vector<UnreadFile>& unread_;
};

}  // namespace tallowmere
