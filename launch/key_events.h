#pragma once

#include <string_view>
#include <vector>

namespace tallowmere {

enum class NamedKey { none, enter, escape, f4 };

/// One key, pressed and released. With Ctrl or Alt it is a command to the program that gets it.
/// Otherwise the character is typed as it is: Shift only shows how a keyboard would make it, so
/// "+5" is a five on every keyboard.
struct KeyEvent {
  NamedKey key = NamedKey::none;
  char32_t character = 0;  ///< when `key` is none
  bool ctrl = false;
  bool alt = false;
  bool shift = false;

  bool operator==(const KeyEvent&) const = default;
  /// True for typed text and Enter, which would change a document if they reached one.
  bool writes() const { return !ctrl && !alt && (key == NamedKey::none || key == NamedKey::enter); }
};

/// Reads the keystroke notation: "^" for Ctrl, "%" for Alt and "+" for Shift before a key, "~" for
/// Enter, "{ESC}" and "{F4}", and "{x}" for the character x itself.
std::vector<KeyEvent> parse_keys(std::string_view keys);

}  // namespace tallowmere
