#include "app/window_sounds.h"

#include "engine/letter_case.h"

namespace tallowmere {

WindowSounds::WindowSounds(const std::string& program_folder)
    : end_sound_(program_folder + "s_done.wav") {}

void WindowSounds::search_ended() const {
  if (has_wave_output_) {
    win32::play_sound(end_sound_);
  } else {
    win32::beep();
  }
}

bool WindowSounds::is_sound_file(std::string_view name) {
  return name_key(name).ends_with("WAV");
}

void WindowSounds::play(const std::string& path) const {
  if (has_wave_output_) win32::play_sound(path);
}

}  // namespace tallowmere
