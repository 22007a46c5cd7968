#pragma once

#include <string>
#include <string_view>

namespace tallowmere::driver {

/// The program's settings in the current user's registry.
class SettingsKey {
 public:
  void clear() const;
  void set(std::string_view name, std::string_view value) const;
  /// Returns a value; empty when there is none.
  std::string get(std::string_view name) const;
};

}  // namespace tallowmere::driver
