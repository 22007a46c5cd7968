#include <initguid.h>  // before the headers whose identifiers this file defines

#include "win32/accessible_names.h"

#include <oleacc.h>

#include "win32/text.h"

namespace tallowmere::win32 {

AccessibleNames::AccessibleNames() {
  void* service = nullptr;
  if (SUCCEEDED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                                 IID_IAccPropServices, &service))) {
    service_ = static_cast<IAccPropServices*>(service);
  }
}

AccessibleNames::~AccessibleNames() {
  if (service_ == nullptr) return;
  for (const HWND control : named_) {
    service_->ClearHwndProps(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                             &PROPID_ACC_NAME, 1);
  }
  service_->Release();
}

void AccessibleNames::set(HWND control, std::string_view name) {
  if (service_ == nullptr) return;
  const HRESULT done = service_->SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT),
                                                CHILDID_SELF, PROPID_ACC_NAME, wide(name).c_str());
  if (SUCCEEDED(done)) named_.insert(control);
}

}  // namespace tallowmere::win32
