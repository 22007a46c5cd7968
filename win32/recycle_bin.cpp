#include "win32/recycle_bin.h"

#include "win32/com_apartment.h"
#include "win32/file_redirection.h"
#include "win32/system_error.h"
#include "win32/text.h"

namespace tallowmere::win32 {
namespace {

bool is_set(HKEY root, const std::wstring& key, const wchar_t* value) {
  DWORD number = 0;
  DWORD size = sizeof number;
  return RegGetValueW(root, key.c_str(), value, RRF_RT_REG_DWORD, nullptr, &number, &size) ==
             ERROR_SUCCESS &&
         number != 0;
}

/// True when the user or an administrator has turned the bin off, so that deleted files are gone at
/// once. `volume` is the system's name of the volume, \\?\Volume{...}\.
bool is_turned_off(const std::wstring& volume) {
  const std::wstring settings = L"Software\\Microsoft\\Windows\\CurrentVersion\\";
  const std::wstring policies = settings + L"Policies\\Explorer";
  if (is_set(HKEY_CURRENT_USER, policies, L"NoRecycleFiles")) return true;
  if (is_set(HKEY_LOCAL_MACHINE, policies, L"NoRecycleFiles")) return true;
  const std::size_t start = volume.find(L'{');
  const std::size_t end = volume.find(L'}');
  if (start == std::wstring::npos || end == std::wstring::npos) return false;
  const std::wstring bin = settings + L"Explorer\\BitBucket\\Volume\\";
  return is_set(HKEY_CURRENT_USER, bin + volume.substr(start, end + 1 - start), L"NukeOnDelete");
}

/// False for network drives, removable media and drives that are another name of a folder.
bool has_bin(const std::wstring& root) {
  if (GetDriveTypeW(root.c_str()) != DRIVE_FIXED) return false;
  wchar_t volume[MAX_PATH];
  if (!GetVolumeNameForVolumeMountPointW(root.c_str(), volume, MAX_PATH)) return false;
  return !is_turned_off(volume);
}

/// Converts what SHFileOperation returns: some of its codes are older than the system's error codes
/// and overlap them.
SystemError shell_error(int code) {
  constexpr int denied = 0x78;
  constexpr int too_deep = 0x79;
  constexpr int invalid = 0x7C;
  constexpr int unknown = 0x402;
  switch (code) {
    case denied:
      return system_error(ERROR_ACCESS_DENIED);
    case too_deep:
      return system_error(ERROR_FILENAME_EXCED_RANGE);
    case invalid:
    case unknown:
      return system_error(ERROR_PATH_NOT_FOUND);
  }
  return {code, "Windows could not move the file to the Recycle Bin (error " +
                    std::to_string(code) + ")"};
}

}  // namespace

bool RecycleBin::takes(const std::string& path) {
  const std::wstring name = wide(path);
  if (name.size() >= MAX_PATH || is_redirected(path)) return false;
  wchar_t full[MAX_PATH];
  const DWORD length = GetFullPathNameW(name.c_str(), MAX_PATH, full, nullptr);
  if (std::wstring_view(full, length < MAX_PATH ? length : 0) != name) return false;
  wchar_t root[MAX_PATH];
  if (!GetVolumePathNameW(name.c_str(), root, MAX_PATH)) return false;
  const auto [volume, is_new] = volumes_.try_emplace(root);
  if (is_new) volume->second = has_bin(root);
  return volume->second;
}

std::optional<SystemError> RecycleBin::put(const std::string& path) {
  const ComApartment apartment;
  std::wstring list = wide(path);
  list += L'\0';  // a list of one, which a second zero ends
  SHFILEOPSTRUCTW operation{};
  operation.hwnd = owner_;
  operation.wFunc = FO_DELETE;
  operation.pFrom = list.c_str();
  operation.fFlags = recycling_flags;
  const int code = SHFileOperationW(&operation);
  if (operation.fAnyOperationsAborted) return system_error(ERROR_CANCELLED);
  if (code != 0) return shell_error(code);
  return std::nullopt;
}

}  // namespace tallowmere::win32
