#include "launch/window_title.h"

#include <string>
#include <string_view>

#include "engine/letter_case.h"

namespace tallowmere {
namespace {

TitleMatch match_lower_case(std::string_view have, std::string_view want) {
  if (have == want) return TitleMatch::exact;
  if (have.starts_with(want)) return TitleMatch::begins_with;
  return have.ends_with(want) ? TitleMatch::ends_with : TitleMatch::none;
}

/// True when a file's name may follow this text. Editors write "*a.txt - Editor",
/// "Editor - [a.txt]", "C:\docs\a.txt (read only) - Editor".
bool may_stand_before_name(std::string_view text) {
  constexpr std::string_view marks = "*\\/[(\"'";
  return text.empty() || text.ends_with("- ") || marks.find(text.back()) != marks.npos;
}

bool may_stand_behind_name(std::string_view text) {
  constexpr std::string_view marks = " *])\"'";
  return text.empty() || marks.find(text.front()) != marks.npos;
}

bool holds_name(std::string_view text, std::string_view name) {
  if (name.empty()) return false;
  for (std::size_t at = text.find(name); at != text.npos; at = text.find(name, at + 1)) {
    if (may_stand_before_name(text.substr(0, at)) &&
        may_stand_behind_name(text.substr(at + name.size()))) {
      return true;
    }
  }
  return false;
}

}  // namespace

TitleMatch match_title(std::string_view title, std::string_view wanted) {
  return match_lower_case(lower_case(title), lower_case(wanted));
}

TitleMatch match_editor_window(WindowOwner owner, std::string_view title, std::string_view wanted,
                               std::string_view file_name) {
  if (owner == WindowOwner::other_program) return TitleMatch::none;
  const std::string have = lower_case(title);
  const std::string want = lower_case(wanted);
  const TitleMatch match = match_lower_case(have, want);
  if (owner == WindowOwner::started || match == TitleMatch::none) return match;
  const std::string name = lower_case(file_name);
  const std::string_view rest = have;
  const bool named =
      (rest.starts_with(want) && holds_name(rest.substr(want.size()), name)) ||
      (rest.ends_with(want) && holds_name(rest.substr(0, rest.size() - want.size()), name));
  return named ? match : TitleMatch::none;
}

}  // namespace tallowmere
