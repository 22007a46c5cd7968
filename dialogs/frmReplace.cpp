#include "dialogs/frmReplace.h"

#include <utility>

#include "dialogs/resource.h"
#include "files/file_command_texts.h"

namespace tallowmere {

frmReplace::frmReplace(HWND owner, DateFormat format)
    : Form(IDD_REPLACE, owner),
      lblTarget(item(IDC_REPLACE_TARGET)),
      lblTargetFacts(item(IDC_REPLACE_TARGET_FACTS)),
      lblSource(item(IDC_REPLACE_SOURCE)),
      lblSourceFacts(item(IDC_REPLACE_SOURCE_FACTS)),
      cmdYes(item(IDYES)),
      cmdYesToAll(item(IDC_REPLACE_ALL)),
      cmdNo(item(IDNO)),
      cmdCancel(item(IDCANCEL)),
      owner_(owner),
      format_(std::move(format)) {
  clicked(IDYES, [this] { answer(ReplaceAnswer::yes); });
  clicked(IDC_REPLACE_ALL, [this] { answer(ReplaceAnswer::yes_to_all); });
  clicked(IDNO, [this] { answer(ReplaceAnswer::no); });
  clicked(IDCANCEL, [this] { answer(ReplaceAnswer::cancel); });
}

ReplaceAnswer frmReplace::ask(const ReplaceQuestion& question) {
  lblTarget.set_text(question.target);
  lblTargetFacts.set_text(replace_facts(question.target_facts, format_));
  lblSource.set_text(question.source);
  lblSourceFacts.set_text(replace_facts(question.source_facts, format_));
  answer_ = ReplaceAnswer::cancel;  // also when the program ends meanwhile
  if (drop_pending()) show_modal(owner_);
  return answer_;
}

/// Drops waiting input: a second click on the last question is no answer to this one. Returns false
/// when the program ends.
bool frmReplace::drop_pending() const {
  MSG message;
  while (PeekMessageW(&message, handle(), WM_KEYFIRST, WM_MOUSELAST, PM_REMOVE)) {
    if (message.message != WM_QUIT) continue;
    PostQuitMessage(static_cast<int>(message.wParam));
    return false;
  }
  return true;
}

void frmReplace::answer(ReplaceAnswer answer) {
  answer_ = answer;
  hide_from(cmdNo.handle());
}

}  // namespace tallowmere
