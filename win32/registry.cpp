#include "win32/registry.h"

#include <algorithm>
#include <utility>

#include "win32/text.h"

namespace tallowmere::win32 {

RegistryKey::RegistryKey(HKEY root, const std::wstring& path, REGSAM rights) {
  LSTATUS status = RegOpenKeyExW(root, path.c_str(), 0, rights, &key_);
  if (status == ERROR_ACCESS_DENIED && rights != KEY_QUERY_VALUE) {
    status = RegOpenKeyExW(root, path.c_str(), 0, KEY_QUERY_VALUE, &key_);
  }
  if (status != ERROR_SUCCESS) key_ = nullptr;
}

RegistryKey::~RegistryKey() {
  if (key_ != nullptr) RegCloseKey(key_);
}

std::optional<RegistryKey::Value> RegistryKey::value(const std::wstring& name,
                                                     DWORD most_bytes) const {
  if (key_ == nullptr) return std::nullopt;
  Value value;
  std::wstring& text = value.text;
  // Another program may lengthen the value between asking for its size and reading it.
  for (DWORD bytes = 0;;) {
    text.resize((bytes + 1) / sizeof(wchar_t));
    const LSTATUS status = RegQueryValueExW(key_, name.c_str(), nullptr, &value.type,
                                            reinterpret_cast<BYTE*>(text.data()), &bytes);
    if (status != ERROR_SUCCESS && status != ERROR_MORE_DATA) return std::nullopt;
    if (bytes > most_bytes) return std::nullopt;
    if (status == ERROR_SUCCESS && bytes <= text.size() * sizeof(wchar_t)) {
      text.resize(std::min<std::size_t>(bytes / sizeof(wchar_t), text.find(L'\0')));
      return value;
    }
  }
}

std::optional<std::string> RegistryKey::string_value(const std::wstring& name) const {
  const std::optional<Value> found = value(name);
  if (!found || found->type != REG_SZ) return std::nullopt;
  return narrow(found->text);
}

RegistrySettings::RegistrySettings(std::wstring path) : path_(std::move(path)) {}

std::string RegistrySettings::get_setting(std::string_view key) {
  return RegistryKey(HKEY_CURRENT_USER, path_).string_value(wide(key)).value_or("");
}

void RegistrySettings::save_setting(std::string_view key, const std::string& value) {
  HKEY opened = nullptr;
  if (RegCreateKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                      &opened, nullptr) != ERROR_SUCCESS) {
    return;
  }
  const std::wstring text = wide(value);
  RegSetValueExW(opened, wide(key).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                 static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(opened);
}

std::string type_description(std::string_view extension) {
  if (extension.empty()) return {};
  const RegistryKey association(HKEY_CLASSES_ROOT, L"." + wide(extension));
  const std::string file_class = association.string_value(L"").value_or("");
  if (file_class.empty()) return {};
  return RegistryKey(HKEY_CLASSES_ROOT, wide(file_class)).string_value(L"").value_or("");
}

}  // namespace tallowmere::win32
