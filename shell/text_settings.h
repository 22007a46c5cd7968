#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "shell/settings_store.h"

namespace tallowmere {

/// Separates several TextSettings in one text; none of them holds it.
inline constexpr char text_settings_separator = '|';

/// Settings in one line of text, which may be a value of another store: key=value;key=value. What
/// has a meaning there, control characters and % are written as % and two hexadecimal digits.
class TextSettings : public SettingsStore {
 public:
  TextSettings() = default;
  /// Anyone may have written the text: what is no key=value is ignored, of equal keys the first
  /// counts, and a % without a number means itself.
  explicit TextSettings(std::string_view text);

  std::string get_setting(std::string_view key) override;
  /// An empty value, which a missing key means too, takes no room.
  void save_setting(std::string_view key, const std::string& value) override;
  std::string text() const;

 private:
  std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace tallowmere
