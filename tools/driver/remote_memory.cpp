#include "tools/driver/remote_memory.h"

#include <stdexcept>

namespace tallowmere::driver {

RemoteMemory::RemoteMemory(HWND window, std::size_t bytes) {
  DWORD process_id = 0;
  GetWindowThreadProcessId(window, &process_id);
  process_ =
      OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process_id);
  if (!process_) throw std::runtime_error("the program's memory cannot be opened");
  memory_ = VirtualAllocEx(process_, nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  if (!memory_) {
    CloseHandle(process_);
    throw std::runtime_error("no memory in the program");
  }
}

RemoteMemory::~RemoteMemory() {
  VirtualFreeEx(process_, memory_, 0, MEM_RELEASE);
  CloseHandle(process_);
}

LPARAM RemoteMemory::address(std::size_t offset) const {
  return reinterpret_cast<LPARAM>(static_cast<char*>(memory_) + offset);
}

void RemoteMemory::write(const void* data, std::size_t bytes) const {
  if (!WriteProcessMemory(process_, memory_, data, bytes, nullptr)) {
    throw std::runtime_error("the program's memory cannot be written");
  }
}

void RemoteMemory::read(void* data, std::size_t bytes) const {
  if (!ReadProcessMemory(process_, memory_, data, bytes, nullptr)) {
    throw std::runtime_error("the program's memory cannot be read");
  }
}

std::wstring RemoteMemory::read_text(std::size_t length, std::size_t offset) const {
  std::wstring text(length, L'\0');
  const void* from = static_cast<char*>(memory_) + offset;
  if (length != 0 &&
      !ReadProcessMemory(process_, from, text.data(), length * sizeof(wchar_t), nullptr)) {
    throw std::runtime_error("the program's memory cannot be read");
  }
  return text;
}

}  // namespace tallowmere::driver
