#include "win32/association.h"

#include <windows.h>

#include <shlwapi.h>

#include "win32/text.h"

namespace tallowmere::win32 {
namespace {

constexpr DWORD buffer_length = 1024;  // characters; a longer value counts as none

/// Reading control and every right that a key has.
constexpr REGSAM all_rights = 0x2003F;

class ClassesKey {
 public:
  /// Users who may only read the classes of all users are refused the other rights.
  explicit ClassesKey(const std::wstring& path) {
    if (open(path, all_rights) == ERROR_ACCESS_DENIED) open(path, KEY_QUERY_VALUE);
  }
  ~ClassesKey() {
    if (key_ != nullptr) RegCloseKey(key_);
  }
  ClassesKey(const ClassesKey&) = delete;
  ClassesKey& operator=(const ClassesKey&) = delete;

  /// The default value as text, and its type. Values need not end with a zero, nor hold whole
  /// characters.
  std::optional<std::wstring> default_value(DWORD& type) const {
    if (key_ == nullptr) return std::nullopt;
    wchar_t buffer[buffer_length];
    DWORD bytes = sizeof buffer;
    if (RegQueryValueExW(key_, L"", nullptr, &type, reinterpret_cast<BYTE*>(buffer), &bytes) !=
        ERROR_SUCCESS) {
      return std::nullopt;
    }
    const std::wstring_view text(buffer, bytes / sizeof(wchar_t));
    return std::wstring(text.substr(0, text.find(L'\0')));
  }

 private:
  LSTATUS open(const std::wstring& path, REGSAM rights) {
    const LSTATUS status = RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, rights, &key_);
    if (status != ERROR_SUCCESS) key_ = nullptr;
    return status;
  }

  HKEY key_ = nullptr;
};

/// What the system tells of an extension (with its dot); empty when it tells nothing.
std::wstring ask_system(const std::wstring& ext, ASSOCSTR what) {
  // Otherwise the dialog that lets the user choose a program would count as one.
  constexpr ASSOCF flags = ASSOCF_INIT_IGNOREUNKNOWN;
  std::wstring text;
  DWORD length = 0;
  if (AssocQueryStringW(flags, what, ext.c_str(), nullptr, nullptr, &length) != S_FALSE) return {};
  text.resize(length);
  if (AssocQueryStringW(flags, what, ext.c_str(), nullptr, text.data(), &length) != S_OK) return {};
  return text.substr(0, text.find(L'\0'));
}

/// With the names in percent signs replaced by what they stand for.
std::wstring expanded(const std::wstring& text) {
  std::wstring result(ExpandEnvironmentStringsW(text.c_str(), nullptr, 0), L'\0');
  ExpandEnvironmentStringsW(text.c_str(), result.data(), static_cast<DWORD>(result.size()));
  return result.substr(0, result.find(L'\0'));
}

}  // namespace

std::string association_command(std::string_view ext, bool want_command) {
  DWORD type = REG_NONE;
  const auto file_class = ClassesKey(L"." + wide(ext)).default_value(type);
  const bool is_text = type == REG_SZ || type == REG_EXPAND_SZ;
  if (!file_class || file_class->empty() || !is_text) return {};
  if (!want_command) return narrow(*file_class);

  const auto command = ClassesKey(*file_class + L"\\shell\\open\\command").default_value(type);
  return command && type == REG_SZ ? narrow(*command) : std::string();
}

std::optional<std::string> system_association(std::string_view ext) {
  if (ext.empty()) return std::nullopt;
  const std::wstring dotted = L"." + wide(ext);
  // A system that names no file may know the command, and not have expanded it.
  for (const ASSOCSTR what : {ASSOCSTR_EXECUTABLE, ASSOCSTR_COMMAND}) {
    const std::wstring program = expanded(ask_system(dotted, what));
    if (!program.empty()) return narrow(program);
  }
  if (ask_system(dotted, ASSOCSTR_DELEGATEEXECUTE).empty()) return std::nullopt;
  return std::string();
}

}  // namespace tallowmere::win32
