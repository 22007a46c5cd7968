#pragma once

#include <windows.h>

#include <set>
#include <string_view>

#include "win32/com_apartment.h"

struct IAccPropServices;

namespace tallowmere::win32 {

/// What screen readers call controls whose own text says something else, and before which no label
/// stands. Does nothing where the system lacks the service.
class AccessibleNames {
 public:
  AccessibleNames();
  /// Takes the names back. The controls may be gone.
  ~AccessibleNames();
  AccessibleNames(const AccessibleNames&) = delete;
  AccessibleNames& operator=(const AccessibleNames&) = delete;

  void set(HWND control, std::string_view name);

 private:
  ComApartment apartment_;
  IAccPropServices* service_ = nullptr;
  std::set<HWND> named_;
};

}  // namespace tallowmere::win32
