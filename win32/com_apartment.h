#pragma once

#include <windows.h>

#include <objbase.h>

namespace tallowmere::win32 {

/// COM on the calling thread, which the shell's functions need, for as long as the object lives.
class ComApartment {
 public:
  ComApartment() : entered_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
  ~ComApartment() {
    if (SUCCEEDED(entered_)) CoUninitialize();
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

 private:
  HRESULT entered_;
};

}  // namespace tallowmere::win32
