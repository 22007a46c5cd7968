#include "win32/association.h"

#include <windows.h>

#include <shlwapi.h>

#include "win32/registry.h"
#include "win32/text.h"

namespace tallowmere::win32 {
namespace {

/// The longest value of an association; a longer one counts as none.
constexpr DWORD most_bytes = 1024 * sizeof(wchar_t);

/// Reading control and every right that a key has. Users who may only read the classes of all users
/// are refused the other rights.
constexpr REGSAM all_rights = 0x2003F;

std::optional<RegistryKey::Value> class_value(const std::wstring& path) {
  return RegistryKey(HKEY_CLASSES_ROOT, path, all_rights).value(L"", most_bytes);
}

/// Returns what the system knows about an extension (with its dot); empty when it knows nothing.
std::wstring ask_system(const std::wstring& ext, ASSOCSTR what) {
  // Without this flag, the dialog that lets the user choose a program would count as one.
  constexpr ASSOCF flags = ASSOCF_INIT_IGNOREUNKNOWN;
  std::wstring text;
  DWORD length = 0;
  if (AssocQueryStringW(flags, what, ext.c_str(), nullptr, nullptr, &length) != S_FALSE) return {};
  text.resize(length);
  if (AssocQueryStringW(flags, what, ext.c_str(), nullptr, text.data(), &length) != S_OK) return {};
  return text.substr(0, text.find(L'\0'));
}

/// Replaces the names of variables in percent signs by their values.
std::wstring expanded(const std::wstring& text) {
  std::wstring result(ExpandEnvironmentStringsW(text.c_str(), nullptr, 0), L'\0');
  ExpandEnvironmentStringsW(text.c_str(), result.data(), static_cast<DWORD>(result.size()));
  return result.substr(0, result.find(L'\0'));
}

}  // namespace

std::string association_command(std::string_view ext, bool want_command) {
  const auto file_class = class_value(L"." + wide(ext));
  if (!file_class || file_class->text.empty()) return {};
  if (file_class->type != REG_SZ && file_class->type != REG_EXPAND_SZ) return {};
  if (!want_command) return narrow(file_class->text);

  const auto command = class_value(file_class->text + L"\\shell\\open\\command");
  return command && command->type == REG_SZ ? narrow(command->text) : std::string();
}

std::optional<std::string> system_association(std::string_view ext) {
  if (ext.empty()) return std::nullopt;
  const std::wstring dotted = L"." + wide(ext);
  // A system that names no file may know the command, but not have expanded it.
  for (const ASSOCSTR what : {ASSOCSTR_EXECUTABLE, ASSOCSTR_COMMAND}) {
    const std::wstring program = expanded(ask_system(dotted, what));
    if (!program.empty()) return narrow(program);
  }
  if (ask_system(dotted, ASSOCSTR_DELEGATEEXECUTE).empty()) return std::nullopt;
  return std::string();
}

}  // namespace tallowmere::win32
