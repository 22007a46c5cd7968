#pragma once

#include <string>
#include <string_view>

namespace tallowmere {

/// The user's settings: text values by key, UTF-8. Failures are silent: a value that cannot be
/// read is empty, one that cannot be written is lost.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  /// The empty string when the key is missing.
  virtual std::string get_setting(std::string_view key) = 0;
  virtual void save_setting(std::string_view key, const std::string& value) = 0;
};

}  // namespace tallowmere
