#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "win32/long_path.h"
#include "win32/text.h"

namespace tallowmere {

/// A folder of real files, gone with this object. Names are relative to it.
class TempFolder {
 public:
  explicit TempFolder(
      const std::string& base = win32::narrow(std::filesystem::temp_directory_path().wstring())) {
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
    return win32::wide(win32::long_path(path(name)));
  }

  std::string make_folder(const std::string& name) const {
    EXPECT_TRUE(CreateDirectoryW(native(name).c_str(), nullptr)) << name;
    return path(name) + "\\";
  }
  std::string write(const std::string& name, const std::string& text, DWORD attributes = 0) const {
    std::ofstream(std::filesystem::path(native(name)), std::ios::binary) << text;
    if (attributes != 0) SetFileAttributesW(native(name).c_str(), attributes);
    return path(name);
  }
  /// What the file holds; "-" when there is none.
  std::string read(const std::string& name) const {
    std::ifstream file(std::filesystem::path(native(name)), std::ios::binary);
    return file ? std::string(std::istreambuf_iterator<char>(file), {}) : "-";
  }
  /// The names in it or in a folder of it, each followed by "|".
  std::string names(const std::string& folder = {}) const {
    std::string line;
    for (const auto& [name, is_folder] : entries(path(folder))) line += name + "|";
    return line;
  }

 private:
  static std::vector<std::pair<std::string, bool>> entries(const std::string& folder) {
    std::vector<std::pair<std::string, bool>> found;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(win32::wide(win32::long_path(folder + "*")), &entry);
    for (bool more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &entry)) {
      const std::string name = win32::narrow(entry.cFileName);
      if (name == "." || name == "..") continue;
      found.emplace_back(name, (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0);
    }
    FindClose(search);
    return found;
  }
  static void empty(const std::string& folder) {
    for (const auto& [name, is_folder] : entries(folder)) {
      if (is_folder) empty(folder + name + "\\");
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
                          nullptr),
              &CloseHandle) {}

 private:
  std::unique_ptr<void, decltype(&CloseHandle)> file_;
};

}  // namespace tallowmere
