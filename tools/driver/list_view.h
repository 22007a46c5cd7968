#pragma once

#include <string>
#include <vector>

#include "tools/driver/window.h"

namespace tallowmere::driver {

/// A list view in report style that belongs to another process.
class ListView : public Window {
 public:
  using Row = std::vector<std::string>;

  explicit ListView(Window window) : Window(window) {}

  int count() const;
  std::vector<std::string> headers() const;
  std::string cell(int row, int column) const;
  std::vector<Row> rows() const;
  /// Returns one column of all rows.
  std::vector<std::string> column(int column) const;

  std::vector<int> selected() const;
  /// Adds a row to the selection, or removes it.
  void select(int row, bool selected = true) const;
  /// Returns the text box in which a row is renamed; null while there is none.
  Window label_editor() const;
  /// Clicks a column's header with the left mouse button. Returns at once.
  void click_header(int column) const;

 private:
  Window header() const;
};

}  // namespace tallowmere::driver
