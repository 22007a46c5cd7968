#pragma once

#include <windows.h>

#include <oleacc.h>

#include <string>

#include "win32/com_apartment.h"
#include "win32/text.h"

namespace tallowmere {

/// What a screen reader calls a control.
inline std::string accessible_name(HWND control) {
  const win32::ComApartment apartment;
  IAccessible* object = nullptr;
  if (FAILED(AccessibleObjectFromWindow(control, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                        reinterpret_cast<void**>(&object)))) {
    return "(not accessible)";
  }
  VARIANT self{};
  self.vt = VT_I4;
  self.lVal = CHILDID_SELF;
  BSTR name = nullptr;
  object->get_accName(self, &name);
  const std::string text = name != nullptr ? win32::narrow(name) : "";
  SysFreeString(name);
  object->Release();
  return text;
}

}  // namespace tallowmere
