#include <utility>

#include "app/Form1.h"
#include "app/window_placement.h"
#include "shell/start_folder.h"
#include "win32/dpi.h"
#include "win32/registry.h"
#include "win32/user_locale.h"

namespace tallowmere {

void Form1::Form_Load() {
  search_.match_case = false;
  load_settings(services_.settings, search_, shell_,
                {services_.program_folder, clock_.today(), win32::short_date_order()});
  apply_settings();
  for (std::size_t slot = 1; slot < search_.user_types.size(); ++slot) {
    search_.type_descriptions[slot] = win32::type_description(search_.user_types[slot]);
  }
  refresh_commands();
}

void Form1::apply_settings() {
  show_toggles();
  sort_menu_.check(shell_.sort_key);
  show_sort_order();
  // A face or size that the system refuses leaves the design's.
  const ShellState stored = std::exchange(shell_, {});
  viewer_font_.apply();
  shell_ = stored;
  viewer_font_.apply();
  ListView2.set_column_widths(shell_.column_widths, win32::window_dpi(handle()));
  apply_placement(handle(), shell_.placement);
  Form_Resize();
}

void Form1::set_start_folder(const std::string& folder) {
  set_search_folder(search_, folder);
}

/// Saves the settings; also called when the session of Windows ends, with the window still there.
void Form1::save() {
  shell_.sort_key = sort_menu_.sort_type();
  shell_.column_widths = ListView2.column_widths(win32::window_dpi(handle()));
  save_settings(services_.settings, search_, shell_, placement_to_store(handle()));
}

void Form1::Form_Unload() {
  save();
  DestroyWindow(handle());
  PostQuitMessage(0);
}

/// The close box, the system menu or another program asks the window to close.
void Form1::close() {
  if (!IsWindowEnabled(handle())) return;  // a dialog is open
  if (busy()) {
    mnuStop_Click();
    request(&Pending::close);
    return;
  }
  Form_Unload();
}

}  // namespace tallowmere
