#include "launch/key_events.h"

#include <algorithm>
#include <cassert>

#include "engine/unicode.h"

namespace tallowmere {
namespace {

/// Takes what is in braces; `position` is after the opening one.
void take_braced(std::string_view keys, std::size_t& position, KeyEvent& event) {
  // A closing brace right after the opening one is the braced character itself.
  const std::size_t closing = std::min(keys.find('}', position + 1), keys.size());
  const std::string_view name = keys.substr(position, closing - position);
  position = std::min(closing + 1, keys.size());
  if (name == "ESC") {
    event.key = NamedKey::escape;
  } else if (name == "F4") {
    event.key = NamedKey::f4;
  } else if (!name.empty()) {
    std::size_t start = 0;
    event.character = next_code_point(name, start);
    assert(start == name.size() && "an unknown key");
  }
}

bool take_modifier(char32_t character, KeyEvent& event) {
  switch (character) {
    case U'^':
      return event.ctrl = true;
    case U'%':
      return event.alt = true;
    case U'+':
      return event.shift = true;
    default:
      return false;
  }
}

}  // namespace

std::vector<KeyEvent> parse_keys(std::string_view keys) {
  std::vector<KeyEvent> events;
  KeyEvent event;
  for (std::size_t position = 0; position < keys.size();) {
    const char32_t character = next_code_point(keys, position);
    if (take_modifier(character, event)) continue;
    if (character == U'~') {
      event.key = NamedKey::enter;
    } else if (character == U'{') {
      take_braced(keys, position, event);
    } else {
      event.character = character;
    }
    events.push_back(event);
    event = {};
  }
  return events;
}

}  // namespace tallowmere
