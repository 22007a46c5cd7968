#pragma once

#include <windows.h>

#include <set>
#include <string_view>

#include "win32/com_apartment.h"

struct IAccPropServices;

namespace tallowmere::win32 {

/// Names by which screen readers call controls that have no label and whose own text says something
/// else. Does nothing where the system lacks the service.
class AccessibleNames {
 public:
  AccessibleNames();
  /// Removes the names. The controls may be gone by then.
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
