#include "app/Form1.h"
#include "app/resource.h"
#include "app/window_placement.h"
#include "win32/dpi.h"
#include "win32/registry.h"
#include "win32/sound.h"
#include "win32/user_locale.h"

namespace tallowmere {

void Form1::Form_Load() {
  ListView2.set_design_widths(win32::window_dpi(handle()));
  search_.ignore_case = true;
  ShellState shell;
  load_settings(services_.settings, search_, shell,
                {services_.program_folder, clock_.today(), win32::short_date_order()});
  apply_settings(shell);
  for (std::size_t slot = 1; slot < search_.user_types.size(); ++slot) {
    search_.type_descriptions[slot] = win32::type_description(search_.user_types[slot]);
  }
  has_wave_output_ = win32::has_wave_output();
  refresh_commands();
}

void Form1::apply_settings(const ShellState& shell) {
  const HMENU menu = GetMenu(handle());
  win32::check_entry(menu, ID_MNUSOUNDON, shell.sound_on);
  win32::check_entry(menu, ID_MNUMINIMIZEON, shell.minimize_on);
  win32::check_entry(menu, ID_MNUFINDONLAUNCH, shell.find_on_launch);
  sort_menu_.check(shell.sort_key);
  show_sort_order();
  const ShellState design;
  font_name_ = design.font_name;
  font_size_ = design.font_size;
  apply_viewer_font();
  font_name_ = shell.font_name;
  font_size_ = shell.font_size;
  apply_viewer_font();
  apply_placement(handle(), shell.placement);
  Form_Resize();
}

void Form1::set_start_folder(const std::string& folder) {
  search_.path = folder;
  if (folder.size() >= 2 && folder[1] == ':') search_.drive = folder.substr(0, 2) + path_separator;
}

ShellState Form1::current_settings() const {
  ShellState shell;
  shell.sound_on = is_checked(ID_MNUSOUNDON);
  shell.minimize_on = is_checked(ID_MNUMINIMIZEON);
  shell.find_on_launch = is_checked(ID_MNUFINDONLAUNCH);
  shell.sort_key = sort_menu_.sort_type();
  shell.font_name = font_name_;
  shell.font_size = font_size_;
  return shell;
}

/// Also called when the session of Windows ends, with the window still there.
void Form1::save() {
  save_settings(services_.settings, search_, current_settings(), placement_to_store(handle()));
}

void Form1::Form_Unload() {
  services_.files.close();
  save();
  DestroyWindow(handle());
  PostQuitMessage(0);
}

/// The close box, the system menu, or another program's wish.
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
