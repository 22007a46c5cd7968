#pragma once

#include <string_view>

namespace tallowmere {

/// How well a window's title fits the wanted one, the worst first.
enum class TitleMatch { none, ends_with, begins_with, exact };

/// Without regard to case.
TitleMatch match_title(std::string_view title, std::string_view wanted);

/// Whose window it is, seen from an editor that was started.
enum class WindowOwner {
  other_program,
  same_program,  ///< another process whose program file has the same name
  started        ///< the started process itself
};

/// How well a window suits a key script that wants this title; `none`: it gets no keys. Editors
/// hand files over to one of their kind that runs already: its window must name the file, too,
/// apart from the wanted title and not as a piece of another name.
TitleMatch match_editor_window(WindowOwner owner, std::string_view title, std::string_view wanted,
                               std::string_view file_name);

}  // namespace tallowmere
