#include "win32/sound.h"

#include <windows.h>

#include <mmsystem.h>

#include "win32/text.h"

namespace tallowmere::win32 {

bool has_wave_output() {
  return waveOutGetNumDevs() > 0;
}

void play_sound(const std::string& path) {
  PlaySoundW(wide(path).c_str(), nullptr, SND_FILENAME | SND_ASYNC | SND_NODEFAULT);
}

void beep() {
  MessageBeep(MB_OK);
}

}  // namespace tallowmere::win32
