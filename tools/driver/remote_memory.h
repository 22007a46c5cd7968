#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace tallowmere::driver {

/// Memory in the process of a window: messages of the common controls carry addresses, which have
/// a meaning only there.
class RemoteMemory {
 public:
  RemoteMemory(HWND window, std::size_t bytes);
  ~RemoteMemory();
  RemoteMemory(const RemoteMemory&) = delete;
  RemoteMemory& operator=(const RemoteMemory&) = delete;

  LPARAM address(std::size_t offset = 0) const;
  void write(const void* data, std::size_t bytes) const;
  void read(void* data, std::size_t bytes) const;
  /// Reads the `length` characters that begin `offset` bytes into the memory.
  std::wstring read_text(std::size_t length, std::size_t offset = 0) const;

 private:
  HANDLE process_ = nullptr;
  void* memory_ = nullptr;
};

}  // namespace tallowmere::driver
