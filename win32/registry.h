#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

#include "shell/settings_store.h"

namespace tallowmere::win32 {

/// An open key of the registry.
class RegistryKey {
 public:
  /// Opens the key, only for reading when the system refuses some of the `rights`. A key that
  /// cannot be opened has no values.
  RegistryKey(HKEY root, const std::wstring& path, REGSAM rights = KEY_QUERY_VALUE);
  ~RegistryKey();
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;

  struct Value {
    DWORD type = REG_NONE;
    std::wstring text;  ///< up to its first NUL, whatever the type
  };
  /// Returns the value `name` (the default one when empty); nothing when it is missing or takes
  /// more than `most_bytes`.
  std::optional<Value> value(const std::wstring& name, DWORD most_bytes = MAXDWORD) const;
  /// Returns the value `name`; nothing when it is missing or not a string.
  std::optional<std::string> string_value(const std::wstring& name) const;

 private:
  HKEY key_ = nullptr;
};

/// Settings as string values of one key of the current user.
class RegistrySettings : public SettingsStore {
 public:
  /// Keeps settings at `path` below HKEY_CURRENT_USER; tests use their own.
  explicit RegistrySettings(std::wstring path = L"Software\\Tallowmere\\Startup");

  std::string get_setting(std::string_view key) override;
  void save_setting(std::string_view key, const std::string& value) override;

 private:
  std::wstring path_;
};

/// Returns what the system calls files with this extension (without its dot), for example "Text
/// Document" for txt; empty when it has no name for them.
std::string type_description(std::string_view extension);

}  // namespace tallowmere::win32
