#pragma once

#include <string>
#include <string_view>

namespace tallowmere::driver {

/// The program's settings as they lie in the current user's registry.
class SettingsKey {
 public:
  void clear() const;
  void set(std::string_view name, std::string_view value) const;
  /// Empty when there is no such value.
  std::string get(std::string_view name) const;
};

}  // namespace tallowmere::driver
