#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/resource.h"
#include "dialogs/resource.h"
#include "tools/driver/main_window.h"
#include "tools/driver/settings_key.h"

namespace tallowmere::driver {

/// Search types as the option buttons number them.
enum { all_words, any_word, phrase, near_words };

/// A journey through the real program: empty settings, a folder for the test's own files, and the
/// program that lies beside the test program.
class Journey : public testing::Test {
 protected:
  Journey();
  ~Journey() override;

  /// The test's folder, with its final separator.
  const std::string& folder() const { return folder_; }
  /// Writes a file below folder(), with its folders; gives it the local time "2001-05-20 09:15" and
  /// `minutes` more.
  void write(std::string_view name, std::string_view content, int minutes = 0) const;
  /// Writes a file of zeros that takes no room on the disk.
  void write_sparse(std::string_view name, std::int64_t size) const;

  SettingsKey settings() const { return {}; }
  /// Settings of a first run, but for the folder and the types: all files below folder().
  void set_folder_settings() const;

  /// Starts the program.
  std::unique_ptr<MainWindow> start() const;

 private:
  std::string folder_;
};

using Rows = std::vector<ListView::Row>;
using Names = std::vector<std::string>;

}  // namespace tallowmere::driver
