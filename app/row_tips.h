#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "app/result_view.h"
#include "engine/code_page.h"
#include "engine/date_time.h"
#include "engine/file_system.h"
#include "engine/search_criteria.h"
#include "results/result_list.h"
#include "viewer/hit_line.h"
#include "win32/tooltip.h"

namespace tallowmere {

/// The tip of the row under the mouse: the file's whole path, its size and date and, when it can be
/// read at once, its first line with a hit.
class RowTips {
 public:
  /// All of it outlives the tips; see HitLineReader about `files` and `page`.
  struct Source {
    const ResultView& ListView2;
    const ResultList& results;
    const SearchCriteria& search;
    const Clock& clock;
    const FileSystem& files;
    const CodePage& page;
  };

  explicit RowTips(const Source& source);
  ~RowTips();
  RowTips(const RowTips&) = delete;
  RowTips& operator=(const RowTips&) = delete;

 private:
  static LRESULT CALLBACK subclass_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                        UINT_PTR id, DWORD_PTR tips);
  void follow(POINT at);
  void forget();
  bool answer(NMHDR& header);
  std::string text_of(int row);

  Source source_;
  HitLineReader lines_;
  win32::ToolTip tip_;
  int row_ = -1;       ///< that the tip is for
  std::wstring text_;  ///< of the row, once it was asked for
};

}  // namespace tallowmere
