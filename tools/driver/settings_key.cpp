#include "tools/driver/settings_key.h"

#include <windows.h>

#include "tools/driver/text.h"

namespace tallowmere::driver {

namespace {

constexpr const wchar_t* key_path = L"Software\\Tallowmere\\Startup";

}  // namespace

void SettingsKey::clear() const {
  RegDeleteTreeW(HKEY_CURRENT_USER, key_path);
}

void SettingsKey::set(std::string_view name, std::string_view value) const {
  const std::wstring text = to_wide(value);
  RegSetKeyValueW(HKEY_CURRENT_USER, key_path, to_wide(name).c_str(), REG_SZ, text.c_str(),
                  static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

std::string SettingsKey::get(std::string_view name) const {
  wchar_t text[4096];
  DWORD bytes = sizeof text;
  if (RegGetValueW(HKEY_CURRENT_USER, key_path, to_wide(name).c_str(), RRF_RT_REG_SZ, nullptr, text,
                   &bytes) != ERROR_SUCCESS) {
    return {};
  }
  return from_wide(text);
}

}  // namespace tallowmere::driver
