#pragma once

#include "files/file_batch.h"
#include "results/row_text.h"
#include "win32/controls.h"
#include "win32/form.h"

namespace tallowmere {

/// Asks whether an existing file is to be replaced.
class frmReplace : public win32::Form {
 public:
  frmReplace(HWND owner, DateFormat format);

  ReplaceAnswer ask(const ReplaceQuestion& question);

  win32::Label lblTarget, lblTargetFacts, lblSource, lblSourceFacts;
  win32::Button cmdYes, cmdYesToAll, cmdNo, cmdCancel;

 protected:
  void on_shown() override { cmdNo.focus(); }

 private:
  bool drop_pending() const;
  void answer(ReplaceAnswer answer);

  HWND owner_;
  DateFormat format_;
  ReplaceAnswer answer_ = ReplaceAnswer::cancel;
};

}  // namespace tallowmere
