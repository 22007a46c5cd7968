#include "app/main_layout.h"

#include <iterator>
#include <utility>

#include "app/control_mover.h"
#include "app/resource.h"

namespace tallowmere {

void place_controls(HWND main_window, const MainLayout& layout, int dpi) {
  const std::pair<int, const TwipRect*> places[] = {
      {IDC_CMDSEARCH, &layout.cmdSearch},     {IDC_CMDVIEW, &layout.cmdView},
      {IDC_CMDFINDNEXT, &layout.cmdFindNext}, {IDC_CMDFINDPREV, &layout.cmdFindPrev},
      {IDC_CMDLAUNCH, &layout.cmdLaunch},     {IDC_CMDHYPER, &layout.cmdHyper},
      {IDC_CMDRESTORE, &layout.cmdRestore},   {IDC_CMDEXIT, &layout.cmdExit},
      {IDC_LISTVIEW2, &layout.ListView2},     {IDC_LABEL1, &layout.Label1},
      {IDC_LABEL2, &layout.Label2},           {IDC_TEXT1, &layout.Text1},
      {IDC_VSCROLL1, &layout.VScroll1}};
  ControlMover mover(static_cast<int>(std::size(places)) + 2, dpi);
  for (const auto& [id, place] : places) mover.move(GetDlgItem(main_window, id), *place);
  mover.move_line(GetDlgItem(main_window, IDC_LINE1), layout.Line1);
  mover.move_line(GetDlgItem(main_window, IDC_LINE2), layout.Line2);
}

}  // namespace tallowmere
