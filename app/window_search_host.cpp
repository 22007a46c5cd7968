#include "app/window_search_host.h"

#include <utility>

#include "win32/message_box.h"

namespace tallowmere {

namespace {

constexpr std::uint64_t progress_interval_ms = 250;

}  // namespace

WindowSearchHost::WindowSearchHost(HWND window, ResultList& results, const bool& stop,
                                   bool many_files)
    : window_(window),
      results_(results),
      stop_(stop),
      many_files_(many_files),
      progress_gate_(progress_interval_ms) {}

bool WindowSearchHost::go_on() {
  if (events_.serve() && progress_ && progress_gate_.due(GetTickCount64())) progress_();
  return !stop_ && !events_.quitting();
}

void WindowSearchHost::file_matched(const FoundFile& file) {
  results_.add_file_row(file.folder, file.name, file.facts);
}

bool WindowSearchHost::read_failed(const std::string& path, const SystemError& error) {
  return win32::message_box(window_, error.text + " - encountered while trying to GET DATA. ",
                            "Cannot Read " + path, win32::BoxIcon::exclamation,
                            many_files_ ? win32::BoxButtons::ok_cancel : win32::BoxButtons::ok) ==
         win32::BoxAnswer::ok;
}

bool WindowSearchHost::retry_folder(const SystemError& error) {
  return win32::message_box(window_, error.text + ".", "Cannot Search Folder",
                            win32::BoxIcon::exclamation,
                            win32::BoxButtons::retry_cancel) == win32::BoxAnswer::retry;
}

}  // namespace tallowmere
