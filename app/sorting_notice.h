#pragma once

#include <string>

#include "shell/run_texts.h"
#include "win32/controls.h"
#include "win32/hourglass.h"

namespace tallowmere {

/// While it lives, both labels show that the list is being sorted, and the pointer is busy.
class SortingNotice {
 public:
  /// Both labels outlive it.
  SortingNotice(const win32::Label& Label1, const win32::Label& Label2)
      : Label1_(Label1), Label2_(Label2), first_(Label1.text()), second_(Label2.text()) {
    Label1_.set_text(sorting_text);
    Label2_.set_text("");
    Label1_.repaint();
    Label2_.repaint();
  }
  ~SortingNotice() {
    Label1_.set_text(first_);
    Label2_.set_text(second_);
  }
  SortingNotice(const SortingNotice&) = delete;
  SortingNotice& operator=(const SortingNotice&) = delete;

 private:
  const win32::Label& Label1_;
  const win32::Label& Label2_;
  const std::string first_;
  const std::string second_;
  const win32::Hourglass hourglass_;
};

}  // namespace tallowmere
