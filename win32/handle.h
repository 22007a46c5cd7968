#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace tallowmere::win32 {

struct HandleCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};

/// Owns a handle of the system: a file, a process, an event.
using Handle = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleCloser>;

/// Takes over a handle from CreateFileW; null when there is no file. The last error stays.
inline Handle file_handle(HANDLE file) {
  return Handle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

}  // namespace tallowmere::win32
