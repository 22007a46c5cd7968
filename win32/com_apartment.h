#pragma once

#include <windows.h>

#include <objbase.h>

namespace tallowmere::win32 {

/// Keeps COM ready on the calling thread while the object lives; the shell's functions need it.
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
