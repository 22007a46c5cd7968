#include "win32/keystrokes.h"

#include <windows.h>

#include <string>
#include <vector>

#include "engine/unicode.h"

namespace tallowmere::win32 {
namespace {

INPUT key_input(WORD virtual_key, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = virtual_key;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(virtual_key, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = flags;
  return input;
}

INPUT character_input(char16_t unit, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wScan = unit;
  input.ki.dwFlags = KEYEVENTF_UNICODE | flags;
  return input;
}

/// Returns the key that makes the character on the user's keyboard; on one without it, such as a
/// Cyrillic one, the key that has it elsewhere.
WORD virtual_key(char32_t character) {
  const SHORT key = VkKeyScanW(static_cast<wchar_t>(character));
  if (key != -1) return LOBYTE(key);
  const bool lower = character >= U'a' && character <= U'z';
  return static_cast<WORD>(lower ? character - U'a' + U'A' : character);
}

void add_character(std::vector<INPUT>& inputs, char32_t character) {
  std::string text;
  append_utf8(text, character);
  for (const char16_t unit : to_utf16(text)) {
    inputs.push_back(character_input(unit, 0));
    inputs.push_back(character_input(unit, KEYEVENTF_KEYUP));
  }
}

void add_key(std::vector<INPUT>& inputs, WORD key, const KeyEvent& event) {
  std::vector<WORD> held;
  if (event.ctrl) held.push_back(VK_CONTROL);
  if (event.alt) held.push_back(VK_MENU);
  if (event.shift) held.push_back(VK_SHIFT);
  held.push_back(key);
  for (const WORD each : held) inputs.push_back(key_input(each, 0));
  for (auto each = held.rbegin(); each != held.rend(); ++each) {
    inputs.push_back(key_input(*each, KEYEVENTF_KEYUP));
  }
}

void add_inputs(std::vector<INPUT>& inputs, const KeyEvent& event) {
  switch (event.key) {
    case NamedKey::enter:
      return add_key(inputs, VK_RETURN, event);
    case NamedKey::escape:
      return add_key(inputs, VK_ESCAPE, event);
    case NamedKey::f4:
      return add_key(inputs, VK_F4, event);
    case NamedKey::none:
      break;
  }
  if (event.writes()) return add_character(inputs, event.character);
  add_key(inputs, virtual_key(event.character), event);
}

}  // namespace

void press_key(const KeyEvent& event) {
  std::vector<INPUT> inputs;
  add_inputs(inputs, event);
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

bool modifier_is_down() {
  for (const int key : {VK_SHIFT, VK_CONTROL, VK_MENU, VK_LWIN, VK_RWIN}) {
    if (GetAsyncKeyState(key) < 0) return true;
  }
  return false;
}

}  // namespace tallowmere::win32
