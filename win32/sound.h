#pragma once

#include <string>

namespace tallowmere::win32 {

bool has_wave_output();
/// Starts a wave file and returns; nothing is heard when it cannot be played.
void play_sound(const std::string& path);
void beep();

}  // namespace tallowmere::win32
