#include "tools/driver/main_window.h"

#include <stdexcept>

#include "app/resource.h"
#include "dialogs/resource.h"

namespace tallowmere::driver {

namespace {

Window found(Window window, std::string_view caption) {
  if (!window) throw std::runtime_error("no window \"" + std::string(caption) + "\" came");
  return window;
}

}  // namespace

MainWindow::MainWindow(const std::string& program_path, std::string_view arguments)
    : program_(program_path, arguments),
      window_(found(program_.wait_for_window(main_caption), main_caption)) {}

ListView MainWindow::list() const {
  return ListView(control(IDC_LISTVIEW2));
}

std::string MainWindow::count_label() const {
  return control(IDC_LABEL1).text();
}

std::string MainWindow::timing_label() const {
  return control(IDC_LABEL2).text();
}

bool MainWindow::is_searching() const {
  return control(IDC_CMDSEARCH).text() == "Stop";
}

Window MainWindow::press_search(std::string_view dialog_caption) const {
  return open(window_, IDC_CMDSEARCH, dialog_caption);
}

Window MainWindow::choose_narrowing(Window prompt, int option,
                                    std::string_view dialog_caption) const {
  const Window choice = prompt.child(IDC_NARROW_OPTION + option);
  choice.click();
  wait_until([&] { return choice.is_checked(); });
  return open(prompt, IDOK, dialog_caption);
}

Window MainWindow::open(Window dialog, int button, std::string_view caption) const {
  dialog.child(button).click();
  return found(program_.wait_for_window(caption), caption);
}

bool MainWindow::close(Window dialog, int button) const {
  dialog.child(button).click();
  return wait_until([&] { return !dialog.is_visible(); });
}

void MainWindow::begin(Window dialog, int search_type, std::string_view criteria) const {
  const Window option = dialog.child(IDC_SEARCH_OPTION + search_type);
  option.click();
  wait_until([&] { return option.is_checked(); });
  dialog.child(IDC_SEARCH_TEXT).set_text(criteria);
  // Without this, the text of the run before could be taken for the end of this one.
  control(IDC_LABEL2).set_text("");
  if (!close(dialog, IDOK)) throw std::runtime_error("the criteria dialog stays");
}

// The time appears in its label before the list is sorted and filled; Exit comes back last.
bool MainWindow::wait_for_end(int milliseconds) const {
  return wait_until(
      [&] {
        const std::string timing = timing_label();
        return (timing.starts_with("in ") || timing == "Search Stopped") && !is_searching() &&
               control(IDC_CMDEXIT).is_enabled();
      },
      milliseconds);
}

bool MainWindow::search(int search_type, std::string_view criteria) const {
  begin(press_search(new_search_caption), search_type, criteria);
  return wait_for_end();
}

bool MainWindow::quit() const {
  window_.close();
  return program_.wait_for_exit();
}

}  // namespace tallowmere::driver
