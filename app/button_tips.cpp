#include "app/button_tips.h"

#include "app/resource.h"

namespace tallowmere {

void set_button_tips(win32::ToolTip& tips, HWND main_window) {
  struct Tip {
    int button;
    const char* text;
  };
  static constexpr Tip button_tips[] = {
      {IDC_CMDSEARCH, "Input Search Criteria"},
      {IDC_CMDVIEW, "Display File Contents"},
      {IDC_CMDFINDNEXT, "Show Next Word/Phrase"},
      {IDC_CMDFINDPREV, "Show Previous Word/Phrase"},
      {IDC_CMDLAUNCH, "Edit File"},
      {IDC_CMDHYPER, "Find Selected Text"},
      {IDC_CMDRESTORE, "Find Original Criteria"},
      {IDC_CMDEXIT, "Exit Tallowmere"},
  };
  for (const auto& [button, text] : button_tips) tips.set(GetDlgItem(main_window, button), text);
}

}  // namespace tallowmere
