#include "win32/message_loop.h"

#include "win32/form.h"
#include "win32/guarded.h"

namespace tallowmere::win32 {

void dispatch_message(MSG& message) {
  const HWND root = message.hwnd != nullptr ? GetAncestor(message.hwnd, GA_ROOT) : nullptr;
  if (root != nullptr) {
    Form* form = Form::from(root);
    if (form != nullptr) {
      if (guarded(true, [&] { return form->pre_translate(message); })) return;
      if (IsDialogMessageW(root, &message)) return;
    }
  }
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

bool pump_pending() {
  return pump_pending([](const MSG&) { return true; });
}

bool pump_pending(const std::function<bool(const MSG&)>& wanted) {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return false;
    }
    if (wanted(message)) dispatch_message(message);
  }
  return true;
}

int run_message_loop() {
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) dispatch_message(message);
  return static_cast<int>(message.wParam);
}

}  // namespace tallowmere::win32
