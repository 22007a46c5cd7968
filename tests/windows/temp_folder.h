#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "engine/unicode.h"
#include "win32/long_path.h"
#include "win32/text.h"

namespace tallowmere {

/// A folder of real files, gone with this object. Names are relative to it.
class TempFolder {
 public:
  TempFolder() : TempFolder(system_folder()) {}
  explicit TempFolder(const std::string& base) {
    static int count = 0;
    path_ =
        base + "tw-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count) + "\\";
    empty(path_);  // left by a run that was killed
    EXPECT_TRUE(CreateDirectoryW(native("").c_str(), nullptr)) << path_;
  }
  ~TempFolder() { empty(path_); }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::string& path() const { return path_; }
  std::string path(const std::string& name) const { return path_ + name; }
  std::wstring native(const std::string& name) const {
    return win32::wide(to_utf8(win32::long_path(path(name))));
  }

  std::string make_folder(const std::string& name) const {
    EXPECT_TRUE(CreateDirectoryW(native(name).c_str(), nullptr)) << name;
    return path(name) + "\\";
  }
  std::string write(const std::string& name, const std::string& text, DWORD attributes = 0) const {
    const HANDLE file = CreateFileW(native(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    attributes, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE) << name;
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(file);
    return path(name);
  }
  /// What the file holds; "-" when there is none.
  std::string read(const std::string& name) const {
    const HANDLE file = CreateFileW(native(name).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return "-";
    std::string text(GetFileSize(file, nullptr), '\0');
    DWORD got = 0;
    ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &got, nullptr);
    CloseHandle(file);
    return text;
  }
  /// The names in it or in a folder of it, each followed by "|".
  std::string names(const std::string& folder = {}) const {
    std::string line;
    for (const auto& [name, is_folder] : entries(path(folder))) line += name + "|";
    return line;
  }

 private:
  static std::string system_folder() {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    return to_utf8(reinterpret_cast<const char16_t*>(folder));
  }
  static std::vector<std::pair<std::string, bool>> entries(const std::string& folder) {
    std::vector<std::pair<std::string, bool>> found;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(win32::wide(win32::long_path(folder + "*")), &entry);
    if (search == INVALID_HANDLE_VALUE) return found;
    do {
      const std::string name = to_utf8(reinterpret_cast<const char16_t*>(entry.cFileName));
      if (name == "." || name == "..") continue;
      found.emplace_back(name, (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0);
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    return found;
  }
  static void empty(const std::string& folder) {
    for (const auto& [name, is_folder] : entries(folder)) {
      if (is_folder) {
        empty(folder + name + "\\");
        continue;
      }
      const std::u16string file = win32::long_path(folder + name);
      SetFileAttributesW(win32::wide(file), FILE_ATTRIBUTE_NORMAL);
      DeleteFileW(win32::wide(file));
    }
    RemoveDirectoryW(win32::wide(win32::long_path(folder)));
  }

  std::string path_;
};

/// Another program that has a file open and shares it with nobody.
class FileLock {
 public:
  FileLock(const TempFolder& folder, const std::string& name)
      : file_(CreateFileW(folder.native(name).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0,
                          nullptr)) {
    EXPECT_NE(file_, INVALID_HANDLE_VALUE) << name;
  }
  ~FileLock() { CloseHandle(file_); }
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

 private:
  HANDLE file_;
};

}  // namespace tallowmere
